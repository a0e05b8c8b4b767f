// Notifications of the list view: keys, taps, column clicks, and the cell
// texts the virtual list view asks for.
#include <windows.h>
#include <commctrl.h>

#include "listwindow/ListWindowState.h"
#include "platform/ScreenScale.h"

namespace {

ListWindowState& S() { return g_listWindow; }

COLORREF RowColorOfKey(WORD key) {
    switch (key) {
    case 'Y': return RGB(255, 255, 181);
    case 'R': return RGB(255, 206, 201);
    case 'G': return RGB(181, 219, 181);
    case 'B': return RGB(137, 181, 221);
    default: return CLR_INVALID;
    }
}

// Left and Right have no row to move to in a report view; on a list wider
// than the screen they scroll it sideways, a column's worth at a time. The
// list view stops at either end by itself.
void ScrollSideways(int direction) {
    ListWindowState& s = S();
    RECT client;
    GetClientRect(s.listView, &client);
    SCROLLINFO bar = {};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_ALL;
    if (!GetScrollInfo(s.listView, SB_HORZ, &bar) || bar.nMax - bar.nMin + 1 <= (int)bar.nPage) return;
    int step = client.right / 3 > ScaleX(20) ? client.right / 3 : ScaleX(20);
    SendMessageW(s.listView, LVM_SCROLL, (WPARAM)(direction * step), 0);
}

void OnKeyDown(const NMLVKEYDOWN* key) {
    ListWindowState& s = S();
    int mark = (int)SendMessageW(s.listView, LVM_GETSELECTIONMARK, 0, 0);
    ListItem* item = SelectedItem();
    if (key->wVKey == VK_RETURN) {
        if (item && !item->values.empty() && item->values[0].storedType == FieldType::Check)
            ToggleCheckCell(mark, 0, false);
        return;
    }
    if (key->wVKey == VK_DOWN) {
        g_colorKeysArmed = 1;
        return;
    }
    if (key->wVKey == VK_LEFT || key->wVKey == VK_RIGHT) return ScrollSideways(key->wVKey == VK_LEFT ? -1 : 1);
    COLORREF color = RowColorOfKey(key->wVKey);
    if (color == CLR_INVALID || !g_colorKeysArmed || !item) return;
    item->backColor = color;
    s.modified = 1;
    SendMessageW(s.listView, LVM_REDRAWITEMS, (WPARAM)mark, (LPARAM)mark);
}

// A tap on any check cell toggles it, whichever column it is in.
void OnClick(const NMITEMACTIVATE* click) {
    ListWindowState& s = S();
    int row = click->iItem;
    int column = click->iSubItem;
    if (row < 0) {
        LVHITTESTINFO hit = {};
        hit.pt = click->ptAction;
        if (SendMessageW(s.listView, LVM_SUBITEMHITTEST, 0, (LPARAM)&hit) < 0) return;
        row = hit.iItem;
        column = hit.iSubItem;
    }
    if (row < 0 || (size_t)row >= s.rows.size()) return;
    const ListItem& item = *s.rows[(size_t)row];
    if (column < 0 || (size_t)column >= item.values.size()) return;
    if (item.values[(size_t)column].storedType == FieldType::Check) ToggleCheckCell(row, column, false);
}

void OnGetDispInfo(NMLVDISPINFOW* info) {
    if (!(info->item.mask & LVIF_TEXT) || !info->item.pszText || info->item.cchTextMax <= 0) return;
    lstrcpynW(info->item.pszText, CellTextOf(info->item.iItem, info->item.iSubItem), info->item.cchTextMax);
}

}  // namespace

LRESULT OnNotify(HWND, const NMHDR* header) {
    ListWindowState& s = S();
    if (!header || !s.listView || header->hwndFrom != s.listView) return 0;
    switch (header->code) {
    case LVN_KEYDOWN: OnKeyDown((const NMLVKEYDOWN*)header); return 0;
    case NM_CLICK: OnClick((const NMITEMACTIVATE*)header); return 0;
    case LVN_COLUMNCLICK: {
        const NMLISTVIEW* column = (const NMLISTVIEW*)header;
        if (column->iItem == -1) SortByColumn(column->iSubItem, false);
        return 0;
    }
    case LVN_GETDISPINFOW: OnGetDispInfo((NMLVDISPINFOW*)header); return 0;
    case LVN_ODFINDITEMW: return -1;
    }
    return 0;
}
