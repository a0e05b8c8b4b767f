#include "templates/TemplateList.h"

#include <commctrl.h>

#include <cwchar>
#include <cwctype>

#include "LangIds.h"
#include "app/RegistryConfig.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/MessageBoxes.h"
#include "platform/ScreenScale.h"
#include "program/ProgramIds.h"
#include "settings/ListLook.h"
#include "templates/Templates.h"

namespace {

const wchar_t kColumnTitle[] = L"Template";
const int kRowTextChars = 256;

void InsertColumn(HWND view, int index, int width) {
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = (LPWSTR)kColumnTitle;
    column.cchTextMax = 255;
    column.cx = width;
    column.iSubItem = index;
    SendMessageW(view, LVM_INSERTCOLUMNW, index, (LPARAM)&column);
}

}  // namespace

std::wstring TemplatesFolder() {
    wchar_t path[MAX_PATH + 2] = {};
    g_registryConfig.GetTemplatePath(path);
    std::wstring folder = path;
    if (folder.empty() || folder.back() != L'\\') folder += L'\\';
    return folder;
}

bool IsTemplateFileName(const wchar_t* fileName, std::wstring& title) {
    const wchar_t* dot = wcschr(fileName, L'.');
    if (!dot) return false;
    const wchar_t letters[] = L"zvt";
    for (int i = 0; i < 3; ++i)
        if (towlower(dot[1 + i]) != letters[i]) return false;  // the NUL of a short name stops it too
    title.assign(fileName, dot - fileName);
    return true;
}

void ShowTemplateError(HWND owner, UINT textId) { ShowDocMessage(owner, TemplateError(textId)); }

DocMessage TemplateError(UINT textId) {
    DocMessage message;
    message.textId = textId;
    message.captionId = IDS_ERROR_CAPTION;
    message.style = MB_OK | MB_ICONEXCLAMATION;
    return message;
}

void TemplateList::Create(HWND dialog, const TemplateListLook& listLook) {
    look = listLook;
    font.Reset(CreateFormFont(FW_BOLD));
    LoadTgaResource(defaultIcon, hInstance, IDT_PROGRAM_DEFAULT_LIST);
    view = CreateWindowExW(0, WC_LISTVIEWW, L"",
                           WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL |
                               LVS_SHOWSELALWAYS | LVS_AUTOARRANGE | LVS_OWNERDRAWFIXED | LVS_NOCOLUMNHEADER |
                               LVS_NOSORTHEADER,
                           0, 0, 0, 0, dialog, (HMENU)(INT_PTR)kTemplateListId, hInstance, nullptr);
    const DWORD ex = LVS_EX_FULLROWSELECT | 0x00008000 /* LVS_EX_NOHSCROLL */;
    SendMessageW(view, LVM_SETEXTENDEDLISTVIEWSTYLE, ex, ex);
    SendMessageW(view, WM_SETFONT, (WPARAM)font.Get(), FALSE);
    RECT client;
    GetClientRect(dialog, &client);
    InsertColumn(view, 0, client.right - look.columnTrim);
    if (look.columnCount > 1) InsertColumn(view, 1, look.lastColumn);
    Place(dialog, client.right, client.bottom);
}

void TemplateList::Fill() {
    // Rows added to a visible list view are slow to add one by one under
    // redraw; the whole fill is drawn once at the end.
    SendMessageW(view, WM_SETREDRAW, FALSE, 0);
    SendMessageW(view, LVM_DELETEALLITEMS, 0, 0);
    rows.clear();
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((folder + L"*.*").c_str(), &found);
    if (find != INVALID_HANDLE_VALUE) {
        std::wstring title;
        do {
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) continue;
            if (!IsTemplateFileName(found.cFileName, title)) continue;
            LVITEMW item = {};
            item.mask = LVIF_TEXT | LVIF_IMAGE;
            item.iItem = (int)rows.size();
            item.iImage = (int)rows.size();
            item.pszText = &title[0];
            SendMessageW(view, LVM_INSERTITEMW, 0, (LPARAM)&item);
            rows.emplace_back();
            rows.back().fileName = found.cFileName;
        } while (FindNextFileW(find, &found));
        FindClose(find);
    }
    SendMessageW(view, WM_SETREDRAW, TRUE, 0);
    FitColumn();
    InvalidateRect(view, nullptr, TRUE);
}

void TemplateList::FitColumn() const {
    // The one column of the new list dialog spans the list. The list view
    // of this platform shows a horizontal scroll bar for a column wider than
    // its client area whatever LVS_EX_NOHSCROLL says.
    if (look.columnCount != 1 || !view) return;
    RECT client;
    GetClientRect(view, &client);
    SendMessageW(view, LVM_SETCOLUMNWIDTH, 0, client.right);
}

void TemplateList::Place(HWND dialog, int width, int height) const {
    if (!view) return;  // sized by the shell before the list exists
    MoveWindow(view, ScaleX(5), ScaleY(20), width - ScaleX(10), height - look.bottomGap, TRUE);
    FitColumn();
    InvalidateRect(dialog, nullptr, TRUE);
    UpdateWindow(dialog);
}

bool TemplateList::HasSelection() const { return SendMessageW(view, LVM_GETSELECTIONMARK, 0, 0) >= 0; }

std::wstring TemplateList::SelectedName() const {
    int mark = (int)SendMessageW(view, LVM_GETSELECTIONMARK, 0, 0);
    if (mark < 0) return std::wstring();
    wchar_t text[kRowTextChars] = {};
    LVITEMW item = {};
    item.pszText = text;
    item.cchTextMax = kTemplateNameChars;
    SendMessageW(view, LVM_GETITEMTEXTW, mark, (LPARAM)&item);
    return text;
}

bool TemplateList::Measure(MEASUREITEMSTRUCT& mis) const {
    if (mis.CtlID != (UINT)kTemplateListId) return false;
    mis.itemHeight = ScaleY(18);
    return true;
}

bool TemplateList::Draw(const DRAWITEMSTRUCT& dis) {
    if (dis.CtlID != (UINT)kTemplateListId) return false;
    if (!(dis.itemAction & (ODA_DRAWENTIRE | ODA_SELECT | ODA_FOCUS))) return true;
    const int row = (int)dis.itemID;
    const int focused = (int)SendMessageW(view, LVM_GETNEXTITEM, (WPARAM)-1, LVNI_FOCUSED);
    const bool lit = row == focused;
    HDC dc = dis.hDC;
    const RECT& rc = dis.rcItem;
    SetBkColor(dc, GetSysColor(lit ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    SetTextColor(dc, GetSysColor(lit ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rc, nullptr, 0, nullptr);

    if (row >= 0 && row < (int)rows.size()) {
        TemplateRow& entry = rows[row];
        if (!entry.iconRead) {
            LoadTemplateIcon(entry.icon, (folder + entry.fileName).c_str(), IsLowDensityScreen());
            entry.iconRead = true;
        }
        const PlanarImage& icon = entry.icon;
        if (icon.IsDrawable()) {
            // A small icon in the double-size cell of a high-density screen
            // is centred; height and width are crossed on purpose (the same
            // for the square icons the picker offers).
            if (icon.width < 17 && ScaleX(1) > 1)
                DrawImage(icon, dc, rc.left + icon.height / 2 + ScaleX(2), rc.top + icon.width / 2 + ScaleY(3));
            else
                DrawImage(icon, dc, rc.left + ScaleX(2), rc.top + ScaleY(3));
        } else {
            DrawImage(defaultIcon, dc, rc.left + ScaleX(2), rc.top + ScaleY(4));
        }
    }

    wchar_t text[kRowTextChars] = {};
    LVITEMW item = {};
    item.pszText = text;
    item.cchTextMax = kRowTextChars;
    SendMessageW(view, LVM_GETITEMTEXTW, row, (LPARAM)&item);
    RECT band = {rc.left + look.textLeft, rc.top - look.textShiftUp, rc.right, rc.bottom - look.textShiftUp};
    SetBkMode(dc, TRANSPARENT);
    DrawTextW(dc, text, -1, &band, DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    return true;
}

void TemplateList::PaintHeading(HWND dialog, UINT stringId) const {
    WhitePaint paint(dialog);
    SelectedObject selected(paint.dc, font.Get());
    SetBkMode(paint.dc, TRANSPARENT);
    SetTextColor(paint.dc, GetSysColor(COLOR_WINDOWTEXT));
    RECT band = {ScaleX(5), 0, paint.client.right, ScaleY(20)};
    std::wstring heading = ResText(stringId);
    DrawTextW(paint.dc, heading.c_str(), (int)heading.size(), &band, DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void TemplateList::Release() {
    rows.clear();
    defaultIcon.Release();
    view = nullptr;  // destroyed with the dialog
    font.Reset();
}

INT_PTR TemplateList::HandleMessage(HWND dialog, UINT msg, LPARAM lParam, UINT headingId) {
    switch (msg) {
    case WM_SIZE: Place(dialog, LOWORD(lParam), HIWORD(lParam)); return TRUE;
    case WM_PAINT: PaintHeading(dialog, headingId); return TRUE;
    case WM_MEASUREITEM: return Measure(*(MEASUREITEMSTRUCT*)lParam);
    case WM_DRAWITEM: return Draw(*(const DRAWITEMSTRUCT*)lParam);
    case WM_DESTROY: Release(); return FALSE;
    }
    return FALSE;
}
