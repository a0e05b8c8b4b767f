#include "mainview/MainWindow.h"

#include <commctrl.h>

#include "LangIds.h"
#include "app/Startup.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "mainview/CategoryTree.h"
#include "mainview/AboutScreen.h"
#include "mainview/CommandLineFile.h"
#include "platform/MenuBars.h"
#include "platform/aygshell.h"
#include "settings/AppSettings.h"

HWND g_hMainMenuBar;

namespace {
SHACTIVATEINFO g_activateInfo = [] {
    SHACTIVATEINFO info = {};
    info.cbSize = sizeof info;
    return info;
}();

void CreateMenuBar(HWND hwnd) {
    g_hMainMenuBar = CreateMenuBarFromMenu(hwnd, hLangModule, IDM_MAIN_MENUBAR);
    // Back reaches the window as WM_HOTKEY (to erase in a label edit).
    OverrideBackKey(g_hMainMenuBar);
}

LRESULT OnCreate(HWND hwnd) {
    g_hMainMenuBar = nullptr;
    g_appSettings.LoadSettings();
    MakeTreeFonts();
    CreateMenuBar(hwnd);
    CreateTree(hwnd);
    if (g_commandLineFile.length > 0) {
        OpenCommandLineFile(hwnd, g_commandLineFile);
        DestroyWindow(hwnd);
        return 0;
    }
    if (g_mainView.tree) SetFocus(g_mainView.tree);
    return 0;
}

LRESULT OnDestroy() {
    if (g_hMainMenuBar) DestroyWindow(g_hMainMenuBar);
    g_hMainMenuBar = nullptr;
    DestroyTree();
    if (hImageModule) FreeLibrary(hImageModule);
    hImageModule = nullptr;
    if (hLangModule) FreeLibrary(hLangModule);
    hLangModule = nullptr;
    PostQuitMessage(0);
    return 0;
}

LRESULT OnHotKey(WPARAM wParam, LPARAM lParam) {
    if (HIWORD(lParam) == VK_ESCAPE) SHSendBackToFocusWindow(WM_HOTKEY, wParam, lParam);
    return 0;
}
}  // namespace

LRESULT CALLBACK MainWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_CREATE: return OnCreate(hwnd);
    case WM_DESTROY: return OnDestroy();
    case WM_SIZE: OnTreeSize(hwnd); return 0;
    case WM_ACTIVATE: SHHandleWMActivate(hwnd, wParam, lParam, &g_activateInfo, 0); return 0;
    case WM_PAINT: OnMainPaint(hwnd); return 0;
    case WM_SETTINGCHANGE: SHHandleWMSettingChange(hwnd, wParam, lParam, &g_activateInfo); return 0;
    case WM_NOTIFY: return OnTreeNotify(hwnd, (NMHDR*)lParam);
    case WM_CONTEXTMENU: OnTreeContextMenu(hwnd, (short)LOWORD(lParam), (short)HIWORD(lParam)); return 0;
    case WM_COMMAND: OnMainCommand(hwnd, LOWORD(wParam), HIWORD(wParam), (HWND)lParam); return 0;
    case WM_TIMER: OnTreeTimer(hwnd, wParam); return 0;
    case WM_HOTKEY: return OnHotKey(wParam, lParam);
    }
    return DefWindowProcW(hwnd, msg, wParam, lParam);
}

HWND CreateMainWindow(HINSTANCE instance) {
    // The device style (visible, clip siblings, the class bit 0x0800) plus a
    // desktop caption so that the user can move and close the phone screen.
    const DWORD style = 0x14000800 | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
    return CreateWindowExW(0, kMainWindowClass, kMainWindowTitle, style, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
}
