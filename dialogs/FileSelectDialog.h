// The program's own full-screen dialog for choosing a file name to save, a
// file to load or a folder. It lists the current folder (folders first, then
// the files matching the extension), lets the user walk down into folders
// and back up (Back key, or a tap on the path line), and checks a typed name.
//
// Two ways to call it:
//   FileSelectDialog dlg(hInstance, hLangModule, FileSelectLoad, ...);
//   if (dlg.Run(path, MAX_PATH)) ...
// or, with a request record:
//   FileSelectRequest req; req.mode = FileSelectSave; req.title = L"File Select";
//   req.filterText = L"CSV File"; req.extension = L".CSV";
//   if (RunFileSelectDialog(owner, req)) use(req.path);
//
// dialogs/ holds this one dialog:
//   FileSelectDialog.h/.cpp  the interface, the procedure, layout, accept rules
//   FileSelectList.h/.cpp    filling the listing, opening folders, going up
//   FileSelectPaths.h/.cpp   path and file-name rules (no windows)
#pragma once
#include <windows.h>
#include <commctrl.h>

#include "base/CeString.h"
#include "base/Handles.h"
#include "platform/aygshell.h"

enum FileSelectMode {
    FileSelectSave = 0,    // "Save File": a typed name in the current folder
    FileSelectLoad = 1,    // "Load File": an existing file of the listing
    FileSelectFolder = 2,  // "Select Folder": the folder being shown
};

// Commands: IDC_FILE_SELECT_ACCEPT (6, the "Select" soft key) accepts by
// mode, IDOK (Enter) activates the selected row (a folder is opened; Enter
// typed in the name box accepts instead), IDCANCEL (the "Cancel" soft key)
// closes without a choice. Back (Esc) and a tap on the path line go up.

// Child window IDs, for tests and for anyone reading the dialog's controls.
enum FileSelectControl {
    kFileSelectPathLine = 100,
    kFileSelectNameLabel,
    kFileSelectNameEdit,
    kFileSelectTypeLabel,
    kFileSelectTypeField,
    kFileSelectList,
};

// The folder in which the last file selection dialog ended with a choice;
// the next dialog starts there unless its caller names a folder.
extern CeString g_fileSelectLastFolder;

class FileSelectDialog {
public:
    // The three resources: `menuBarId`, the soft-key bar in `module`
    // (Select sends IDC_FILE_SELECT_ACCEPT, Cancel IDCANCEL); `imageStripId`,
    // a strip of 16-pixel cells in `instance` (cell 0 a folder, cell 1 a file)
    // drawn when the shell has no icon for an entry; `pathHintId`, a text of
    // `module` shown at the end of the path line while there is a folder to
    // go up to. The main window passes IDM_FILE_SELECT_MENUBAR, IDB_PROGRAM_IMAGE_STRIP, IDS_FILE_SELECT_UP. A null or empty title
    // gives the mode's own name.
    FileSelectDialog(HINSTANCE instance, HINSTANCE module, int mode, UINT menuBarId, UINT imageStripId,
                     UINT pathHintId, const wchar_t* title = nullptr);

    // Runs the dialog modally. On a choice copies `result` into `outPath`
    // (at most outChars - 1 characters) and returns 1; returns 0 when cancelled.
    int Run(wchar_t* outPath, int outChars, HWND owner = nullptr);

    HINSTANCE hInstance;
    HINSTANCE module;
    UINT menuBarId, imageStripId, pathHintId;
    int mode;
    CeString title;
    CeString result;
    CeString currentFolder;  // set before Run to start elsewhere than the last folder
    CeString extension;      // files listed by currentFolder + "*" + extension
    CeString filterText;     // shown in the type field
    CeString initialName;    // save mode: the name the edit starts with

    // Windows of the running dialog.
    HWND dialog = nullptr;
    HWND pathLine = nullptr;
    HWND nameLabel = nullptr, nameEdit = nullptr;
    HWND typeLabel = nullptr, typeField = nullptr;
    HWND listView = nullptr;
    HIMAGELIST imageList = nullptr;    // the rows' icons
    HIMAGELIST stripImages = nullptr;  // the fallback cells of imageStripId
    FontHandle font;
    RECT pathRect = {};     // the path line, in client coordinates: a tap here goes up
    RECT pathHintRect = {}; // where the hint is painted
};


// Request record for callers that prefer one: fill, call, read `path`.
struct FileSelectRequest {
    int mode = FileSelectLoad;
    CeString title;       // empty: the mode's name
    CeString folder;      // empty: the last folder of any earlier choice
    CeString extension;   // empty: ".*"
    CeString filterText;  // empty: "All Files(*.*)"
    CeString fileName;    // save mode: initial name
    HINSTANCE module = nullptr;  // null: the language module
    UINT menuBarId = 0, imageStripId = 0, pathHintId = 0;  // 0: the usual three above
    CeString path;        // out: the chosen file or folder
};

// Runs the dialog for `request`; returns 1 with `request.path` set on a
// choice, 0 when cancelled.
int RunFileSelectDialog(HWND owner, FileSelectRequest& request);
