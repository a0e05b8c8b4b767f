// SHCreateMenuBar: the soft-key bar. It is a toolbar control, one button per
// top-level entry of the menu (normally two: left and right soft key). On a
// window fitted to the phone screen the toolbar is a disabled child lying in
// the band under the client area, where the phone shows its menu bar: the
// band is painted from the toolbar's buttons and taps in it press them, so
// the toolbar holds the state (texts, popups, enabled keys) and answers the
// TB_ messages while the window's frame shows it. The toolbar is its own
// notification target, so its clicks stay inside the bar; commands reach the
// parent as WM_COMMAND (lParam 0), like menu commands on the phone.
#include "platform/aygshell.h"

#include <commctrl.h>

#include <string>

#include "platform/ScreenScale.h"
#include "platform/Platform.h"
#include "platform/PlatformInternal.h"
#include "platform/SoftKeyBar.h"

const wchar_t kBarProp[] = L"ZvSoftKeyBar";
static const wchar_t kBarStateProp[] = L"ZvSoftKeyBarState";

SoftKeyBarState* SoftKeyBarStateOf(HWND bar) {
    return bar ? (SoftKeyBarState*)GetPropW(bar, kBarStateProp) : nullptr;
}

namespace {

const UINT_PTR kBarSubclassId = 0x5A51;

SoftKeyBarState* StateOf(HWND bar) { return SoftKeyBarStateOf(bar); }

// A soft key: its command goes to the parent, or its popup opens.
void PressButton(HWND bar, int index) {
    SoftKeyBarState* st = StateOf(bar);
    TBBUTTON button = {};
    if (!st || !SendMessageW(bar, TB_GETBUTTON, index, (LPARAM)&button)) return;
    if (!(button.fsState & TBSTATE_ENABLED) || (button.fsState & TBSTATE_HIDDEN)) return;
    if (button.dwData) PostMessageW(bar, kMsgBarOpenPopup, index, 0);
    else PostMessageW(st->parent, WM_COMMAND, MAKEWPARAM(button.idCommand, 0), 0);
}

// The phone's default for Back: erase in an edit box, else leave the screen.
void BackDefault(HWND parent) {
    HWND focus = GetFocus();
    if (IsEditableEdit(focus) && (focus == parent || IsChild(parent, focus))) EraseBackInEdit(focus);
    else PostMessageW(parent, WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
}

void OnBarKey(HWND bar, UINT vk, bool up) {
    SoftKeyBarState* st = StateOf(bar);
    if (!st) return;
    WORD flags = 0;
    auto found = st->keyOverrides.find(vk);
    if (found != st->keyOverrides.end()) flags = found->second;
    if (flags & SHMBOF_NOTIFY)
        PostMessageW(st->parent, WM_HOTKEY, vk, MAKELPARAM(up ? MOD_KEYUP : 0, vk));
    if (flags & SHMBOF_NODEFAULT) return;

    if (vk == VK_ESCAPE) {
        // The phone acts on Back when it is released.
        if (!up) st->backDown = true;
        else if (st->backDown) {
            st->backDown = false;
            BackDefault(st->parent);
        }
        return;
    }
    if (!up) PressButton(bar, vk == VK_F1 ? 0 : (int)SendMessageW(bar, TB_BUTTONCOUNT, 0, 0) - 1);
}

int IndexOfCommand(HWND bar, UINT id) {
    return (int)SendMessageW(bar, TB_COMMANDTOINDEX, id, 0);
}

LRESULT OnGetSubMenu(HWND bar, UINT id) {
    int index = IndexOfCommand(bar, id);
    TBBUTTON button = {};
    if (index < 0 || !SendMessageW(bar, TB_GETBUTTON, index, (LPARAM)&button)) return 0;
    return (LRESULT)button.dwData;
}

LRESULT OnSetSubMenu(HWND bar, UINT id, HMENU menu) {
    int index = IndexOfCommand(bar, id);
    if (index < 0) return 0;
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_BYINDEX | TBIF_LPARAM;
    SendMessageW(bar, TB_GETBUTTONINFOW, index, (LPARAM)&info);
    HMENU old = (HMENU)info.lParam;
    info.lParam = (LPARAM)menu;
    SendMessageW(bar, TB_SETBUTTONINFOW, index, (LPARAM)&info);
    return (LRESULT)old;
}

LRESULT OnOverrideKey(HWND bar, UINT vk, LPARAM lParam) {
    SoftKeyBarState* st = StateOf(bar);
    if (!st) return FALSE;
    WORD mask = LOWORD(lParam), value = HIWORD(lParam);
    WORD& flags = st->keyOverrides[vk];
    flags = (WORD)((flags & ~mask) | (value & mask));
    return TRUE;
}

// The bar's rectangle in its parent's window coordinates (the band).
RECT BandOf(HWND bar, HWND parent) {
    RECT barRect, win;
    GetWindowRect(bar, &barRect);
    GetWindowRect(parent, &win);
    OffsetRect(&barRect, -win.left, -win.top);
    return barRect;
}

void RepaintBand(HWND bar) {
    SoftKeyBarState* st = StateOf(bar);
    if (!st || !st->inBand || !IsWindow(st->parent)) return;
    HDC dc = GetWindowDC(st->parent);
    if (!dc) return;
    PaintSoftKeyBand(st->parent, dc, BandOf(bar, st->parent));
    ReleaseDC(st->parent, dc);
}

// Messages after which the bar looks different.
bool ChangesLook(UINT msg) {
    switch (msg) {
    case TB_SETBUTTONINFOW: case TB_SETBUTTONINFOA: case TB_SETSTATE: case TB_ENABLEBUTTON:
    case TB_HIDEBUTTON: case TB_PRESSBUTTON: case TB_CHECKBUTTON: case TB_ADDBUTTONSW: case TB_ADDBUTTONSA:
    case TB_INSERTBUTTONW: case TB_INSERTBUTTONA: case TB_DELETEBUTTON: case TB_SETCMDID: case TB_ADDSTRINGW:
    case TB_ADDSTRINGA: case WM_SHOWWINDOW: case WM_WINDOWPOSCHANGED: case WM_SETTEXT:
        return true;
    default:
        return false;
    }
}

// Buttons share the bar's width equally.
void LayoutButtons(HWND bar) {
    int count = (int)SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
    if (count <= 0) return;
    RECT rc;
    GetClientRect(bar, &rc);
    int width = rc.right / count;
    SendMessageW(bar, TB_SETBUTTONSIZE, 0, MAKELPARAM(width, rc.bottom));
    for (int i = 0; i < count; ++i) {
        TBBUTTONINFOW info = {};
        info.cbSize = sizeof info;
        info.dwMask = TBIF_BYINDEX | TBIF_SIZE;
        info.cx = (WORD)(i == count - 1 ? rc.right - width * (count - 1) : width);
        SendMessageW(bar, TB_SETBUTTONINFOW, i, (LPARAM)&info);
    }
}

LRESULT CALLBACK BarProc(HWND bar, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR);

void OnBarDestroy(HWND bar) {
    SoftKeyBarState* st = StateOf(bar);
    RemoveWindowSubclass(bar, BarProc, kBarSubclassId);
    RemovePropW(bar, kBarStateProp);
    if (!st) return;
    if (IsWindow(st->parent) && GetPropW(st->parent, kBarProp) == bar) {
        RemovePropW(st->parent, kBarProp);
        if (st->inBand && IsWindowVisible(st->parent)) SetWindowPos(st->parent, nullptr, 0, 0, 0, 0,
                                                       SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    }
    if (st->menu) DestroyMenu(st->menu);
    if (st->font) DeleteObject(st->font);
    delete st;
}

LRESULT CALLBACK BarProc(HWND bar, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    switch (msg) {
    case SHCMBM_GETSUBMENU:  return OnGetSubMenu(bar, (UINT)lParam);
    case SHCMBM_SETSUBMENU:  return OnSetSubMenu(bar, (UINT)wParam, (HMENU)lParam);
    case SHCMBM_GETMENU:     return StateOf(bar) ? (LRESULT)StateOf(bar)->menu : 0;
    case SHCMBM_OVERRIDEKEY: return OnOverrideKey(bar, (UINT)wParam, lParam);
    case WM_COMMAND:
        if ((HWND)lParam == nullptr || (HWND)lParam == bar) {
            int index = IndexOfCommand(bar, LOWORD(wParam));
            if (index >= 0) PressButton(bar, index);
            return 0;
        }
        break;
    case WM_NOTIFY:
        if (((NMHDR*)lParam)->hwndFrom == bar) {
            if (((NMHDR*)lParam)->code == (UINT)NM_CUSTOMDRAW) return DrawSoftKeyBarItems(bar, (NMTBCUSTOMDRAW*)lParam);
            return 0;
        }
        break;
    case WM_ERASEBKGND: {
        RECT rc;
        GetClientRect(bar, &rc);
        FillSoftKeyBar((HDC)wParam, rc, StateOf(bar) ? StateOf(bar)->background : CLR_NONE);
        return 1;
    }
    case WM_SIZE: {
        LRESULT r = DefSubclassProc(bar, msg, wParam, lParam);
        LayoutButtons(bar);
        return r;
    }
    case kMsgBarKey:         OnBarKey(bar, (UINT)wParam, lParam != 0); return 0;
    case kMsgBarOpenPopup:   OpenSoftKeyPopup(bar, (int)wParam); return 0;
    case WM_NCDESTROY:       OnBarDestroy(bar); break;
    }
    if (ChangesLook(msg)) {
        LRESULT r = DefSubclassProc(bar, msg, wParam, lParam);
        RepaintBand(bar);
        return r;
    }
    return DefSubclassProc(bar, msg, wParam, lParam);
}

// One button per top-level entry of the menu.
void AddButtons(HWND bar, HMENU menu) {
    int count = GetMenuItemCount(menu);
    for (int pos = 0; pos < count; ++pos) {
        MENUITEMINFOW mii = {};
        mii.cbSize = sizeof mii;
        mii.fMask = MIIM_ID | MIIM_SUBMENU | MIIM_STATE | MIIM_FTYPE;
        if (!GetMenuItemInfoW(menu, pos, TRUE, &mii) || (mii.fType & MFT_SEPARATOR)) continue;
        UINT id = mii.wID;
        // A POPUP of a plain MENU resource has no ID of its own.
        if (mii.hSubMenu && (id == 0 || id == (UINT)(UINT_PTR)mii.hSubMenu || id == (UINT)-1)) id = pos + 1;
        std::wstring text = StripMnemonics(MenuItemText(menu, pos));
        TBBUTTON button = {};
        button.iBitmap = I_IMAGENONE;
        button.idCommand = (int)id;
        button.fsState = (mii.fState & MFS_GRAYED) ? 0 : TBSTATE_ENABLED;
        button.fsStyle = BTNS_BUTTON | BTNS_NOPREFIX;
        button.dwData = (DWORD_PTR)mii.hSubMenu;
        button.iString = (INT_PTR)text.c_str();
        SendMessageW(bar, TB_ADDBUTTONSW, 1, (LPARAM)&button);
    }
}

HFONT CreateBarFont() {
    NONCLIENTMETRICSW ncm = {};
    ncm.cbSize = sizeof ncm;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof ncm, &ncm, 0);
    LOGFONTW lf = ncm.lfMenuFont;
    // Sized like every other length on the phone screen, not by the desktop's density.
    lf.lfHeight = -ScaleY(12);
    lf.lfWidth = 0;
    lf.lfWeight = FW_BOLD;
    return CreateFontIndirectW(&lf);
}

}  // namespace



HWND FindSoftKeyBar(HWND parent) {
    HWND bar = parent ? (HWND)GetPropW(parent, kBarProp) : nullptr;
    return bar && IsWindow(bar) ? bar : nullptr;
}

// Keeps the bar in the band under its parent's client area (or, for a parent
// that is not on the phone screen, along the bottom of its client area).
void PlaceSoftKeyBar(HWND parent) {
    HWND bar = FindSoftKeyBar(parent);
    SoftKeyBarState* st = bar ? StateOf(bar) : nullptr;
    if (!st) return;
    RECT client;
    GetClientRect(parent, &client);
    int height = SoftKeyBarHeight();
    int top = st->inBand ? client.bottom : client.bottom - height;
    int width = st->inBand ? SoftKeyBandWidth(parent) : client.right;
    SetWindowPos(bar, nullptr, 0, top, width, height, SWP_NOACTIVATE | SWP_NOZORDER);
    RepaintBand(bar);
}

// A tap in the band presses the key under it when released over it.
void TapSoftKeyBand(HWND parent, POINT pt, bool up) {
    HWND bar = FindSoftKeyBar(parent);
    SoftKeyBarState* st = bar ? StateOf(bar) : nullptr;
    if (!st || !IsWindowVisible(bar) || !IsWindowEnabled(parent)) return;
    RECT rc;
    GetWindowRect(bar, &rc);
    int count = (int)SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
    if (count <= 0 || rc.right <= rc.left || !PtInRect(&rc, pt)) return;
    int index = (int)((pt.x - rc.left) * count / (rc.right - rc.left));
    TBBUTTON button = {};
    if (!SendMessageW(bar, TB_GETBUTTON, index, (LPARAM)&button)) return;
    if (!up) {
        st->tappedIndex = index;
        if (button.fsState & TBSTATE_ENABLED) SendMessageW(bar, TB_PRESSBUTTON, button.idCommand, TRUE);
        return;
    }
    int tapped = st->tappedIndex;
    st->tappedIndex = -1;
    TBBUTTON pressed = {};
    if (tapped >= 0 && SendMessageW(bar, TB_GETBUTTON, tapped, (LPARAM)&pressed))
        SendMessageW(bar, TB_PRESSBUTTON, pressed.idCommand, FALSE);
    if (tapped == index) PressButton(bar, index);
}

BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* pmbi) {
    if (!pmbi || !IsWindow(pmbi->hwndParent)) return FALSE;
    pmbi->hwndMB = nullptr;
    HMENU menu = nullptr;
    if (!(pmbi->dwFlags & SHCMBF_EMPTYBAR)) {
        if (!(pmbi->dwFlags & SHCMBF_HMENU)) return FALSE;  // toolbar resources are not used here
        menu = LoadMenuW(pmbi->hInstRes, MAKEINTRESOURCEW(pmbi->nToolBarId));
        if (!menu) return FALSE;
    }
    return CreateSoftKeyBar(pmbi, menu);
}

BOOL CreateSoftKeyBar(SHMENUBARINFO* pmbi, HMENU menu) {
    if (!pmbi || !IsWindow(pmbi->hwndParent)) {
        if (menu) DestroyMenu(menu);
        return FALSE;
    }
    pmbi->hwndMB = nullptr;
    HWND parent = pmbi->hwndParent;
    bool topLevel = (GetWindowLongW(parent, GWL_STYLE) & WS_CHILD) == 0;
    if (topLevel && !IsOnPhoneScreen(parent)) FitToPhoneScreen(parent);

    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_BAR_CLASSES};
    InitCommonControlsEx(&icc);
    // In the band the toolbar is disabled: it must never take the focus or
    // be reached by the dialog manager's arrow and tab keys.
    bool inBand = IsOnPhoneScreen(parent);
    DWORD style = WS_CHILD | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST | CCS_NORESIZE | CCS_NOPARENTALIGN |
                  CCS_NODIVIDER;
    if (!(pmbi->dwFlags & SHCMBF_HIDDEN)) style |= WS_VISIBLE;
    if (inBand) style |= WS_DISABLED;
    HWND bar = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", style, 0, 0, 0, 0, parent, nullptr,
                               (HINSTANCE)GetModuleHandleW(nullptr), nullptr);
    if (!bar) {
        if (menu) DestroyMenu(menu);
        return FALSE;
    }
    SoftKeyBarState* st = new SoftKeyBarState;
    st->parent = parent;
    st->menu = menu;
    st->inBand = inBand;
    if (pmbi->dwFlags & SHCMBF_COLORBK) st->background = pmbi->clrBk;
    st->font = CreateBarFont();
    SetPropW(bar, kBarStateProp, st);
    SetWindowSubclass(bar, BarProc, kBarSubclassId, 0);

    SendMessageW(bar, TB_SETPARENT, (WPARAM)bar, 0);
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(bar, TB_SETBITMAPSIZE, 0, MAKELPARAM(0, 0));
    SendMessageW(bar, WM_SETFONT, (WPARAM)st->font, FALSE);
    if (menu) AddButtons(bar, menu);

    SetPropW(parent, kBarProp, bar);
    PlaceSoftKeyBar(parent);
    LayoutButtons(bar);
    InstallSoftKeyHook();
    pmbi->hwndMB = bar;
    return TRUE;
}
