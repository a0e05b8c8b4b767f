// The phone screen on the desktop. Every full-screen window covers the same
// rectangle: its client area is the application's part of the screen and a
// band of its frame under the client area shows the soft-key bar, so code
// written for the phone lays out in its whole client rectangle and the bar
// never covers anything. The band belongs to the window itself (no second
// top-level window to keep stacked above it, which Wine without a window
// manager does not keep), so it moves, hides and closes with the window.
// A desktop caption lets the user move the phone and close the window; the
// phone screen moves with the window that was dragged.
#include "platform/Platform.h"

#include <commctrl.h>

#include "platform/ScreenScale.h"
#include "platform/PlatformInternal.h"

namespace {

const wchar_t kPhoneProp[] = L"ZvPhoneScreen";
const UINT_PTR kPhoneSubclassId = 0x5A50;

// Top-left of the phone screen in desktop coordinates; the last position the
// user dragged a phone window to.
struct PhoneScreenState {
    POINT origin;
    bool originSet;
} g_phone;

// Message boxes and other dialogs that are not full-screen open over the
// phone screen, as they do on the phone, not in the middle of the desktop.
struct DialogPlacementHook {
    HHOOK hook;
    DWORD thread;
} g_dialogHook;

bool IsDialogClass(HWND hwnd) {
    wchar_t name[16];
    return GetClassNameW(hwnd, name, 16) && lstrcmpW(name, L"#32770") == 0;
}

void CentreOnPhoneScreen(HWND hwnd) {
    RECT phone, win;
    GetPhoneScreenRect(&phone);
    GetWindowRect(hwnd, &win);
    int width = win.right - win.left, height = win.bottom - win.top;
    int x = phone.left + ((phone.right - phone.left) - width) / 2;
    int y = phone.top + ((phone.bottom - phone.top) - height) / 2;
    SetWindowPos(hwnd, nullptr, x < 0 ? 0 : x, y < 0 ? 0 : y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK DialogPlacementProc(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE) {
        HWND hwnd = (HWND)wParam;
        if (!IsOnPhoneScreen(hwnd) && !(GetWindowLongW(hwnd, GWL_STYLE) & WS_CHILD) && IsDialogClass(hwnd) &&
            !GetPropW(hwnd, L"ZvPlaced")) {
            SetPropW(hwnd, L"ZvPlaced", (HANDLE)1);
            CentreOnPhoneScreen(hwnd);
        }
    }
    return CallNextHookEx(g_dialogHook.hook, code, wParam, lParam);
}

void InstallDialogPlacementHook() {
    DWORD thread = GetCurrentThreadId();
    if (g_dialogHook.hook && g_dialogHook.thread == thread) return;
    if (g_dialogHook.hook) UnhookWindowsHookEx(g_dialogHook.hook);
    g_dialogHook.hook = SetWindowsHookExW(WH_CBT, DialogPlacementProc, nullptr, thread);
    g_dialogHook.thread = thread;
}

POINT PhoneOrigin() {
    if (!g_phone.originSet) {
        g_phone.origin.x = 48;
        g_phone.origin.y = 48;
        g_phone.originSet = true;
    }
    return g_phone.origin;
}

POINT ClientOrigin(HWND hwnd) {
    POINT pt = {0, 0};
    ClientToScreen(hwnd, &pt);
    return pt;
}

// The band under the client area, in window coordinates.
RECT BandRect(HWND hwnd) {
    RECT win, client;
    GetWindowRect(hwnd, &win);
    GetClientRect(hwnd, &client);
    POINT pt = {0, client.bottom};
    ClientToScreen(hwnd, &pt);
    RECT band = {pt.x - win.left, pt.y - win.top, pt.x - win.left + client.right, pt.y - win.top + SoftKeyBarHeight()};
    return band;
}

bool InBand(HWND hwnd, POINT screenPt) {
    RECT win;
    GetWindowRect(hwnd, &win);
    RECT band = BandRect(hwnd);
    OffsetRect(&band, win.left, win.top);
    return PtInRect(&band, screenPt) != FALSE;
}

void PaintBand(HWND hwnd) {
    HDC dc = GetWindowDC(hwnd);
    if (!dc) return;
    PaintSoftKeyBand(hwnd, dc, BandRect(hwnd));
    ReleaseDC(hwnd, dc);
}

LRESULT OnNcCalcSize(HWND hwnd, WPARAM wParam, LPARAM lParam) {
    LRESULT r = DefSubclassProc(hwnd, WM_NCCALCSIZE, wParam, lParam);
    RECT* client = (RECT*)lParam;  // rgrc[0] for both forms
    client->bottom -= SoftKeyBarHeight();
    if (client->bottom < client->top) client->bottom = client->top;
    return r;
}

LRESULT OnNcHitTest(HWND hwnd, WPARAM wParam, LPARAM lParam) {
    POINT pt = {(short)LOWORD(lParam), (short)HIWORD(lParam)};
    if (InBand(hwnd, pt)) return HTOBJECT;
    return DefSubclassProc(hwnd, WM_NCHITTEST, wParam, lParam);
}

LRESULT OnNcButton(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (wParam != HTOBJECT) return DefSubclassProc(hwnd, msg, wParam, lParam);
    POINT pt = {(short)LOWORD(lParam), (short)HIWORD(lParam)};
    TapSoftKeyBand(hwnd, pt, msg == WM_NCLBUTTONUP);
    return 0;
}

void OnWindowPosChanged(HWND hwnd, const WINDOWPOS* pos) {
    if (!(pos->flags & SWP_NOMOVE) && IsWindowVisible(hwnd) && !IsIconic(hwnd)) {
        g_phone.origin = ClientOrigin(hwnd);
        g_phone.originSet = true;
    }
    if (!(pos->flags & SWP_NOSIZE) || (pos->flags & SWP_FRAMECHANGED)) PlaceSoftKeyBar(hwnd);
}

// A window coming back to the front follows a phone screen that was moved
// while another window was on top.
void OnActivate(HWND hwnd, WPARAM wParam) {
    if (LOWORD(wParam) == WA_INACTIVE) return;
    // A window whose frame was rebuilt before its first activation keeps an
    // inactive caption under Wine: tell the frame again.
    SendMessageW(hwnd, WM_NCACTIVATE, TRUE, 0);
    if (IsIconic(hwnd) || !IsWindowVisible(hwnd)) return;
    POINT now = ClientOrigin(hwnd);
    POINT want = PhoneOrigin();
    if (now.x == want.x && now.y == want.y) return;
    RECT win;
    GetWindowRect(hwnd, &win);
    SetWindowPos(hwnd, nullptr, win.left + want.x - now.x, win.top + want.y - now.y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK PhoneWindowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    switch (msg) {
    case WM_NCCALCSIZE:    return OnNcCalcSize(hwnd, wParam, lParam);
    case WM_NCHITTEST:     return OnNcHitTest(hwnd, wParam, lParam);
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_NCLBUTTONUP:   return OnNcButton(hwnd, msg == WM_NCLBUTTONDBLCLK ? WM_NCLBUTTONDOWN : msg, wParam, lParam);
    case WM_NCPAINT:
    case WM_NCACTIVATE: {
        LRESULT r = DefSubclassProc(hwnd, msg, wParam, lParam);
        PaintBand(hwnd);
        return r;
    }
    case WM_WINDOWPOSCHANGED: {
        LRESULT r = DefSubclassProc(hwnd, msg, wParam, lParam);
        OnWindowPosChanged(hwnd, (const WINDOWPOS*)lParam);
        return r;
    }
    case WM_ACTIVATE: {
        LRESULT r = DefSubclassProc(hwnd, msg, wParam, lParam);
        OnActivate(hwnd, wParam);
        return r;
    }
    case WM_NCDESTROY:
        RemoveWindowSubclass(hwnd, PhoneWindowProc, kPhoneSubclassId);
        RemovePropW(hwnd, kPhoneProp);
        break;
    }
    return DefSubclassProc(hwnd, msg, wParam, lParam);
}

}  // namespace

void EnsureScreenScale() {
    if (ScreenDpiX() == 0) InitScreenScale(0);
}

int SoftKeyBarHeight() {
    EnsureScreenScale();
    return ScaleY(26);
}

void GetPhoneScreenRect(RECT* rc) {
    EnsureScreenScale();
    POINT origin = PhoneOrigin();
    SetRect(rc, origin.x, origin.y, origin.x + ScaleX(240), origin.y + ScaleY(320));
}

bool IsOnPhoneScreen(HWND hwnd) { return hwnd && GetPropW(hwnd, kPhoneProp) != nullptr; }

void FitToPhoneScreen(HWND hwnd) {
    if (!IsWindow(hwnd) || (GetWindowLongW(hwnd, GWL_STYLE) & WS_CHILD)) return;
    InstallDialogPlacementHook();
    RECT phone;
    GetPhoneScreenRect(&phone);

    LONG style = GetWindowLongW(hwnd, GWL_STYLE);
    style = (style | WS_CAPTION | WS_SYSMENU) & ~(WS_THICKFRAME | WS_MAXIMIZEBOX | WS_MINIMIZEBOX | WS_MAXIMIZE);
    SetWindowLongW(hwnd, GWL_STYLE, style);
    if (!IsOnPhoneScreen(hwnd)) {
        SetPropW(hwnd, kPhoneProp, (HANDLE)1);
        SetWindowSubclass(hwnd, PhoneWindowProc, kPhoneSubclassId, 0);
    }

    RECT win = phone;
    win.bottom -= SoftKeyBarHeight();
    AdjustWindowRectEx(&win, style, GetMenu(hwnd) != nullptr, GetWindowLongW(hwnd, GWL_EXSTYLE));
    win.bottom += SoftKeyBarHeight();
    SetWindowPos(hwnd, nullptr, win.left, win.top, win.right - win.left, win.bottom - win.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    PlaceSoftKeyBar(hwnd);
}
