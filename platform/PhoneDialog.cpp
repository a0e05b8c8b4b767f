#include "platform/PhoneDialog.h"

#include "base/AppGlobals.h"
#include "platform/MenuBars.h"
#include "program/ProgramIds.h"

namespace {

// What the shell keeps for one running dialog; dialogs nest (list window,
// item editor, text prompt), so it hangs on the dialog window itself.
struct PhoneDialog {
    PhoneDialogSetup setup;
    DLGPROC proc;
    LPARAM param;
    HWND menuBar;
    SHACTIVATEINFO activation;
};

const wchar_t kDialogProperty[] = L"ZvPhoneDialog";

// The dialog being created: messages that come before WM_INITDIALOG
// (WM_SETFONT) reach its procedure through this.
PhoneDialog* g_creating = nullptr;

PhoneDialog* DialogOf(HWND hwnd) {
    auto* dialog = (PhoneDialog*)GetPropW(hwnd, kDialogProperty);
    return dialog ? dialog : g_creating;
}

// A dialog window has no class icon: without its own, the desktop caption
// shows the system's default one.
void SetProgramIcon(HWND hwnd) {
    HICON big = (HICON)LoadImageW(hInstance, MAKEINTRESOURCEW(IDI_ZORVEL), IMAGE_ICON, GetSystemMetrics(SM_CXICON),
                                  GetSystemMetrics(SM_CYICON), LR_SHARED);
    HICON smallIcon = (HICON)LoadImageW(hInstance, MAKEINTRESOURCEW(IDI_ZORVEL), IMAGE_ICON,
                                    GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), LR_SHARED);
    if (big) SendMessageW(hwnd, WM_SETICON, ICON_BIG, (LPARAM)big);
    if (smallIcon) SendMessageW(hwnd, WM_SETICON, ICON_SMALL, (LPARAM)smallIcon);
}

void InitShell(HWND hwnd, PhoneDialog& dialog) {
    SetPropW(hwnd, kDialogProperty, &dialog);
    SetProgramIcon(hwnd);
    SHINITDLGINFO init = {};
    init.dwMask = SHIDIM_FLAGS;
    init.hDlg = hwnd;
    init.dwFlags = dialog.setup.initFlags;
    SHInitDialog(&init);
    if (dialog.setup.menuId) {
        dialog.menuBar = CreateMenuBarFromMenu(hwnd, dialog.setup.menuModule, dialog.setup.menuId);
        if (dialog.setup.overrideBack) OverrideBackKey(dialog.menuBar);
    }
}

INT_PTR CALLBACK PhoneDialogProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    PhoneDialog* dialog = DialogOf(hwnd);
    if (!dialog) return FALSE;
    switch (msg) {
    case WM_INITDIALOG:
        InitShell(hwnd, *dialog);
        return dialog->proc(hwnd, msg, wParam, dialog->param);
    case WM_ACTIVATE:
        SHHandleWMActivate(hwnd, wParam, lParam, &dialog->activation, 0);
        break;
    case WM_SETTINGCHANGE:
        SHHandleWMSettingChange(hwnd, wParam, lParam, &dialog->activation);
        break;
    case WM_NCDESTROY: {
        INT_PTR result = dialog->proc(hwnd, msg, wParam, lParam);
        RemovePropW(hwnd, kDialogProperty);
        return result;
    }
    }
    INT_PTR result = dialog->proc(hwnd, msg, wParam, lParam);
    if (msg == WM_DESTROY && dialog->menuBar) {
        if (IsWindow(dialog->menuBar)) DestroyWindow(dialog->menuBar);
        dialog->menuBar = nullptr;
    }
    return result;
}

const DLGTEMPLATE* FullScreenTemplate() {
    HRSRC found = FindResourceW(hInstance, MAKEINTRESOURCEW(IDD_FULLSCREEN), (LPCWSTR)RT_DIALOG);
    HGLOBAL loaded = found ? LoadResource(hInstance, found) : nullptr;
    return loaded ? (const DLGTEMPLATE*)LockResource(loaded) : nullptr;
}

}  // namespace

INT_PTR RunPhoneDialog(HWND owner, const PhoneDialogSetup& setup, DLGPROC proc, LPARAM param) {
    const DLGTEMPLATE* dialogTemplate = setup.dialogTemplate ? setup.dialogTemplate : FullScreenTemplate();
    if (!dialogTemplate || !proc) return -1;
    PhoneDialog dialog = {};
    dialog.setup = setup;
    dialog.proc = proc;
    dialog.param = param;
    dialog.activation.cbSize = sizeof dialog.activation;
    PhoneDialog* outer = g_creating;
    g_creating = &dialog;
    // The record lives on this frame for the whole modal loop; from
    // WM_INITDIALOG on the dialog finds it through its property.
    INT_PTR ended = DialogBoxIndirectParamW(hInstance, dialogTemplate, owner, PhoneDialogProc, 0);
    g_creating = outer;
    return ended;
}

HWND PhoneDialogMenuBar(HWND dialog) {
    auto* record = (PhoneDialog*)GetPropW(dialog, kDialogProperty);
    return record ? record->menuBar : nullptr;
}
