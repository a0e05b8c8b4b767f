// Menus opened from a soft key. As on the phone their entries are numbered
// 1 to 9 and 0 while they are open, so a digit picks an entry (in nested
// menus too): the numbers are the entries' mnemonics, put in front of the
// texts when the menu opens and taken away when it closes.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "platform/PlatformInternal.h"
#include "platform/SoftKeyBar.h"

namespace {

// Entries changed by numbering an open popup, restored when it closes.
struct NumberedEntry {
    HMENU menu;
    UINT pos;
    std::wstring original;
    std::wstring numbered;
};

struct SoftKeyMenuState {
    bool open = false;
    std::vector<NumberedEntry> numbered;
} g_menu;

void SetMenuItemText(HMENU menu, UINT pos, const std::wstring& text) {
    MENUITEMINFOW mii = {};
    mii.cbSize = sizeof mii;
    mii.fMask = MIIM_STRING;
    mii.dwTypeData = (LPWSTR)text.c_str();
    SetMenuItemInfoW(menu, pos, TRUE, &mii);
}

// ---------------------------------------------------------------------------
// Popups: numbered 1..9, 0 like the phone's menus, so a digit picks an entry.
// ---------------------------------------------------------------------------
void NumberMenu(HMENU menu) {
    int count = GetMenuItemCount(menu);
    int number = 0;
    for (int pos = 0; pos < count; ++pos) {
        MENUITEMINFOW mii = {};
        mii.cbSize = sizeof mii;
        mii.fMask = MIIM_FTYPE | MIIM_SUBMENU;
        if (!GetMenuItemInfoW(menu, pos, TRUE, &mii)) continue;
        if (mii.fType & (MFT_SEPARATOR | MFT_OWNERDRAW | MFT_BITMAP)) continue;
        if (mii.hSubMenu) NumberMenu(mii.hSubMenu);
        if (++number > 10) continue;
        std::wstring original = MenuItemText(menu, pos);
        std::wstring numbered = L"&";
        numbered += (wchar_t)(L'0' + number % 10);
        numbered += L' ';
        numbered += StripMnemonics(original);
        SetMenuItemText(menu, pos, numbered);
        g_menu.numbered.push_back({menu, (UINT)pos, original, numbered});
    }
}

// Puts the texts back, unless the program changed an entry meanwhile.
void RestoreMenuTexts() {
    for (const NumberedEntry& e : g_menu.numbered) {
        if (IsMenu(e.menu) && MenuItemText(e.menu, e.pos) == e.numbered) SetMenuItemText(e.menu, e.pos, e.original);
    }
    g_menu.numbered.clear();
}

}  // namespace

std::wstring StripMnemonics(const std::wstring& text) {
    std::wstring out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && i + 1 < text.size()) ++i;
        else if (text[i] == L'&') continue;
        if (text[i] == L'\t') break;  // accelerator column
        out += text[i];
    }
    return out;
}

std::wstring MenuItemText(HMENU menu, UINT pos) {
    wchar_t buf[512] = L"";
    MENUITEMINFOW mii = {};
    mii.cbSize = sizeof mii;
    mii.fMask = MIIM_STRING;
    mii.dwTypeData = buf;
    mii.cch = 511;
    if (!GetMenuItemInfoW(menu, pos, TRUE, &mii)) return L"";
    return buf;
}

bool SoftKeyMenuIsOpen() { return g_menu.open; }

void OpenSoftKeyPopup(HWND bar, int index) {
    SoftKeyBarState* st = SoftKeyBarStateOf(bar);
    TBBUTTON button = {};
    if (!st || g_menu.open || !SendMessageW(bar, TB_GETBUTTON, index, (LPARAM)&button)) return;
    HMENU popup = (HMENU)button.dwData;
    if (!popup || !IsMenu(popup)) return;

    RECT item;
    SendMessageW(bar, TB_GETITEMRECT, index, (LPARAM)&item);
    MapWindowPoints(bar, nullptr, (POINT*)&item, 2);
    RECT barRect;
    GetWindowRect(bar, &barRect);
    int count = (int)SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
    bool rightSide = index > 0 && index == count - 1;
    UINT align = rightSide ? TPM_RIGHTALIGN : TPM_LEFTALIGN;
    int x = rightSide ? item.right : item.left;

    g_menu.open = true;
    NumberMenu(popup);
    SendMessageW(bar, TB_PRESSBUTTON, button.idCommand, TRUE);
    HWND parent = st->parent;
    UINT cmd = (UINT)TrackPopupMenuEx(popup, TPM_RETURNCMD | TPM_BOTTOMALIGN | TPM_LEFTBUTTON | align, x, barRect.top,
                                      parent, nullptr);
    if (IsWindow(bar)) SendMessageW(bar, TB_PRESSBUTTON, button.idCommand, FALSE);
    RestoreMenuTexts();
    g_menu.open = false;
    if (cmd && IsWindow(parent)) PostMessageW(parent, WM_COMMAND, MAKEWPARAM(cmd, 0), 0);
}
