// The file selection dialog: its procedure, controls, layout and the accept
// rules of the three modes. The listing itself is FileSelectList.cpp.
#include "dialogs/FileSelectDialog.h"

#include <commctrl.h>

#include <cwchar>

#include "platform/PhoneDialog.h"
#include "LangIds.h"
#include "ImageIds.h"
#include "program/ProgramIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/FileSelectList.h"
#include "dialogs/FileSelectPaths.h"

CeString g_fileSelectLastFolder;

namespace {

// The program's own texts of this dialog.
const wchar_t kModeNames[3][16] = {L"Save File", L"Load File", L"Select Folder"};
const wchar_t kAllFilesExtension[] = L".*";
const wchar_t kAllFilesText[] = L"All Files(*.*)";
const wchar_t kNameMissingText[] = L"File name value is missing";
const wchar_t kNameIllegalText[] = L"File name include illegal characters";
const wchar_t kNameErrorCaption[] = L"File Name Error";

// The dialog being run; every dialog of the program is modal, so there is
// at most one.
FileSelectDialog* g_fileSelect = nullptr;

int Clamp0(int v) { return v < 0 ? 0 : v; }

HWND CreateChild(const FileSelectDialog& dlg, const wchar_t* cls, const wchar_t* text, DWORD style, int id,
                 DWORD exStyle = 0) {
    HWND child = CreateWindowExW(exStyle, cls, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, dlg.dialog,
                                 (HMENU)(INT_PTR)id, dlg.hInstance, nullptr);
    SendMessageW(child, WM_SETFONT, (WPARAM)dlg.font.Get(), FALSE);
    return child;
}

void CreateDialogFont(FileSelectDialog& dlg) {
    LOGFONTW lf = {};
    lf.lfHeight = -ScaleY(11);
    lf.lfWeight = FW_NORMAL;
    lf.lfCharSet = DEFAULT_CHARSET;
    wcscpy(lf.lfFaceName, L"Tahoma");
    dlg.font.Reset(CreateFontIndirectW(&lf));
}

void CreateImageLists(FileSelectDialog& dlg) {
    int size = ScaleX(16);
    dlg.imageList = ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 16, 16);
    if (dlg.imageStripId)
        dlg.stripImages = ImageList_LoadImageW(dlg.hInstance, MAKEINTRESOURCEW(dlg.imageStripId), 16, 0,
                                               RGB(255, 255, 255), IMAGE_BITMAP, 0);
}

// The name box: Down moves into the list, as on the phone's pad, and Enter
// after a typed name saves it. (Enter anywhere else opens the selected
// folder; from the name box that would carry the name into whatever folder
// happens to be selected.)
LRESULT CALLBACK NameEditProc(HWND edit, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    switch (msg) {
    case WM_GETDLGCODE: {
        const MSG* key = (const MSG*)lParam;
        LRESULT code = DefSubclassProc(edit, msg, wParam, lParam);
        if (key && key->message == WM_KEYDOWN && key->wParam == VK_RETURN) code |= DLGC_WANTMESSAGE;
        return code;
    }
    case WM_KEYDOWN:
        if (wParam == VK_DOWN) {
            SetFocus(GetDlgItem(GetParent(edit), kFileSelectList));
            return 0;
        }
        if (wParam == VK_RETURN) {
            SendMessageW(GetParent(edit), WM_COMMAND, IDC_FILE_SELECT_ACCEPT, 0);
            return 0;
        }
        break;
    case WM_CHAR:
        if (wParam == L'\r') return 0;  // no beep for the Enter just handled
        break;
    }
    return DefSubclassProc(edit, msg, wParam, lParam);
}

// A tap on the path line is the dialog's to handle: a click that the line
// itself receives is handed on in the dialog's coordinates.
LRESULT CALLBACK PathLineProc(HWND line, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (msg == WM_LBUTTONDOWN) {
        POINT at = {(short)LOWORD(lParam), (short)HIWORD(lParam)};
        MapWindowPoints(line, GetParent(line), &at, 1);
        return SendMessageW(GetParent(line), WM_LBUTTONDOWN, wParam, MAKELPARAM(at.x, at.y));
    }
    return DefSubclassProc(line, msg, wParam, lParam);
}

void CreateControls(FileSelectDialog& dlg) {
    if (dlg.mode == FileSelectSave) {
        dlg.nameLabel = CreateChild(dlg, L"STATIC", ResText(IDS_FILE_NAME_LABEL).c_str(), SS_LEFT | SS_NOPREFIX,
                                    kFileSelectNameLabel);
        dlg.nameEdit = CreateChild(dlg, L"EDIT", dlg.initialName, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL,
                                   kFileSelectNameEdit);
        SetWindowSubclass(dlg.nameEdit, NameEditProc, 0, 0);
    }
    if (dlg.mode != FileSelectFolder) {
        dlg.typeLabel = CreateChild(dlg, L"STATIC", ResText(IDS_FILE_TYPE_LABEL).c_str(), SS_LEFT | SS_NOPREFIX,
                                    kFileSelectTypeLabel);
        // Read-only, it looks like the name box above it but takes no typing.
        dlg.typeField = CreateChild(dlg, L"EDIT", dlg.filterText, WS_BORDER | ES_READONLY | ES_AUTOHSCROLL,
                                    kFileSelectTypeField);
    }
    // No SS_NOTIFY: a tap on the path line reaches the dialog as WM_LBUTTONDOWN.
    dlg.pathLine = CreateChild(dlg, L"STATIC", dlg.currentFolder, SS_LEFT | SS_NOPREFIX | SS_PATHELLIPSIS,
                               kFileSelectPathLine);
    SetWindowSubclass(dlg.pathLine, PathLineProc, 0, 0);
    dlg.listView = CreateChild(dlg, WC_LISTVIEWW, L"",
                               WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                                   LVS_NOCOLUMNHEADER | LVS_SHAREIMAGELISTS,
                               kFileSelectList);
    SendMessageW(dlg.listView, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
    SendMessageW(dlg.listView, LVM_SETIMAGELIST, LVSIL_SMALL, (LPARAM)dlg.imageList);
    LVCOLUMNW column = {};
    column.mask = LVCF_WIDTH;
    column.cx = ScaleX(200);
    SendMessageW(dlg.listView, LVM_INSERTCOLUMNW, 0, (LPARAM)&column);
}

bool AtRoot(const FileSelectDialog& dlg) { return wcscmp(dlg.currentFolder, L"\\") == 0; }

int TextWidth(const FileSelectDialog& dlg, const wchar_t* text, int length) {
    HDC dc = GetDC(dlg.dialog);
    HGDIOBJ old = SelectObject(dc, dlg.font);
    SIZE extent = {};
    GetTextExtentPoint32W(dc, text, length, &extent);
    SelectObject(dc, old);
    ReleaseDC(dlg.dialog, dc);
    return extent.cx;
}

}  // namespace

// The path takes the line; the hint that a tap goes up is painted after it
// when there is a folder above. Text widths differ from one machine's fonts
// to the next, so the hint is not all or nothing: when the whole of it does
// not fit it is cut short with an ellipsis, and it is left out only when not
// even its first word would show. The path itself is never cut for the hint.
void LayoutPathLine(FileSelectDialog& dlg) {
    const RECT& line = dlg.pathRect;
    int width = line.right - line.left;
    SetRectEmpty(&dlg.pathHintRect);
    std::wstring hint = dlg.pathHintId && !AtRoot(dlg) ? ResText(dlg.pathHintId) : std::wstring();
    if (!hint.empty()) {
        int gap = ScaleX(8);
        int pathWidth = TextWidth(dlg, dlg.currentFolder, dlg.currentFolder.Length()) + ScaleX(2);
        std::wstring shortest = hint.substr(0, hint.find(L' ')) + L"...";
        int hintMinimum = TextWidth(dlg, shortest.c_str(), (int)shortest.size());
        if (pathWidth + gap + hintMinimum <= width) {
            width = pathWidth;
            SetRect(&dlg.pathHintRect, line.left + pathWidth + gap, line.top, line.right, line.bottom);
        }
    }
    MoveWindow(dlg.pathLine, line.left, line.top + ScaleY(3), width, line.bottom - line.top - ScaleY(3), TRUE);
    InvalidateRect(dlg.dialog, &line, TRUE);
}

namespace {

// Rows of m = ScaleX(2), labels ScaleX(50) wide and ScaleX(20) high, one
// every ScaleY(24) from ScaleY(2); the list fills the rest.
void Layout(FileSelectDialog& dlg, int width, int height) {
    if (!dlg.listView) return;  // SHInitDialog sizes the dialog before the controls exist
    int m = ScaleX(2), labelWidth = ScaleX(50), rowHeight = ScaleX(20);
    int y = ScaleY(2);
    if (dlg.mode == FileSelectSave) {
        MoveWindow(dlg.nameLabel, m, y + ScaleY(3), labelWidth, rowHeight, TRUE);
        MoveWindow(dlg.nameEdit, m + labelWidth, y, Clamp0(width - m - (m + labelWidth)), rowHeight, TRUE);
        y += ScaleY(24);
    }
    if (dlg.mode != FileSelectFolder) {
        MoveWindow(dlg.typeLabel, m, y + ScaleY(3), labelWidth, rowHeight, TRUE);
        MoveWindow(dlg.typeField, m + labelWidth, y, Clamp0(width - m - (m + labelWidth)), rowHeight, TRUE);
        y += ScaleY(24);
    }
    SetRect(&dlg.pathRect, m, y, width - m, y + rowHeight);
    LayoutPathLine(dlg);
    y += ScaleY(24);
    MoveWindow(dlg.listView, m, y, Clamp0(width - 2 * m), Clamp0(height - ScaleY(2) - y), TRUE);
    RECT client;
    GetClientRect(dlg.listView, &client);
    SendMessageW(dlg.listView, LVM_SETCOLUMNWIDTH, 0, client.right);
    InvalidateRect(dlg.dialog, nullptr, TRUE);
}

void ShowNameError(const FileSelectDialog& dlg, const wchar_t* text) {
    MessageBoxW(dlg.dialog, text, kNameErrorCaption, MB_ICONHAND);
}

void EndWithChoice(FileSelectDialog& dlg, const CeString& result) {
    dlg.result = result;
    g_fileSelectLastFolder = dlg.currentFolder;
    EndDialog(dlg.dialog, 1);
}

void AcceptSave(FileSelectDialog& dlg) {
    wchar_t name[257] = {};
    GetWindowTextW(dlg.nameEdit, name, 257);
    if (name[0] == 0) return ShowNameError(dlg, kNameMissingText);
    if (!IsValidFileName(name)) return ShowNameError(dlg, kNameIllegalText);
    CeString result = dlg.currentFolder + name;
    // A wildcard extension only filters the listing; it is no part of a name.
    if (!ExtensionHasWildcard(dlg.extension)) result.Append(dlg.extension);
    EndWithChoice(dlg, result);
}

void AcceptLoad(FileSelectDialog& dlg) {
    wchar_t name[257];
    bool isFolder = false;
    if (!ReadRow(dlg, SelectedRow(dlg), name, isFolder) || isFolder) return;
    EndWithChoice(dlg, dlg.currentFolder + name);
}

void Accept(FileSelectDialog& dlg) {
    switch (dlg.mode) {
    case FileSelectSave: return AcceptSave(dlg);
    case FileSelectLoad: return AcceptLoad(dlg);
    default: return EndWithChoice(dlg, dlg.currentFolder);
    }
}

// --- message handlers ---

BOOL OnInitDialog(HWND hwnd, FileSelectDialog& dlg) {
    dlg.dialog = hwnd;
    SetWindowTextW(hwnd, dlg.title);
    CreateDialogFont(dlg);
    CreateImageLists(dlg);
    CreateControls(dlg);
    RECT client;
    GetClientRect(hwnd, &client);
    Layout(dlg, client.right, client.bottom);
    FillFileList(dlg);
    SetFocus(dlg.mode == FileSelectSave ? dlg.nameEdit : dlg.listView);
    return FALSE;  // the focus is set
}

BOOL OnCommand(FileSelectDialog& dlg, int id) {
    switch (id) {
    case IDOK: ActivateSelectedRow(dlg); return TRUE;
    case IDCANCEL: EndDialog(dlg.dialog, 0); return TRUE;
    case IDC_FILE_SELECT_ACCEPT: Accept(dlg); return TRUE;
    }
    return FALSE;
}

BOOL OnLButtonDown(FileSelectDialog& dlg, int x, int y) {
    const RECT& r = dlg.pathRect;  // edges count as inside
    if (x >= r.left && x <= r.right && y >= r.top && y <= r.bottom) GoUpOneFolder(dlg);
    return TRUE;
}

BOOL OnHotKey(FileSelectDialog& dlg, WPARAM wParam, LPARAM lParam) {
    if (HIWORD(lParam) == VK_ESCAPE && (LOWORD(lParam) & MOD_KEYUP)) {
        GoUpOneFolder(dlg);
        SHSendBackToFocusWindow(WM_HOTKEY, wParam, lParam);
    }
    return TRUE;
}

BOOL OnNotify(FileSelectDialog& dlg, NMHDR* header) {
    if (header->hwndFrom != dlg.listView) return FALSE;
    if (header->code == LVN_ITEMACTIVATE) {
        ActivateSelectedRow(dlg);
        return TRUE;
    }
    // Up from the first row reaches the name box above the list.
    if (header->code == LVN_KEYDOWN && dlg.nameEdit && ((NMLVKEYDOWN*)header)->wVKey == VK_UP &&
        SelectedRow(dlg) <= 0) {
        SetFocus(dlg.nameEdit);
        return TRUE;
    }
    return FALSE;
}

BOOL OnPaint(FileSelectDialog& dlg) {
    WhitePaint paint(dlg.dialog);
    if (!IsRectEmpty(&dlg.pathHintRect)) {
        std::wstring hint = ResText(dlg.pathHintId);
        SelectedObject font(paint.dc, dlg.font.Get());
        SetBkMode(paint.dc, TRANSPARENT);
        SetTextColor(paint.dc, GetSysColor(COLOR_GRAYTEXT));
        DrawTextW(paint.dc, hint.c_str(), (int)hint.size(), &dlg.pathHintRect,
                  DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    return TRUE;
}

// Labels and the path line on the dialog's white.
INT_PTR OnCtlColorStatic(HDC dc) {
    SetBkColor(dc, RGB(255, 255, 255));
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    return (INT_PTR)GetStockObject(WHITE_BRUSH);
}

BOOL OnDestroy(FileSelectDialog& dlg) {
    dlg.font.Reset();
    if (dlg.imageList) ImageList_Destroy(dlg.imageList);
    if (dlg.stripImages) ImageList_Destroy(dlg.stripImages);
    dlg.imageList = dlg.stripImages = nullptr;
    dlg.listView = nullptr;
    return TRUE;
}

INT_PTR CALLBACK FileSelectDlgProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_INITDIALOG) return OnInitDialog(hwnd, *(FileSelectDialog*)lParam);
    if (!g_fileSelect || g_fileSelect->dialog != hwnd) return FALSE;
    FileSelectDialog& dlg = *g_fileSelect;
    switch (msg) {
    case WM_COMMAND: return OnCommand(dlg, LOWORD(wParam));
    case WM_LBUTTONDOWN: return OnLButtonDown(dlg, (short)LOWORD(lParam), (short)HIWORD(lParam));
    case WM_HOTKEY: return OnHotKey(dlg, wParam, lParam);
    case WM_NOTIFY: return OnNotify(dlg, (NMHDR*)lParam);
    case WM_SIZE: Layout(dlg, LOWORD(lParam), HIWORD(lParam)); return TRUE;
    case WM_PAINT: return OnPaint(dlg);
    case WM_CTLCOLORSTATIC: return OnCtlColorStatic((HDC)wParam);
    case WM_DESTROY: return OnDestroy(dlg);
    }
    return FALSE;
}

// A folder that no longer exists (a deleted last folder) gives way to its
// nearest existing parent.
CeString StartingFolder(const CeString& requested) {
    CeString folder = WithTrailingSlash(requested.IsEmpty() ? g_fileSelectLastFolder.c_str() : requested.c_str());
    while (wcscmp(folder, L"\\") != 0) {
        DWORD attributes = GetFileAttributesW(folder);
        if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) break;
        folder = ParentFolder(folder);
    }
    return folder;
}

}  // namespace

FileSelectDialog::FileSelectDialog(HINSTANCE instance, HINSTANCE resModule, int selectMode, UINT menuBar,
                                   UINT imageStrip, UINT pathHint, const wchar_t* dialogTitle)
    : hInstance(instance),
      module(resModule),
      menuBarId(menuBar),
      imageStripId(imageStrip),
      pathHintId(pathHint),
      mode(selectMode < FileSelectSave || selectMode > FileSelectFolder ? FileSelectLoad : selectMode),
      extension(kAllFilesExtension),
      filterText(kAllFilesText) {
    title = (dialogTitle && dialogTitle[0]) ? dialogTitle : kModeNames[mode];
}

int FileSelectDialog::Run(wchar_t* outPath, int outChars, HWND owner) {
    currentFolder = StartingFolder(currentFolder);
    result = L"";

    PhoneDialogSetup setup;
    setup.menuModule = module;
    setup.menuId = menuBarId;  // Back goes up one folder instead of closing the dialog
    setup.initFlags = SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_SIPDOWN;
    FileSelectDialog* outer = g_fileSelect;
    g_fileSelect = this;
    INT_PTR ended = RunPhoneDialog(owner, setup, FileSelectDlgProc, (LPARAM)this);
    g_fileSelect = outer;
    dialog = nullptr;
    if (ended != 1) return 0;
    if (outPath && outChars > 0) lstrcpynW(outPath, result, outChars);
    return 1;
}

int RunFileSelectDialog(HWND owner, FileSelectRequest& request) {
    FileSelectDialog dlg(hInstance, request.module ? request.module : hLangModule, request.mode,
                         request.menuBarId ? request.menuBarId : IDM_FILE_SELECT_MENUBAR,
                         request.imageStripId ? request.imageStripId : IDB_PROGRAM_IMAGE_STRIP,
                         request.pathHintId ? request.pathHintId : IDS_FILE_SELECT_UP, request.title);
    dlg.currentFolder = request.folder;
    if (!request.extension.IsEmpty()) dlg.extension = request.extension;
    if (!request.filterText.IsEmpty()) dlg.filterText = request.filterText;
    dlg.initialName = request.fileName;
    if (!dlg.Run(nullptr, 0, owner)) return 0;
    request.path = dlg.result;
    return 1;
}
