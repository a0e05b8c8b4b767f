// The icon picker dialog: the grid of cached icons, the preview band and
// the confirm / cancel contract on the caller's image.
#include "settings/IconPicker.h"

#include <commctrl.h>

#include <string>
#include <utility>

#include "platform/PhoneDialog.h"
#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "settings/AppSettings.h"
#include "settings/PickerGdi.h"

using picker::Fill;

namespace {

// Answers of the grid's custom draw, as the list view reads them.
const LRESULT kAnswerPrePaint = CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
const LRESULT kAnswerItemPrePaint = CDRF_NOTIFYPOSTPAINT | CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTERASE;
const LRESULT kAnswerItemPostPaint = CDRF_NOTIFYITEMDRAW;

struct IconPickerState {
    HINSTANCE resourceModule;
    INT_PTR callerValue1;
    INT_PTR callerValue2;
    int flag;
    PlanarImage* callerImage;
    PlanarImage current;  // a copy of the caller's icon, then of each icon chosen
    HWND list;
    int lastRow;
    FontHandle font;
} g_iconPicker;

int BandHeight() { return ScaleY(28); }

RECT PreviewBand(HWND hwnd) {
    RECT r;
    GetClientRect(hwnd, &r);
    r.top = r.bottom - BandHeight();
    return r;
}

// ---------------------------------------------------------------------------
// The grid
// ---------------------------------------------------------------------------

void PlaceList(HWND hwnd) {
    if (!g_iconPicker.list) return;
    RECT client;
    GetClientRect(hwnd, &client);
    int height = client.bottom - BandHeight();
    MoveWindow(g_iconPicker.list, 0, 0, client.right, height > 0 ? height : 0, TRUE);
}

// Cells of 44 x 32 pixels hold a 16-pixel icon in a framed box. The image
// list only gives the items that size: its images are never drawn, the
// icons are blended in by the custom draw.
void CreateGrid(HWND hwnd) {
    RECT client;
    GetClientRect(hwnd, &client);
    g_iconPicker.list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_ICON |
                                        LVS_SINGLESEL, 0, 0, client.right, client.bottom - BandHeight(), hwnd,
                                        (HMENU)(INT_PTR)IconPicker::kIconListId, g_iconPicker.resourceModule, nullptr);
    HWND list = g_iconPicker.list;
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_ONECLICKACTIVATE, LVS_EX_ONECLICKACTIVATE);
    HIMAGELIST images = ImageList_Create(ScaleX(44), ScaleY(26), ILC_COLOR32, 0, 1);
    SendMessageW(list, LVM_SETIMAGELIST, LVSIL_NORMAL, (LPARAM)images);
    SendMessageW(list, LVM_SETICONSPACING, 0, MAKELPARAM(ScaleX(44), ScaleY(32)));
    SendMessageW(list, WM_SETFONT, (WPARAM)g_iconPicker.font.Get(), FALSE);
}

void FillGrid() {
    HWND list = g_iconPicker.list;
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    size_t count = IconPicker::CachedIconCount();
    for (size_t i = 0; i < count; ++i) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE | LVIF_PARAM | LVIF_TEXT;
        item.iItem = (int)i;
        item.iImage = (int)i;
        item.lParam = (LPARAM)i;
        item.pszText = (LPWSTR)L"";
        SendMessageW(list, LVM_INSERTITEMW, 0, (LPARAM)&item);
    }
}

// The framed box of a cell: white, or the highlight colour for the chosen
// icon while the grid has the focus.
LRESULT DrawCellBox(const NMLVCUSTOMDRAW* draw) {
    HWND list = g_iconPicker.list;
    int row = (int)draw->nmcd.dwItemSpec;
    RECT bounds = {};
    bounds.left = LVIR_SELECTBOUNDS;
    SendMessageW(list, LVM_GETITEMRECT, row, (LPARAM)&bounds);
    RECT box = {bounds.left + ScaleX(9), bounds.top + 2, bounds.right - ScaleX(9), bounds.bottom - 2};
    Fill(draw->nmcd.hdc, box, RGB(0, 0, 0));
    InflateRect(&box, -ScaleX(1), -ScaleY(1));
    // The item's own state, not the selection mark: the cell that loses the
    // selection is redrawn before the mark moves on.
    bool chosen = (SendMessageW(list, LVM_GETITEMSTATE, row, LVIS_SELECTED) & LVIS_SELECTED) && GetFocus() == list;
    Fill(draw->nmcd.hdc, box, chosen ? GetSysColor(COLOR_HIGHLIGHT) : RGB(255, 255, 255));
    return kAnswerItemPrePaint;
}

LRESULT DrawCellIcon(const NMLVCUSTOMDRAW* draw) {
    size_t index = (size_t)draw->nmcd.lItemlParam;
    if (index >= IconPicker::CachedIconCount()) return kAnswerItemPostPaint;
    const PlanarImage& icon = IconPicker::CachedIcon(index);
    RECT bounds = {};
    bounds.left = LVIR_SELECTBOUNDS;
    SendMessageW(g_iconPicker.list, LVM_GETITEMRECT, draw->nmcd.dwItemSpec, (LPARAM)&bounds);
    int centreX = bounds.left + ScaleX(10) + ScaleX(12);
    int centreY = bounds.top + ScaleY(12) + 1;
    DrawImage(icon, draw->nmcd.hdc, centreX - icon.width / 2, centreY - icon.height / 2);
    return kAnswerItemPostPaint;
}

LRESULT OnGridCustomDraw(const NMLVCUSTOMDRAW* draw) {
    switch (draw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return kAnswerPrePaint;
    case CDDS_ITEMPREPAINT: return DrawCellBox(draw);
    case CDDS_ITEMPOSTPAINT: return DrawCellIcon(draw);
    }
    return CDRF_SKIPDEFAULT;
}

// The focused cell becomes the current icon, once per change of cell.
void OnGridSelection(HWND hwnd) {
    int row = (int)SendMessageW(g_iconPicker.list, LVM_GETNEXTITEM, (WPARAM)-1, LVNI_FOCUSED);
    if (row < 0 || row == g_iconPicker.lastRow) return;
    LVITEMW item = {};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    if (!SendMessageW(g_iconPicker.list, LVM_GETITEMW, 0, (LPARAM)&item)) return;
    size_t index = (size_t)item.lParam;
    if (index >= IconPicker::CachedIconCount()) return;
    g_iconPicker.current.CopyFrom(IconPicker::CachedIcon(index));
    g_iconPicker.lastRow = row;
    RECT band = PreviewBand(hwnd);
    InvalidateRect(hwnd, &band, TRUE);
    UpdateWindow(hwnd);
}

// ---------------------------------------------------------------------------
// Messages
// ---------------------------------------------------------------------------

BOOL OnInitDialog(HWND hwnd) {
    std::wstring title = ResText(IDS_ICON_PICKER_TITLE);
    if (!title.empty()) SetWindowTextW(hwnd, title.c_str());

    g_iconPicker.font.Reset(picker::CreatePickerFont());
    CreateGrid(hwnd);
    if (IconPicker::CachedIconCount() == 0) IconPicker::FillIconCache(g_appSettings.IconsFolder.value.c_str());
    FillGrid();
    SetFocus(g_iconPicker.list);
    return FALSE;  // the focus is set
}

BOOL OnCommand(HWND hwnd, int id) {
    switch (id) {
    case IDOK:
    case IDC_OK: EndDialog(hwnd, 1); return TRUE;
    case IDCANCEL:
    case IDC_CANCEL: EndDialog(hwnd, 0); return TRUE;
    }
    return FALSE;
}

INT_PTR OnNotify(HWND hwnd, const NMHDR* header) {
    if (header->hwndFrom != g_iconPicker.list) return FALSE;
    switch (header->code) {
    case NM_CUSTOMDRAW:
        SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, OnGridCustomDraw((const NMLVCUSTOMDRAW*)header));
        return TRUE;
    case LVN_ITEMCHANGED:
    case LVN_ITEMACTIVATE: OnGridSelection(hwnd); return FALSE;
    }
    return FALSE;
}

// The band under the grid: the label, then the current icon (or the text
// for no icon) at its natural size.
BOOL OnPaint(HWND hwnd) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(hwnd, &ps);
    RECT band = PreviewBand(hwnd);
    SelectedObject font(dc, g_iconPicker.font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0, 0, 0));

    std::wstring label = ResText(IDS_ICON_PREVIEW_LABEL);
    RECT labelRect = band;
    labelRect.left = ScaleX(10);
    DrawTextW(dc, label.c_str(), -1, &labelRect, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SIZE extent = {};
    GetTextExtentPoint32W(dc, label.c_str(), (int)label.size(), &extent);
    int x = ScaleX(10) + extent.cx + ScaleX(6);

    const PlanarImage& current = g_iconPicker.current;
    if (current.IsDrawable()) {
        DrawImage(current, dc, x, band.top + (BandHeight() - current.height) / 2);
    } else {
        RECT noneRect = band;
        noneRect.left = x;
        DrawTextW(dc, ResText(IDS_NONE).c_str(), -1, &noneRect, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
    EndPaint(hwnd, &ps);
    return TRUE;
}

BOOL OnDestroy() {
    if (g_iconPicker.list) DestroyWindow(g_iconPicker.list);  // its image list goes with it
    g_iconPicker.font.Reset();
    g_iconPicker.list = nullptr;
    return FALSE;
}

INT_PTR OnMeasureItem(HWND hwnd) {
    SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, 1);
    return TRUE;
}

// A white page, as on the phone.
INT_PTR OnDialogColor(HDC dc) {
    SetBkColor(dc, RGB(255, 255, 255));
    return (INT_PTR)GetStockObject(WHITE_BRUSH);
}

INT_PTR CALLBACK IconPickerProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(hwnd);
    case WM_COMMAND: return OnCommand(hwnd, LOWORD(wParam));
    case WM_NOTIFY: return OnNotify(hwnd, (const NMHDR*)lParam);
    case WM_PAINT: return OnPaint(hwnd);
    case WM_MOVE:
    case WM_SIZE: PlaceList(hwnd); return FALSE;
    case WM_MEASUREITEM: return OnMeasureItem(hwnd);
    case WM_CTLCOLORDLG: return OnDialogColor((HDC)wParam);
    case WM_DESTROY: return OnDestroy();
    }
    return FALSE;
}

void ResetState() {
    g_iconPicker.current.Release();
    g_iconPicker.callerImage = nullptr;
    g_iconPicker.list = nullptr;
    g_iconPicker.font.Reset();
    g_iconPicker.lastRow = -1;
}

}  // namespace

namespace IconPicker {

bool Run(HWND owner, HINSTANCE resourceModule, INT_PTR callerValue1, INT_PTR callerValue2, int flag,
         PlanarImage& image) {
    ResetState();
    g_iconPicker.resourceModule = resourceModule;
    g_iconPicker.callerValue1 = callerValue1;
    g_iconPicker.callerValue2 = callerValue2;
    g_iconPicker.flag = flag;
    g_iconPicker.callerImage = &image;
    if (!image.IsEmpty() && !g_iconPicker.current.CopyFrom(image)) return false;

    PhoneDialogSetup setup;
    setup.menuModule = resourceModule;
    setup.menuId = IDM_OK_CANCEL_MENUBAR;
    setup.overrideBack = false;  // Back cancels
    INT_PTR result = RunPhoneDialog(owner, setup, IconPickerProc, 0);
    bool confirmed = result == 1;
    if (confirmed) {
        image.Release();
        image = std::move(g_iconPicker.current);
    }
    ResetState();
    return confirmed;
}

}  // namespace IconPicker
