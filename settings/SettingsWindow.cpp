#include "settings/SettingsWindow.h"

#include <commctrl.h>

#include "LangIds.h"
#include "base/ResString.h"
#include "platform/MenuBars.h"
#include "platform/PhoneDialog.h"
#include "platform/ScreenScale.h"
#include "program/ProgramIds.h"

namespace {

// Where the next step of the spinner row wraps: past the last item to the first.
void StepListBox(HWND list, int delta) {
    int count = (int)SendMessageW(list, LB_GETCOUNT, 0, 0);
    if (count <= 0) return;
    int current = (int)SendMessageW(list, LB_GETCURSEL, 0, 0);
    int next = current < 0 ? 0 : (current + delta + count) % count;
    SendMessageW(list, LB_SETCURSEL, next, 0);
}

bool IsListBox(HWND control) {
    wchar_t cls[16] = L"";
    GetClassNameW(control, cls, 16);
    return lstrcmpiW(cls, L"listbox") == 0;
}

// The navigation pad of the phone: up and down move between the page's
// controls (a list box or edit box would keep them for itself), left and
// right turn a spinner.
LRESULT CALLBACK PadKeysProc(HWND control, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (msg == WM_KEYDOWN) {
        switch (wParam) {
        case VK_UP:
        case VK_DOWN:
            SendMessageW(GetParent(control), WM_NEXTDLGCTL, wParam == VK_UP, FALSE);
            return 0;
        case VK_LEFT:
        case VK_RIGHT:
            if (!IsListBox(control)) break;
            StepListBox(control, wParam == VK_RIGHT ? 1 : -1);
            return 0;
        }
    }
    return DefSubclassProc(control, msg, wParam, lParam);
}

}  // namespace

// ---------------------------------------------------------------------------
// Base operations: nothing to do
// ---------------------------------------------------------------------------

void CSettingsWindow::OnPaint(HWND hwnd) {
    PAINTSTRUCT ps;
    BeginPaint(hwnd, &ps);
    EndPaint(hwnd, &ps);
}
BOOL CSettingsWindow::OnLButtonDown(HWND, WPARAM, LPARAM) { return FALSE; }
BOOL CSettingsWindow::OnDrawItem(HWND, const DRAWITEMSTRUCT*) { return FALSE; }
BOOL CSettingsWindow::OnMeasureItem(HWND, MEASUREITEMSTRUCT*) { return FALSE; }
BOOL CSettingsWindow::OnCommand(HWND, WPARAM, LPARAM) { return FALSE; }
BOOL CSettingsWindow::OnMove(HWND) { return FALSE; }
BOOL CSettingsWindow::OnNotify(HWND, NMHDR*) { return FALSE; }

// ---------------------------------------------------------------------------
// Running a page
// ---------------------------------------------------------------------------

INT_PTR CSettingsWindow::Run(HWND owner, const wchar_t*, UINT pageTitleId, HINSTANCE resources, HINSTANCE strings,
                             HFONT normal, HFONT bold, UINT selector) {
    resourceModule = resources;
    stringModule = strings;
    normalFont = normal;
    boldFont = bold;
    menuSelector = selector;
    titleId = pageTitleId;
    PhoneDialogSetup setup;
    setup.menuModule = resourceModule;
    setup.menuId = GetTabCount() == 1 ? IDM_PROGRAM_PAGE_ONE_TAB : IDM_PROGRAM_PAGE_TABS;
    setup.overrideBack = false;  // Back leaves the page as IDCANCEL
    return RunPhoneDialog(owner, setup, PageProc, (LPARAM)this);
}

const wchar_t* CSettingsWindow::Text(UINT id) {
    ScopedTextBuffer text;
    LoadResString(stringModule, id, text);
    lstrcpynW(textBuffer, text.Text() ? text.Text() : L"", 256);
    return textBuffer;
}

void CSettingsWindow::Create(HWND hwnd) {
    SetWindowTextW(hwnd, Text(titleId));
    HWND menuBar = PhoneDialogMenuBar(hwnd);
    int tabs = GetTabCount();
    if (menuBar && tabs >= 1) {
        const wchar_t* menuLabel = Text(IDS_MENU);
        SetSoftKeyText(menuBar, IDM_PAGE_MENU_POPUP, menuLabel[0] ? menuLabel : L"Menu");
        SetSoftKeyText(menuBar, IDM_SAVE, Text(IDS_DONE));
        HMENU popup = (HMENU)SendMessageW(menuBar, SHCMBM_GETSUBMENU, 0, IDM_PAGE_MENU_POPUP);
        if (popup && tabs >= 2) {
            while (GetMenuItemCount(popup) > 0) DeleteMenu(popup, 0, MF_BYPOSITION);
            for (int i = 0; i < tabs; ++i) AppendMenuW(popup, MF_STRING, IDM_PAGE_TAB_BASE + i, Text(GetTabTitle(i)));
        } else if (popup) {
            DeleteMenu(popup, 0, MF_BYPOSITION);
        }
    }
    controls.assign(GetControlCount(), nullptr);
    CreateControls(hwnd);
    ShowTab(hwnd, SW_SHOW);
    if (!controls.empty()) {
        // Control 0 is a label on both pages (on the Colors page the second
        // row's): the focus goes to the first control on the page that takes it.
        HWND first = controls[0];
        if (first && !(GetWindowLongW(first, GWL_STYLE) & WS_TABSTOP)) first = GetNextDlgTabItem(hwnd, nullptr, FALSE);
        if (first) SetFocus(first);
    }
}

void CSettingsWindow::Destroy() {
    // Done and Back both end here: the page's values reach g_appSettings
    // either way, and only the settings dialog decides what is stored.
    Apply();
    for (HWND& control : controls) {
        if (control && IsWindow(control)) DestroyWindow(control);
        control = nullptr;
    }
    controls.clear();
}

INT_PTR CALLBACK CSettingsWindow::PageProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_SETFONT) return TRUE;  // the page sets its controls' fonts itself
    if (msg == WM_INITDIALOG) SetWindowLongPtrW(hwnd, GWLP_USERDATA, lParam);
    auto* page = (CSettingsWindow*)GetWindowLongPtrW(hwnd, GWLP_USERDATA);
    if (!page) return FALSE;
    switch (msg) {
    case WM_INITDIALOG:
        page->Create(hwnd);
        return FALSE;  // the focus is set
    case WM_DESTROY: page->Destroy(); return TRUE;
    case WM_MOVE: return page->OnMove(hwnd);
    case WM_PAINT: page->OnPaint(hwnd); return TRUE;
    case WM_LBUTTONDOWN: return page->OnLButtonDown(hwnd, wParam, lParam);
    case WM_DRAWITEM: return page->OnDrawItem(hwnd, (const DRAWITEMSTRUCT*)lParam);
    case WM_MEASUREITEM: return page->OnMeasureItem(hwnd, (MEASUREITEMSTRUCT*)lParam);
    case WM_COMMAND: {
        int id = LOWORD(wParam);
        // Back arrives as IDCANCEL from no control; a swatch whose
        // identifier happens to be IDCANCEL's number is a press, not Back.
        bool back = id == IDCANCEL && page->IndexOf((HWND)lParam) < 0;
        if (back || id == IDM_SAVE) EndDialog(hwnd, 1);
        page->OnCommand(hwnd, wParam, lParam);
        return TRUE;
    }
    case WM_NOTIFY: {
        auto* header = (NMHDR*)lParam;
        if (header->code == TCN_SELCHANGING) page->ShowTab(hwnd, SW_HIDE);
        else if (header->code == TCN_SELCHANGE) page->ShowTab(hwnd, SW_SHOW);
        else return page->OnNotify(hwnd, header);
        return TRUE;
    }
    }
    return FALSE;
}

// ---------------------------------------------------------------------------
// Control rows
// ---------------------------------------------------------------------------

HWND CSettingsWindow::CreateControl(HWND hwnd, int index, const wchar_t* cls, const wchar_t* text, DWORD style,
                                    int x, int y, int w, int h) {
    HWND control = CreateWindowExW(0, cls, text, WS_CHILD | style, x, y, w, h, hwnd, (HMENU)(INT_PTR)(index + 1),
                                   resourceModule, nullptr);
    SendMessageW(control, WM_SETFONT, (WPARAM)normalFont, FALSE);
    if (style & WS_TABSTOP) SetWindowSubclass(control, PadKeysProc, 0, 0);
    if (index >= 0 && index < (int)controls.size()) controls[index] = control;
    return control;
}

namespace {
int ClientWidth(HWND hwnd) {
    RECT client;
    GetClientRect(hwnd, &client);
    return client.right;
}
}  // namespace

int CSettingsWindow::AddSpinnerRow(HWND hwnd, int first, int top, UINT labelId) {
    const double w = ClientWidth(hwnd);
    CreateControl(hwnd, first, L"static", Text(labelId), SS_RIGHT, 0, top + ScaleX(3), (int)(w / 3), ScaleX(25));
    // The device's UDS_NOSCROLL has no desktop counterpart; the desktop
    // control never scrolls its buddy anyway.
    HWND spin = CreateControl(hwnd, first + 1, UPDOWN_CLASSW, L"",
                              WS_VISIBLE | UDS_WRAP | UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ARROWKEYS | UDS_HORZ,
                              (int)(w - ScaleX(135)), top, ScaleX(125), ScaleX(30));
    HWND list = CreateControl(hwnd, first + 2, L"listbox", L"", WS_VISIBLE | WS_TABSTOP, (int)(w / 3 + ScaleX(3)),
                              top, (int)(2 * w / 3 - ScaleX(10)), ScaleX(30));
    SendMessageW(spin, UDM_SETBUDDY, (WPARAM)list, 0);
    return ScaleY(24);
}

int CSettingsWindow::AddFolderRow(HWND hwnd, int first, int top, UINT labelId) {
    const double w = ClientWidth(hwnd);
    const int left = (int)(w / 3 + ScaleX(10));
    const double half = (w - ScaleX(10) - w / 3) / 2;
    CreateControl(hwnd, first, L"static", Text(labelId), SS_RIGHT, 0, top + ScaleX(3), (int)(w / 3), ScaleY(30));
    CreateControl(hwnd, first + 1, L"edit", L"", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, left, top,
                  (int)(w - ScaleX(10) - w / 3 - ScaleX(5)), ScaleY(20));
    const int buttonTop = top + ScaleY(24);
    const int buttonWidth = (int)(half - ScaleX(6));
    CreateControl(hwnd, first + 2, L"button", Text(IDS_FOLDER_CLEAR), WS_TABSTOP, left, buttonTop, buttonWidth,
                  ScaleX(20));
    CreateControl(hwnd, first + 3, L"button", Text(IDS_FOLDER_BROWSE), WS_TABSTOP, (int)(w / 3 + ScaleX(10) + half),
                  buttonTop, buttonWidth, ScaleX(20));
    return ScaleY(48);
}

int CSettingsWindow::AddColorRow(HWND hwnd, int labelIndex, int swatchIndex, int top, UINT labelId) {
    const int w = ClientWidth(hwnd);
    CreateControl(hwnd, labelIndex, L"static", Text(labelId), SS_RIGHT, 0, top + ScaleX(3), w - ScaleX(90),
                  ScaleY(30));
    CreateControl(hwnd, swatchIndex, L"button", Text(IDS_COLOR_SWATCH), WS_TABSTOP | BS_OWNERDRAW, w - ScaleX(80),
                  top, ScaleX(75), ScaleY(20));
    return ScaleY(24);
}

void CSettingsWindow::ShowControls(int first, int last, int showCommand) {
    for (int i = first; i <= last && i < (int)controls.size(); ++i)
        if (controls[i]) ShowWindow(controls[i], showCommand);
}

int CSettingsWindow::IndexOf(HWND control) const {
    if (!control) return -1;
    for (int i = 0; i < (int)controls.size(); ++i)
        if (controls[i] == control) return i;
    return -1;
}
