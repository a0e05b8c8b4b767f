// The list window's dialog procedure: set-up and load, layout, the title
// strip, the focus timer and the release of everything at the end.
#include "listwindow/ListWindow.h"

#include <commctrl.h>

#include <cwchar>

#include "platform/PhoneDialog.h"
#include "ImageIds.h"
#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "document/ListFile.h"
#include "document/ValueText.h"
#include "dialogs/MessageBoxes.h"
#include "listwindow/ListWindowState.h"
#include "program/ProgramIds.h"
#include "settings/AppSettings.h"
#include "settings/ListLook.h"

ListWindowState g_listWindow;
BYTE g_colorKeysArmed = 0;

namespace {

constexpr UINT_PTR kFocusTimer = 100;
constexpr UINT kFocusTimerMs = 100;
constexpr wchar_t kWindowTitle[] = L"Zorvel";

ListWindowState& S() { return g_listWindow; }

void ResetState(ListOpenRequest* request, HWND hwnd) {
    ListWindowState& s = S();
    s.request = request;
    s.dialog = hwnd;
    s.listView = s.header = s.menuBar = nullptr;
    s.softKeyMenu = nullptr;
    s.doc.Clear();
    s.rows.clear();
    s.modified = 0;
    s.openedDamaged = 0;
    s.headerWidthsPending = 1;
    s.inResortOrder = 0;
}

// The list font from the font settings, with its bold (title) and
// struck-out (checked rows) twins.
void MakeFonts() {
    ListWindowState& s = S();
    LOGFONTW font = ListLogFont(FW_NORMAL);
    s.listFont.Reset(CreateFontIndirectW(&font));
    s.fontHeight = font.lfHeight;
    font.lfWeight = FW_BOLD;
    s.titleFont.Reset(CreateFontIndirectW(&font));
    font.lfWeight = FW_NORMAL;
    font.lfStrikeOut = TRUE;
    s.checkedFont.Reset(CreateFontIndirectW(&font));
}

int ListTop() { return ScaleY(5) + S().fontHeight + ScaleY(1); }

void CreateMenuBar(HWND hwnd) {
    ListWindowState& s = S();
    s.menuBar = PhoneDialogMenuBar(hwnd);
    if (!s.menuBar) return;
    TBBUTTONINFOW button = {};
    button.cbSize = sizeof button;
    button.dwMask = TBIF_BYINDEX | TBIF_LPARAM;
    if (SendMessageW(s.menuBar, TB_GETBUTTONINFOW, 1, (LPARAM)&button) >= 0)
        s.softKeyMenu = (HMENU)button.lParam;
}

void CreateListView(HWND hwnd) {
    ListWindowState& s = S();
    RECT client;
    GetClientRect(hwnd, &client);
    // A virtual list: rows are drawn from the item list on demand, so a list
    // of ten thousand items opens and refills at once.
    DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS | LVS_NOLABELWRAP |
                  LVS_OWNERDRAWFIXED | LVS_OWNERDATA;
    // Made without a size and sized after its font is set: the list view takes
    // its row height from the font on WM_SETFONT and asks WM_MEASUREITEM
    // again only when its size changes.
    s.listView = CreateWindowExW(0, WC_LISTVIEWW, L"List View", style, 0, ScaleY(18), 0, 0, hwnd,
                                 (HMENU)(INT_PTR)kListViewControlId, hInstance, nullptr);
    if (!s.listView) return;
    SendMessageW(s.listView, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_ONECLICKACTIVATE);
    if (!IsDefaultColor(g_appSettings.ListViewBack.value))
        SendMessageW(s.listView, LVM_SETBKCOLOR, 0, (LPARAM)g_appSettings.ListViewBack.value);
    SendMessageW(s.listView, WM_SETFONT, (WPARAM)s.listFont.Get(), TRUE);
    MoveWindow(s.listView, 0, ScaleY(18), client.right, client.bottom - ScaleY(18), FALSE);
}

// Check lists and lists with items keep their stored widths; a list without
// items gets narrow check columns and an equal share for the others.
void InsertColumns(HWND hwnd) {
    ListWindowState& s = S();
    RECT client;
    GetClientRect(hwnd, &client);
    int count = s.doc.fieldCount();
    bool computed = s.doc.itemCount() == 0;
    for (int i = 0; i < count; ++i) {
        FieldDef& field = s.doc.fields[(size_t)i];
        field.columnState = 0;
        wchar_t name[256];
        lstrcpynW(name, field.name, 256);
        LVCOLUMNW column = {};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        column.fmt = columnFormat(field.type);
        if (computed)
            column.cx = field.type == FieldType::Check ? ScaleX(30) : client.right / (count ? count : 1);
        else
            column.cx = field.columnWidth;
        column.pszText = name;
        column.iSubItem = i;
        SendMessageW(s.listView, LVM_INSERTCOLUMNW, i, (LPARAM)&column);
    }
}

// The sort submenu lists every field by name (or its type's name) and,
// last, the unsorted order. Delete-checked exists only in check lists.
void AdjustMenus() {
    ListWindowState& s = S();
    HMENU menu = s.softKeyMenu;
    if (!menu && s.menuBar) menu = (HMENU)SendMessageW(s.menuBar, SHCMBM_GETSUBMENU, 0, 2);
    if (!menu) return;
    HMENU sortMenu = GetSubMenu(menu, LISTWIN_POS_SORT_POPUP);
    if (!IsCheckList()) DeleteMenu(menu, IDM_DELETE_CHECKED, MF_BYCOMMAND);
    if (!sortMenu) return;
    DeleteMenu(sortMenu, 0, MF_BYPOSITION);
    int count = s.doc.fieldCount();
    for (int i = 0; i < count; ++i) {
        CeString name = fieldDisplayName(s.doc.fields[(size_t)i]);
        AppendMenuW(sortMenu, MF_STRING, IDM_SORT_BASE + i, name.c_str());
    }
    AppendMenuW(sortMenu, MF_STRING, IDM_SORT_BASE + count, ResText(IDS_NONE).c_str());
}

// Density-sized art comes from the image module; the program module's
// copies are the fallback.
void LoadTga(PlanarImage& image, UINT id) {
    if (hImageModule && LoadTgaResource(image, hImageModule, id) == S_OK) return;
    LoadTgaResource(image, hInstance, id);
}

void LoadCheckBitmap(CheckBitmap& box, UINT id) {
    HBITMAP bitmap = nullptr;
    if (hImageModule) bitmap = LoadBitmapW(hImageModule, MAKEINTRESOURCEW(id));
    if (!bitmap) bitmap = LoadBitmapW(hInstance, MAKEINTRESOURCEW(id));
    box.bitmap.Reset(bitmap);
    box.pixels.clear();
    BITMAP info = {};
    if (!bitmap || !GetObjectW(bitmap, sizeof info, &info)) return;
    box.size = {info.bmWidth, info.bmHeight};
    BITMAPINFO format = {};
    format.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    format.bmiHeader.biWidth = info.bmWidth;
    format.bmiHeader.biHeight = -info.bmHeight;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    format.bmiHeader.biCompression = BI_RGB;
    std::vector<DWORD> pixels((size_t)info.bmWidth * (size_t)info.bmHeight);
    HDC screen = GetDC(nullptr);
    int lines = screen ? GetDIBits(screen, bitmap, 0, (UINT)info.bmHeight, pixels.data(), &format, DIB_RGB_COLORS) : 0;
    if (screen) ReleaseDC(nullptr, screen);
    if (lines == info.bmHeight) box.pixels.swap(pixels);
}

void LoadImages() {
    ListWindowState& s = S();
    LoadTga(s.priorityLow, IDT_PRIORITY_LOW);
    LoadTga(s.priorityHigh, IDT_PRIORITY_HIGH);
    LoadTga(s.defaultIcon, IDT_DEFAULT_LIST);
    LoadCheckBitmap(s.checkedBox, IDB_CHECKED);
    LoadCheckBitmap(s.clearBox, IDB_UNCHECKED);
}

BOOL OnInitDialog(HWND hwnd, ListOpenRequest* request) {
    ResetState(request, hwnd);
    // The title strip is painted around the list view, never over it.
    SetWindowLongPtrW(hwnd, GWL_STYLE, GetWindowLongPtrW(hwnd, GWL_STYLE) | WS_CLIPCHILDREN);
    CreateMenuBar(hwnd);
    SetWindowTextW(hwnd, kWindowTitle);
    MakeFonts();
    LoadImages();
    CreateListView(hwnd);

    ListWindowState& s = S();
    ListFileResult read = readListFile(request ? request->path : L"", s.doc);
    bool usable = read == FileStatus::Ok || read == FileStatus::PartlyRead;
    if (!usable || !s.listView) {
        ShowDocMessage(hwnd, read.message);  // why the file was refused
        EndDialog(hwnd, 1);
        return FALSE;
    }
    // A damaged list opens with what could be read, and says so first.
    if (read == FileStatus::PartlyRead) ShowDocMessage(hwnd, read.message);
    s.openedDamaged = read == FileStatus::PartlyRead;
    InsertColumns(hwnd);
    SyncRowCount();
    s.header = (HWND)SendMessageW(s.listView, LVM_GETHEADER, 0, 0);
    AdjustMenus();
    UpdateSortMark();
    SetTimer(hwnd, kFocusTimer, kFocusTimerMs, nullptr);
    s.modified = 0;
    return FALSE;
}

void OnSize(HWND hwnd) {
    ListWindowState& s = S();
    if (!s.listView) return;
    RECT client;
    GetClientRect(hwnd, &client);
    int top = ListTop();
    MoveWindow(s.listView, 0, top, client.right, client.bottom - top, TRUE);
    InvalidateRect(hwnd, nullptr, FALSE);
    UpdateWindow(hwnd);
}

// The list's name: the file name without its folder and extension.
CeString ListName() {
    const wchar_t* path = S().request ? S().request->path : L"";
    const wchar_t* name = wcsrchr(path, L'\\');
    name = name ? name + 1 : path;
    const wchar_t* dot = wcsrchr(name, L'.');
    CeString result;
    result.Append(name, dot ? int(dot - name) : -1);
    return result;
}

void PaintTitleStrip(HWND hwnd, HDC dc) {
    ListWindowState& s = S();
    RECT client;
    GetClientRect(hwnd, &client);
    int strip = ListTop();
    RECT band = {0, 0, client.right, strip};
    FillRect(dc, &band, (HBRUSH)GetStockObject(WHITE_BRUSH));
    int L = s.fontHeight;
    const PlanarImage& icon = s.doc.icon.IsDrawable() ? s.doc.icon : s.defaultIcon;
    if (icon.IsDrawable()) DrawImage(icon, dc, ScaleY(3), ((ScaleY(4) - icon.height + L) >> 1) + 1);

    SelectedObject font(dc, s.titleFont.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0, 0, 0));
    const UINT flags = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
    RECT nameRect = {s.defaultIcon.width + ScaleX(8), 0, client.right, ScaleY(4) + L};

    wchar_t counter[40];
    int total = s.doc.itemCount();
    if (IsCheckList()) {
        int checked = 0;
        for (const ListItem& item : s.doc.items)
            if (!item.values.empty() && item.values[0].choice != 0) ++checked;
        wsprintfW(counter, L"%d/%d", checked, total);
    } else {
        wsprintfW(counter, L"%d", total);
    }
    RECT measure = {0, 0, 0, 0};
    DrawTextW(dc, counter, -1, &measure, flags | DT_CALCRECT);
    int width = measure.right - measure.left;
    RECT counterRect = {client.right - width - ScaleX(5), 0, client.right, ScaleY(4) + L};
    // The name gives way to the counter rather than running under it.
    RECT clippedName = nameRect;
    if (clippedName.right > counterRect.left - ScaleX(4)) clippedName.right = counterRect.left - ScaleX(4);
    CeString name = ListName();
    DrawTextW(dc, name.c_str(), -1, &clippedName, flags | DT_END_ELLIPSIS);
    DrawTextW(dc, counter, -1, &counterRect, flags);

    RECT bar = {0, ScaleY(5) + L, client.right, ScaleY(5) + L + ScaleY(1)};
    FillRect(dc, &bar, (HBRUSH)GetStockObject(BLACK_BRUSH));
}

void OnPaint(HWND hwnd) {
    PAINTSTRUCT paint;
    HDC dc = BeginPaint(hwnd, &paint);
    PaintTitleStrip(hwnd, dc);
    EndPaint(hwnd, &paint);
}

void OnTimer(HWND hwnd) {
    ListWindowState& s = S();
    KillTimer(hwnd, kFocusTimer);
    if (!s.listView) return;
    SetFocus(s.listView);
    SendMessageW(s.listView, LVM_SETSELECTIONMARK, 0, 0);
    InvalidateRect(s.listView, nullptr, TRUE);
}

void OnInitMenuPopup(HMENU popup) {
    if (!popup || popup != S().softKeyMenu) return;
    EnableSelectionEntries(popup);
    // Check all and uncheck all act on the check of field 0 only.
    UINT checks = IsCheckList() ? MF_ENABLED : MF_GRAYED;
    EnableMenuItem(popup, IDM_CHECK_ALL, MF_BYCOMMAND | checks);
    EnableMenuItem(popup, IDM_UNCHECK_ALL, MF_BYCOMMAND | checks);
}

void ReleaseHeaderBitmaps() {
    ListWindowState& s = S();
    if (!s.header) return;
    int count = (int)SendMessageW(s.header, HDM_GETITEMCOUNT, 0, 0);
    for (int i = 0; i < count; ++i) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT | HDI_BITMAP;
        if (!SendMessageW(s.header, HDM_GETITEMW, i, (LPARAM)&item)) continue;
        if (item.hbm) {
            HBITMAP bitmap = item.hbm;
            item.fmt &= ~HDF_BITMAP;
            item.hbm = nullptr;
            SendMessageW(s.header, HDM_SETITEMW, i, (LPARAM)&item);
            DeleteObject(bitmap);
        }
    }
}

void OnDestroy(HWND hwnd) {
    ListWindowState& s = S();
    KillTimer(hwnd, kFocusTimer);
    ReleaseHeaderBitmaps();
    if (s.listView) DestroyWindow(s.listView);
    s.listView = s.header = s.menuBar = nullptr;
    s.softKeyMenu = nullptr;
    s.defaultIcon.Release();
    s.priorityHigh.Release();
    s.priorityLow.Release();
    s.checkedBox.bitmap.Reset();
    s.clearBox.bitmap.Reset();
    s.rowBuffer.Reset();
    s.rowBufferSize = {};
    s.rowBufferBits = nullptr;
    s.rowBufferDc = nullptr;
    s.listFont.Reset();
    s.titleFont.Reset();
    s.checkedFont.Reset();
    s.rows.clear();
    s.rows.shrink_to_fit();
    s.doc.Clear();
    s.dialog = nullptr;
}

BOOL SetResult(HWND hwnd, LRESULT result) {
    SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, result);
    return TRUE;
}

INT_PTR CALLBACK ListWindowProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG: return OnInitDialog(hwnd, (ListOpenRequest*)lParam);
    case WM_NOTIFY: return SetResult(hwnd, OnNotify(hwnd, (const NMHDR*)lParam));
    case WM_COMMAND: OnCommand(hwnd, LOWORD(wParam), HIWORD(wParam)); return TRUE;
    case WM_DESTROY: OnDestroy(hwnd); return TRUE;
    case WM_SIZE: OnSize(hwnd); return TRUE;
    case WM_PAINT: OnPaint(hwnd); return TRUE;
    case WM_DRAWITEM: return (BOOL)OnDrawItem((const DRAWITEMSTRUCT*)lParam);
    case WM_MEASUREITEM:
        ((MEASUREITEMSTRUCT*)lParam)->itemHeight = UINT(RowHeight());
        return TRUE;
    case WM_CONTEXTMENU:
        OnContextMenu(hwnd, (short)LOWORD(lParam), (short)HIWORD(lParam));
        return TRUE;
    case WM_GETDLGCODE: return SetResult(hwnd, DLGC_WANTALLKEYS);
    case WM_TIMER: OnTimer(hwnd); return TRUE;
    case WM_INITMENUPOPUP: OnInitMenuPopup((HMENU)wParam); return TRUE;
    }
    return FALSE;
}

}  // namespace

// ---- shared with the other list-window files -------------------------------

// A row holds a line of the list font or a check box, whichever is taller,
// with a pixel line above and below at every density.
int RowHeight() {
    ListWindowState& s = S();
    int content = s.fontHeight > s.checkedBox.size.cy ? s.fontHeight : s.checkedBox.size.cy;
    return content + ScaleY(2);
}

bool IsCheckList() {
    const ListDocument& doc = S().doc;
    return doc.fieldCount() > 0 && doc.fields[0].type == FieldType::Check;
}

// Takes the selection and the focus off the rows that have them. Clearing
// the focus through item -1 walks every row of the list (milliseconds on
// ten thousand rows); the rows that hold either state are found directly.
static void ClearSelectionAndFocus(HWND list) {
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED;
    for (int row = -1; (row = (int)SendMessageW(list, LVM_GETNEXTITEM, (WPARAM)row, LVNI_SELECTED)) >= 0;)
        SendMessageW(list, LVM_SETITEMSTATE, (WPARAM)row, (LPARAM)&state);
    int focused = (int)SendMessageW(list, LVM_GETNEXTITEM, (WPARAM)-1, LVNI_FOCUSED);
    state.stateMask = LVIS_FOCUSED;
    if (focused >= 0) SendMessageW(list, LVM_SETITEMSTATE, (WPARAM)focused, (LPARAM)&state);
}

static void RebuildRowIndex() {
    ListWindowState& s = S();
    s.rows.clear();
    s.rows.reserve(s.doc.items.size());
    for (ListItem& item : s.doc.items) s.rows.push_back(&item);
}

void FillRows() {
    ListWindowState& s = S();
    RebuildRowIndex();
    if (!s.listView) return;
    if ((size_t)SendMessageW(s.listView, LVM_GETITEMCOUNT, 0, 0) != s.rows.size()) {
        SendMessageW(s.listView, LVM_DELETEALLITEMS, 0, 0);
        SendMessageW(s.listView, LVM_SETITEMCOUNT, (WPARAM)s.rows.size(), 0);
    } else {
        // The same number of rows: what a fresh fill does to the view (no
        // selection, no focus, back at the top) without telling the list
        // view a new count, which costs it tens of milliseconds on a big list.
        ResetRowView(s.listView, !s.rows.empty());
    }
    InvalidateRect(s.listView, nullptr, TRUE);
}

void ResetRowView(HWND list, bool hasRows) {
    ClearSelectionAndFocus(list);
    SendMessageW(list, LVM_SETSELECTIONMARK, 0, -1);
    if (hasRows) SendMessageW(list, LVM_ENSUREVISIBLE, 0, FALSE);
}

void SelectItemRow(const ListItem* item) {
    ListWindowState& s = S();
    if (!item || !s.listView) return;
    for (size_t row = 0; row < s.rows.size(); ++row) {
        if (s.rows[row] != item) continue;
        ClearSelectionAndFocus(s.listView);
        LVITEMW state = {};
        state.state = state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(s.listView, LVM_SETITEMSTATE, row, (LPARAM)&state);
        SendMessageW(s.listView, LVM_SETSELECTIONMARK, 0, (LPARAM)row);
        SendMessageW(s.listView, LVM_ENSUREVISIBLE, row, FALSE);
        return;
    }
}

void SyncRowCount() {
    ListWindowState& s = S();
    RebuildRowIndex();
    if (!s.listView) return;
    SendMessageW(s.listView, LVM_SETITEMCOUNT, (WPARAM)s.rows.size(), LVSICF_NOSCROLL);
    InvalidateRect(s.listView, nullptr, TRUE);
}

void InvalidateTitle() {
    ListWindowState& s = S();
    if (!s.dialog) return;
    RECT client;
    GetClientRect(s.dialog, &client);
    RECT strip = {0, 0, client.right, ListTop()};
    InvalidateRect(s.dialog, &strip, FALSE);
}

ListItem* SelectedItem() {
    ListWindowState& s = S();
    if (!s.listView) return nullptr;
    int mark = (int)SendMessageW(s.listView, LVM_GETSELECTIONMARK, 0, 0);
    if (mark < 0 || (size_t)mark >= s.rows.size()) return nullptr;
    return s.rows[(size_t)mark];
}

INT_PTR RunListWindow(HWND owner, ListOpenRequest& request) {
    PhoneDialogSetup setup;
    setup.menuModule = hLangModule;
    setup.menuId = IDM_LIST_WINDOW_MENUBAR;
    setup.overrideBack = false;  // Back leaves the list (IDCANCEL)
    return RunPhoneDialog(owner, setup, ListWindowProc, (LPARAM)&request);
}
