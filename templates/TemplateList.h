// The list of template files shown by the new list dialog and the templates
// manager: one owner-drawn row per file of the templates folder whose
// extension starts with the template letters, with the template's icon.
// The two dialogs differ only in columns, placement and the text inset, so
// each passes its own TemplateListLook.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "base/Handles.h"
#include "document/DocMessages.h"
#include "images/PlanarImage.h"

struct TemplateListLook {
    int columnCount;   // every column is titled "Template"
    int columnTrim;    // column 0 is the client width minus this (device pixels)
    int lastColumn;    // width of column 1 when there are two
    int textLeft;      // text starts this far right of the row's left edge
    int textShiftUp;   // text rectangle raised by this much (top and bottom)
    int bottomGap;     // the list ends this far above the dialog's bottom edge
};

// One template row: its file name and its icon, read the first time the
// row is drawn (a folder of a thousand templates opens as fast as one).
struct TemplateRow {
    std::wstring fileName;
    PlanarImage icon;
    bool iconRead = false;
};

struct TemplateList {
    HWND view = nullptr;
    std::wstring folder;             // ends with "\"
    std::vector<TemplateRow> rows;   // in row order
    PlanarImage defaultIcon;         // for a template without an icon
    FontHandle font;                 // the bold dialog font: list and heading
    TemplateListLook look = {};

    // Creates the list view in its place under the heading of `dialog`, with
    // the look's columns; the font and default icon are made here too.
    void Create(HWND dialog, const TemplateListLook& look);
    // Empties the list and lists `folder` again (a missing folder: no rows).
    void Fill();
    // A single column spans the list's client area (after a move or a fill).
    void FitColumn() const;
    // The list under the heading of a `width` x `height` dialog.
    void Place(HWND dialog, int width, int height) const;
    // The name of the row under the selection mark, empty when there is none.
    std::wstring SelectedName() const;
    bool HasSelection() const;
    // WM_DRAWITEM and WM_MEASUREITEM of the list (false: not this list's).
    bool Draw(const DRAWITEMSTRUCT& dis);
    bool Measure(MEASUREITEMSTRUCT& mis) const;
    // White background and the heading `stringId` above the list.
    void PaintHeading(HWND dialog, UINT stringId) const;
    void Release();
    // What both dialogs answer alike: WM_SIZE, WM_PAINT (with the heading
    // `headingId`), the list's WM_MEASUREITEM and WM_DRAWITEM, and
    // WM_DESTROY. The dialog procedure's result; FALSE for other messages.
    INT_PTR HandleMessage(HWND dialog, UINT msg, LPARAM lParam, UINT headingId);
};

// The templates folder: the TemplatePath setting with "\" appended when it
// lacks one.
std::wstring TemplatesFolder();

// Whether `fileName` is listed as a template: the three characters after
// its first dot must be the template letters, in any case. `title` gets what
// comes before that dot.
bool IsTemplateFileName(const wchar_t* fileName, std::wstring& title);

// Shows string `textId` with the error caption and the exclamation icon.
void ShowTemplateError(HWND owner, UINT textId);
// The same error as a message to show later.
DocMessage TemplateError(UINT textId);
