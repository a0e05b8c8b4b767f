#include "mainview/CommandLineFile.h"

#include <cwchar>

#include "app/Startup.h"
#include "base/AppGlobals.h"
#include "listwindow/ListWindow.h"
#include "templates/Templates.h"

void OpenCommandLineFile(HWND mainWindow, const TextBuffer& path) {
    if (IsListFileName(path)) {
        ListOpenRequest request = {};
        request.module = hInstance;
        _snwprintf(request.path, MAX_PATH - 1, L"%s", path.Text());
        RunListWindow(mainWindow, request);
        return;
    }
    // Anything else is a template: a file that is not one is refused by the
    // editor with its message, and the program ends all the same.
    TemplateEditRequest request = {};
    request.module = hLangModule;
    request.mode = TemplateEditOpen;
    _snwprintf(request.path, MAX_PATH - 1, L"%s", path.Text());
    // The title fits the buffer whenever the path does; a longer path is
    // refused by the editor all the same.
    if (path.length < MAX_PATH) {
        wchar_t title[MAX_PATH] = {};
        FileTitleFromPath(path, title);
        lstrcpynW(request.name, title, kTemplateNameChars + 1);
    }
    RunTemplateEditor(mainWindow, request);
}
