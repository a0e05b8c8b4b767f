#include "mainview/CommandLineFile.h"

#include "app/Startup.h"

void OpenCommandLineFile(HWND mainWindow, const TextBuffer& path) {
    (void)mainWindow;
    (void)path;
}
