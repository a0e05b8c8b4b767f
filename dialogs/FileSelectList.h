// The listing of the file selection dialog: filling it from the current
// folder, opening the selected folder, going up. Shared by the dialog's
// procedure (FileSelectDialog.cpp) and nothing else.
#pragma once
#include "dialogs/FileSelectDialog.h"

// The item parameter of a folder row carries this mark above its index.
const LPARAM kFolderMark = 0x10000;

// Lists `dlg.currentFolder`: folders first, then (save and load modes) the
// files matching the extension, sorted; folder mode keeps the folders in the
// order the file system gives them. Selects row 0.
void FillFileList(FileSelectDialog& dlg);

// The selected row, or -1.
int SelectedRow(const FileSelectDialog& dlg);

// Reads row `row`: its name (up to 256 characters) and whether it is a folder.
bool ReadRow(const FileSelectDialog& dlg, int row, wchar_t (&name)[257], bool& isFolder);

// Selects and focuses `row` (state 3) and scrolls it into view.
void SelectRow(const FileSelectDialog& dlg, int row);

// Enter or a tap on a row: a folder is opened; a file does nothing.
void ActivateSelectedRow(FileSelectDialog& dlg);

// One folder up, selecting the folder just left; the root stays the root.
void GoUpOneFolder(FileSelectDialog& dlg);

// Sizes the path line to its text and places the hint after it when it fits
// (in FileSelectDialog.cpp, with the rest of the layout).
void LayoutPathLine(FileSelectDialog& dlg);
