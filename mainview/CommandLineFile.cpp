#include "mainview/CommandLineFile.h"

#include <cwchar>

#include "app/Startup.h"
#include "base/AppGlobals.h"
#include "listwindow/ListWindow.h"

void OpenCommandLineFile(HWND mainWindow, const TextBuffer& path) {
    if (IsListFileName(path)) {
        ListOpenRequest request = {};
        request.module = hInstance;
        _snwprintf(request.path, MAX_PATH - 1, L"%s", path.Text());
        RunListWindow(mainWindow, request);
    }
}
