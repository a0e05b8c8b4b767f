#include "platform/MenuBars.h"

#include <commctrl.h>

#include "platform/aygshell.h"

HWND CreateMenuBarFromMenu(HWND parent, HINSTANCE module, UINT menuId) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof info;
    info.hwndParent = parent;
    info.dwFlags = SHCMBF_HMENU;
    info.nToolBarId = menuId;
    info.hInstRes = module;
    return SHCreateMenuBar(&info) ? info.hwndMB : nullptr;
}

void OverrideBackKey(HWND menuBar) {
    if (!menuBar) return;
    SendMessageW(menuBar, SHCMBM_OVERRIDEKEY, VK_ESCAPE,
                 MAKELPARAM(SHMBOF_NODEFAULT | SHMBOF_NOTIFY, SHMBOF_NODEFAULT | SHMBOF_NOTIFY));
}

void SetSoftKeyText(HWND menuBar, int command, const wchar_t* text) {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_TEXT;
    info.pszText = const_cast<wchar_t*>(text);
    SendMessageW(menuBar, TB_SETBUTTONINFOW, command, (LPARAM)&info);
}
