// The item edit dialog: one row per field (label on the left third, an editor
// chosen by the field's type on the right two thirds), on the full-screen
// dialog template of the program module, with Done and Cancel soft keys.
//
// Typical use by the list window (add or edit command):
//
//   ItemEditRequest req;
//   req.fields = doc.fields.data();
//   req.fieldCount = doc.fieldCount();
//   req.item = &item;                       // a new item or the selected one
//   if (RunItemEditor(listWindow, req) == 1) {
//       RebuildItemTimeTexts(req.fields, req.fieldCount, item);
//       ... keep the item, set the modified flag, re-sort ...
//   }
//
// The dialog edits a copy of the values; the item is written only when the
// result is 1. Date, Time and DateTime values come back with the new `time`
// but with the text the picker showed when the dialog opened (picker layout);
// RebuildItemTimeTexts gives them the list layout again.
#pragma once
#include <windows.h>

#include "document/ListDocument.h"

// Control IDs of the rows, each first id + field index.
constexpr int kItemEditorFirstId = 400;    // the editor
constexpr int kItemLabelFirstId = 1000;    // its label
constexpr int kItemUpDownFirstId = 1100;   // its up-down buddy

// What the dialog is opened with and what it writes back.
struct ItemEditRequest {
    const FieldDef* fields = nullptr;  // the list's fields, in column order
    int fieldCount = 0;                // 0..50
    ListItem* item = nullptr;          // in: the values shown; out: the values edited (result 1 only)
    int result = 0;                    // out: the dialog's result, as returned
};

// Runs the dialog modally, owned by `owner`. Returns 1 when the user
// confirmed and at least one value's text is non-empty; 0 when the user
// cancelled or every text is empty. On 1 the item's values (text, choice,
// time, storedType) and fieldCount are replaced by the edited ones; on 0 the
// item is left as it was.
int RunItemEditor(HWND owner, ItemEditRequest& request);

// The same for a document's fields.
int editItem(HWND owner, const ListDocument& document, ListItem& item);

// Gives every Date, Time and DateTime value of `item` its list display text
// (list text layout: system locale's date order and UseSlashDates), built
// from its `time`. Call after RunItemEditor / editItem returned 1.
void RebuildItemTimeTexts(const FieldDef* fields, int fieldCount, ListItem& item);
