#include "mainview/MainWindow.h"

#include <commctrl.h>

#include "platform/MenuBars.h"
#include "app/Startup.h"
#include "base/AppGlobals.h"
#include "mainview/AboutScreen.h"
#include "mainview/CommandLineFile.h"
#include "platform/aygshell.h"
#include "settings/AppSettings.h"
#include "LangIds.h"

HWND g_hMainMenuBar;

namespace {
SHACTIVATEINFO g_activateInfo = [] {
    SHACTIVATEINFO info = {};
    info.cbSize = sizeof info;
    return info;
}();

void CreateMenuBar(HWND hwnd) {
    g_hMainMenuBar = CreateMenuBarFromMenu(hwnd, hLangModule, IDM_MAIN_MENUBAR);
    if (g_hMainMenuBar) {
        // Without the tree there is nothing for the left soft key to open.
        SendMessageW(g_hMainMenuBar, TB_ENABLEBUTTON, IDM_OPEN, FALSE);
        OverrideBackKey(g_hMainMenuBar);
    }
}

LRESULT OnCreate(HWND hwnd) {
    g_hMainMenuBar = nullptr;
    g_appSettings.LoadSettings();
    CreateMenuBar(hwnd);
    if (g_commandLineFile.length > 0) {
        OpenCommandLineFile(hwnd, g_commandLineFile);
        DestroyWindow(hwnd);
    }
    return 0;
}

LRESULT OnDestroy() {
    if (g_hMainMenuBar) DestroyWindow(g_hMainMenuBar);
    g_hMainMenuBar = nullptr;
    if (hImageModule) FreeLibrary(hImageModule);
    hImageModule = nullptr;
    if (hLangModule) FreeLibrary(hLangModule);
    hLangModule = nullptr;
    PostQuitMessage(0);
    return 0;
}

LRESULT OnPaint(HWND hwnd) {
    PAINTSTRUCT ps;
    BeginPaint(hwnd, &ps);
    EndPaint(hwnd, &ps);
    return 0;
}

LRESULT OnCommand(HWND hwnd, UINT id) {
    switch (id) {
    case IDM_EXIT: DestroyWindow(hwnd); break;
    case IDM_ABOUT: RunAboutScreen(hwnd); break;
    }
    return 0;
}

// The category tree and the commands that act on its items come later; until
// then only the commands that need no tree are offered.
bool IsAvailableCommand(UINT id) { return id == IDM_ABOUT || id == IDM_EXIT; }

LRESULT OnInitMenuPopup(HMENU menu) {
    for (int i = 0, n = GetMenuItemCount(menu); i < n; ++i) {
        UINT id = GetMenuItemID(menu, i);
        if (id == (UINT)-1 || id == 0) continue;  // a sub-menu or a separator
        EnableMenuItem(menu, i, MF_BYPOSITION | (IsAvailableCommand(id) ? MF_ENABLED : MF_GRAYED));
    }
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
    case WM_ACTIVATE: SHHandleWMActivate(hwnd, wParam, lParam, &g_activateInfo, 0); return 0;
    case WM_PAINT: return OnPaint(hwnd);
    case WM_SETTINGCHANGE: SHHandleWMSettingChange(hwnd, wParam, lParam, &g_activateInfo); return 0;
    case WM_COMMAND: return OnCommand(hwnd, LOWORD(wParam));
    case WM_INITMENUPOPUP: return OnInitMenuPopup((HMENU)wParam);
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
