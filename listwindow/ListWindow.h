// The list window: one open list file shown as a full-screen modal dialog
// (title strip with icon, name and counter; owner-drawn rows below), and the
// commands that act on its items. The window works on its own copy of the
// list; the file is rewritten only by Save.
//
// Table of contents of listwindow/ (list window files):
//   ListWindow.h       request record and the function that runs the window
//   ListWindowState.h  the window's one state record (shared by its files)
//   ListWindow.cpp     dialog procedure, set-up, layout, title strip
//   ListDraw.cpp       owner drawing of rows and the header sort mark
//   ListCommands.cpp   menu and soft-key commands, saving and leaving
//   ListNotify.cpp     keys, taps and column clicks on the list view
//   ListSort.h/.cpp    the stable sort of the items and its comparators
//   ItemEditor.h/.cpp  the item edit dialog; ItemEditorRows.h/.cpp its rows
//   PickerFace.h/.cpp  the item editor's date-time pickers drawn for the density
#pragma once
#include <windows.h>

// What the opener hands to the list window and reads back afterwards.
struct ListOpenRequest {
    HINSTANCE module;        // program module: holds the full-screen dialog template
    wchar_t path[MAX_PATH];  // full device path of the list file
    BYTE saved;              // out: 1 when the window wrote the file, 0 when left without saving
};

// Runs the list window modally on the full-screen dialog template,
// owned by `owner`. Returns the dialog's result: 1 when the window ended
// (saved, left, or a file it refused), -1 when the dialog could not be made.
INT_PTR RunListWindow(HWND owner, ListOpenRequest& request);
