// The controls of one item-editor row: the label, the editor chosen by the
// field's type and its up-down buddy; filling them from a value and reading
// the value back. No dialog state lives here: the dialog (ItemEditor.cpp)
// owns the rows and passes them in.
#pragma once
#include <windows.h>

#include "document/ListDocument.h"

// What kind of editor a field gets.
enum class RowEditorKind { Picker, Edit, List };
RowEditorKind RowEditorKindOf(FieldType type);

// The controls of one row.
struct ItemEditorRow {
    HWND label = nullptr;
    HWND editor = nullptr;
    HWND upDown = nullptr;
    int spare = 0;  // per-field word: the dialog keeps the top the row was last put at
    bool pickerPartChosen = false;  // a picker has had a part chosen (by tap or by PrimePicker)
};

// Geometry of the rows, from the dialog's client width and the density.
struct RowGeometry {
    int labelX = 0, labelWidth = 0;
    int editorX = 0, editorWidth = 0;
    int rowHeight = 0;   // label and editor height
    int firstTop = 0;    // top of row 0 with nothing scrolled
    int pitch = 0;       // distance from one row's top to the next
    int upDownWidth = 0; // the horizontal spinner beside a list editor
};
RowGeometry ComputeRowGeometry(int clientWidth);

// Creates the row of field `index`. Fills `value` as the dialog opens: an
// empty text takes the field's default text, storedType becomes the field's
// type, a picker's text becomes the value's text, a list's choice outside
// its range becomes 0.
ItemEditorRow CreateItemRow(HWND dlg, int index, const FieldDef& field, FieldValue& value, HFONT font);

// Puts the row's controls at vertical position `top` (client coordinates).
void PlaceItemRow(HDWP& defer, const ItemEditorRow& row, const RowGeometry& g, int top);

// Reads the editor back into `value` as the Done key does: choice from
// LB_GETCURSEL (whatever the editor), the text of the selected entry for
// choice types, the edit text for Text and Number; pickers keep the text they
// had. The picker time is read separately (ReadPickerTime) once every value
// has passed the checks.
void ReadItemRowText(const ItemEditorRow& row, FieldType type, FieldValue& value);
void ReadPickerTime(const ItemEditorRow& row, FieldType type, FieldValue& value);

// A number is digits and "."; a text starting with "-" is let through
// whatever follows.
bool IsAcceptedNumberText(const wchar_t* text);

// Moves a list editor's selection one step (+1 / -1), wrapping at the ends.
void StepListEditor(const ItemEditorRow& row, int delta);

// The list editors are drawn by the dialog: one entry fills the box, and the
// selection is lit only while the box has the focus.
void MeasureListEntry(MEASUREITEMSTRUCT& mis, const RowGeometry& g);
void DrawListEntry(const DRAWITEMSTRUCT& dis);

// A date-time picker here starts with no part chosen, and then takes no typed
// digits and no Left/Right; a tap on its first part chooses it, as the phone's
// picker starts with its first part chosen.
void PrimePicker(HWND picker);
