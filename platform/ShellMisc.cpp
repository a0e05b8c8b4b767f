// The smaller shell calls: dialog sizing, activation, settings changes, the
// overridden Back key, the Done button, the input panel and transparent blits.
#include "platform/aygshell.h"

#include "platform/Platform.h"
#include "platform/PlatformInternal.h"

bool IsEditableEdit(HWND hwnd) {
    wchar_t cls[16] = L"";
    if (!hwnd || !GetClassNameW(hwnd, cls, 16) || lstrcmpiW(cls, L"Edit") != 0) return false;
    return IsWindowEnabled(hwnd) && !(GetWindowLongW(hwnd, GWL_STYLE) & ES_READONLY);
}

void EraseBackInEdit(HWND edit) {
    SendMessageW(edit, WM_CHAR, VK_BACK, 1);
}

BOOL WINAPI SHInitDialog(PSHINITDLGINFO pshidi) {
    if (!pshidi || !IsWindow(pshidi->hDlg)) return FALSE;
    if (!(pshidi->dwMask & SHIDIM_FLAGS)) return TRUE;
    if (pshidi->dwFlags & (SHIDIF_SIZEDLG | SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_FULLSCREENNOMENUBAR))
        FitToPhoneScreen(pshidi->hDlg);
    return TRUE;
}

// The control that had the focus when the window lost activation gets it
// back when the window is activated again (dialogs do this themselves; plain
// windows rely on this call).
BOOL WINAPI SHHandleWMActivate(HWND hwnd, WPARAM wParam, LPARAM, SHACTIVATEINFO* psai, DWORD) {
    if (!psai || !IsWindow(hwnd)) return FALSE;
    if (LOWORD(wParam) == WA_INACTIVE) {
        HWND focus = GetFocus();
        if (focus && IsChild(hwnd, focus)) psai->hwndLastFocus = focus;
        psai->fActive = 0;
        return TRUE;
    }
    psai->fActive = 1;
    psai->fSipUp = 0;
    HWND last = psai->hwndLastFocus;
    HWND focus = GetFocus();
    if ((!focus || focus == hwnd) && last && IsWindow(last) && IsChild(hwnd, last) && IsWindowVisible(last) &&
        IsWindowEnabled(last) && !IsIconic(hwnd))
        SetFocus(last);
    return TRUE;
}

// A full-screen window stays on the phone screen when the work area changes.
BOOL WINAPI SHHandleWMSettingChange(HWND hwnd, WPARAM wParam, LPARAM, SHACTIVATEINFO* psai) {
    if (!psai || !IsWindow(hwnd)) return FALSE;
    if (wParam == SPI_SETWORKAREA && IsOnPhoneScreen(hwnd)) FitToPhoneScreen(hwnd);
    return TRUE;
}

// An edit box erases on the release of Back, so one press erases one
// character whether the window acts on the press, the release or both.
void WINAPI SHSendBackToFocusWindow(UINT uMsg, WPARAM, LPARAM lParam) {
    if (uMsg != WM_HOTKEY) return;
    HWND focus = GetFocus();
    if (!IsEditableEdit(focus)) return;
    if (LOWORD(lParam) & MOD_KEYUP) EraseBackInEdit(focus);
}

BOOL WINAPI SHDoneButton(HWND, DWORD) { return TRUE; }

BOOL WINAPI SipShowIM(DWORD) { return TRUE; }

BOOL WINAPI TransparentImage(HDC hdcDest, LONG DstX, LONG DstY, LONG DstCx, LONG DstCy, HANDLE hSrc, LONG SrcX,
                             LONG SrcY, LONG SrcCx, LONG SrcCy, COLORREF TransparentColor) {
    if (!hdcDest || !hSrc) return FALSE;
    DWORD type = GetObjectType(hSrc);
    if (type == OBJ_DC || type == OBJ_MEMDC)
        return TransparentBlt(hdcDest, DstX, DstY, DstCx, DstCy, (HDC)hSrc, SrcX, SrcY, SrcCx, SrcCy,
                              TransparentColor);
    if (type != OBJ_BITMAP) return FALSE;
    HDC mem = CreateCompatibleDC(hdcDest);
    if (!mem) return FALSE;
    HGDIOBJ old = SelectObject(mem, hSrc);
    BOOL ok = TransparentBlt(hdcDest, DstX, DstY, DstCx, DstCy, mem, SrcX, SrcY, SrcCx, SrcCy, TransparentColor);
    SelectObject(mem, old);
    DeleteDC(mem);
    return ok;
}
