#include "dialogs/TextEntry.h"

#include <cwchar>

#include "LangIds.h"
#include "program/ProgramIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/Handles.h"
#include "platform/PhoneDialog.h"
#include "settings/ListLook.h"

namespace {

struct TextEntryState {
    TextEntryRequest* request;
    HWND edit;
    FontHandle listFont;
};
TextEntryState g_textEntry;

BOOL OnInitDialog(HWND hwnd, TextEntryRequest* request) {
    g_textEntry = TextEntryState();
    g_textEntry.request = request;

    g_textEntry.listFont.Reset(CreateListFont(100));
    // WM_SIZE then moves it under the prompt.
    g_textEntry.edit = CreateWindowExW(0, L"edit", L"", WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL,
                                       ScaleX(90), ScaleY(100), ScaleX(135), ScaleY(20), hwnd,
                                       (HMENU)(INT_PTR)kTextEntryEditId, request->module, nullptr);
    request->text[kTextEntryMaxChars] = 0;
    SetWindowTextW(g_textEntry.edit, request->text);
    ShowWindow(g_textEntry.edit, SW_SHOW);
    SendMessageW(g_textEntry.edit, WM_SETFONT, (WPARAM)g_textEntry.listFont.Get(), TRUE);
    RECT client;
    GetClientRect(hwnd, &client);
    SendMessageW(hwnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
    SetFocus(g_textEntry.edit);
    int length = GetWindowTextLengthW(g_textEntry.edit);
    SendMessageW(g_textEntry.edit, EM_SETSEL, length, length);  // the caret after the text
    return FALSE;  // the focus is set
}

BOOL OnPaint(HWND hwnd) {
    WhitePaint paint(hwnd);
    RECT band = {ScaleX(5), ScaleY(5), paint.client.right, ScaleY(20)};
    SelectedObject font(paint.dc, g_textEntry.listFont.Get());
    SetBkMode(paint.dc, TRANSPARENT);
    SetTextColor(paint.dc, GetSysColor(COLOR_WINDOWTEXT));
    const CeString& prompt = g_textEntry.request->prompt;
    DrawTextW(paint.dc, prompt, prompt.Length(), &band, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    return TRUE;
}

BOOL OnSize(HWND hwnd, int width) {
    if (!g_textEntry.edit) return TRUE;  // SHInitDialog sizes the dialog before the box exists
    MoveWindow(g_textEntry.edit, ScaleX(5), ScaleY(30), width - ScaleX(10), ScaleY(20), TRUE);
    InvalidateRect(hwnd, nullptr, FALSE);
    UpdateWindow(hwnd);
    return TRUE;
}

BOOL OnCommand(HWND hwnd, int id) {
    switch (id) {
    case IDC_OK:
    case IDOK:  // Enter confirms as the OK soft key does
        GetWindowTextW(g_textEntry.edit, g_textEntry.request->text, kTextEntryMaxChars + 1);
        EndDialog(hwnd, TRUE);
        return TRUE;
    case IDC_CANCEL:
        EndDialog(hwnd, FALSE);
        return TRUE;
    }
    return FALSE;  // IDCANCEL included: Back never closes this dialog
}

BOOL OnHotKey(WPARAM wParam, LPARAM lParam) {
    if (HIWORD(lParam) == VK_ESCAPE) SHSendBackToFocusWindow(WM_HOTKEY, wParam, lParam);
    return TRUE;
}

BOOL OnDestroy() {
    if (g_textEntry.edit) DestroyWindow(g_textEntry.edit);
    g_textEntry.listFont.Reset();
    g_textEntry.edit = nullptr;
    return TRUE;
}

INT_PTR CALLBACK TextEntryDlgProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(hwnd, (TextEntryRequest*)lParam);
    case WM_PAINT: return OnPaint(hwnd);
    case WM_SIZE: return OnSize(hwnd, LOWORD(lParam));
    case WM_COMMAND: return OnCommand(hwnd, LOWORD(wParam));
    case WM_HOTKEY: return OnHotKey(wParam, lParam);
    case WM_DESTROY: return OnDestroy();
    }
    return FALSE;
}

}  // namespace

int RunTextEntryDialog(HWND owner, TextEntryRequest& request) {
    if (!request.module) request.module = hInstance;
    PhoneDialogSetup setup;
    setup.menuModule = hLangModule;
    setup.menuId = IDM_OK_CANCEL_MENUBAR;  // Back reaches WM_HOTKEY and erases in the edit box
    INT_PTR ended = RunPhoneDialog(owner, setup, TextEntryDlgProc, (LPARAM)&request);
    return ended == TRUE ? 1 : 0;
}
