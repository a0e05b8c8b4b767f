#include <windows.h>

#include "app/Startup.h"
#include "platform/Platform.h"
#include "platform/aygshell.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, LPWSTR lpCmdLine, int nCmdShow) {
    // Paths are kept as on the device, rooted at "\": they name the drive
    // the program was started from.
    MakeProgramDriveCurrent();
    UnquoteDesktopCommandLine(lpCmdLine);
    // Start-up errors come before any window: their boxes too belong on the
    // phone screen.
    PlaceDialogsOnPhoneScreen();
    if (!InitInstance(instance, nCmdShow, lpCmdLine)) return 0;
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0)) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
    return (int)msg.wParam;
}
