// Templates: designing a template field by field, making a new list from a
// template, and keeping the templates folder in order. Every dialog here is
// a full-screen modal dialog run through RunPhoneDialog.
//
// Table of contents of templates/:
//   Templates.h          request records, entry points and control IDs
//   FieldEdit.cpp        "Field Edit": type, name and default of one field
//   TemplateEditor.cpp   "Edit Template": the field list, saving, the icon
//   TemplateList.h/.cpp  the owner-drawn list of template files with icons
//                        (shared by the new list dialog and the manager)
//   NewListDialog.cpp    a new list in a category from a chosen template
//   TemplatesManager.cpp new, edit, delete templates; the templates folder
//
//   FieldDef field;                              // a new field: all zero
//   if (editField(owner, field)) ...             // field holds the user's choices
//
//   TemplateEditRequest edit = {};               // a new template
//   RunTemplateEditor(owner, edit);
//   if (edit.saved) use(edit.name);              // saved as <templates folder><name>.zvt
//
//   NewListRequest req = {};
//   req.module = hLangModule;
//   lstrcpyW(req.categoryFolder, L"\\My Documents\\Zorvel Lists\\Personal\\");
//   RunNewListDialog(owner, req);                // always 1
//   if (req.created) addToTree(req.listName, req.listPath);
#pragma once
#include <windows.h>

#include "document/ListDocument.h"

const int kTemplateNameChars = 255;

// ---- Field Edit ----------------------------------------------------------

// Control IDs of the field properties dialog.
enum FieldEditControl {
    kFieldTypeListId = 123,
    kFieldNameEditId = 124,
    kFieldDefaultListId = 125,
    kFieldDateDefaultListId = 126,
    kFieldTimeDefaultListId = 127,
    kFieldDefaultEditId = 128,     // the default text of Text and Number fields
    kFieldTypeUpDownId = 133,      // the up-down of each list: list ID + 10
    kFieldDefaultUpDownId = 135,
    kFieldDateUpDownId = 136,
    kFieldTimeUpDownId = 137,
};

// Runs the dialog on `field`. Returns 1 when the user saved (the field holds
// the chosen type, name and default), 0 on cancel (the field is untouched).
int editField(HWND owner, FieldDef& field);

// ---- Edit Template -------------------------------------------------------

// Control IDs of the template editor.
enum TemplateEditorControl {
    kTemplateCaptionId = 200,
    kTemplateFieldListId = 201,  // the "ListView2" list of Name and Type
};

enum TemplateEditMode {
    TemplateEditNew = 0,   // an empty template; `path` is ignored
    TemplateEditOpen = 1,  // the template at `path`
};

struct TemplateEditRequest {
    HINSTANCE module;                     // language module (menus, texts); NULL: hLangModule
    int mode;                             // TemplateEditMode
    wchar_t name[kTemplateNameChars + 1]; // in: the name shown first; out: the name saved under
    wchar_t path[MAX_PATH];               // in: the template file (TemplateEditOpen)
    wchar_t folder[MAX_PATH];             // where a save goes; empty: the TemplatePath setting
    BYTE saved;                           // out: 1 when a template file was written
};

// Runs the editor. Returns 1 when it ended by saving or closing, 0 when it
// refused the file it was given (message shown). `saved` and `name` tell
// the caller whether and under which name a template was written.
INT_PTR RunTemplateEditor(HWND owner, TemplateEditRequest& request);

// ---- New list ------------------------------------------------------------

// The owner-drawn list of templates in the new list dialog and the manager.
const int kTemplateListId = 300;

struct NewListRequest {
    HINSTANCE module;                         // language module; NULL: hLangModule
    wchar_t listName[kTemplateNameChars + 1]; // out: the name entered
    wchar_t categoryFolder[MAX_PATH];         // in: the category, ending in "\"
    wchar_t listPath[MAX_PATH];               // out: the list file made (backslashes collapsed)
    BYTE created;                             // out: 1 when a new list was made and kept (saved)
};

// Runs the new list dialog. Always returns 1; `created` tells the outcome.
INT_PTR RunNewListDialog(HWND owner, NewListRequest& request);

// ---- Templates manager ---------------------------------------------------

struct TemplatesManagerRequest {
    HINSTANCE module;  // language module; NULL: hLangModule
    int flag;          // the settings dialog passes 1; not used by the manager
};

// Runs the templates manager. Always returns 1.
INT_PTR RunTemplatesManager(HWND owner, TemplatesManagerRequest& request);
