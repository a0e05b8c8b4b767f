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

#include <climits>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "base/Handles.h"
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

bool HasClass(HWND hwnd, const wchar_t* className) {
    wchar_t name[16];
    return GetClassNameW(hwnd, name, 16) && lstrcmpiW(name, className) == 0;
}

bool IsDialogClass(HWND hwnd) { return HasClass(hwnd, L"#32770"); }
bool IsMenuWindow(HWND hwnd) { return HasClass(hwnd, L"#32768"); }

void CentreOnPhoneScreen(HWND hwnd) {
    RECT phone, win;
    GetPhoneScreenRect(&phone);
    GetWindowRect(hwnd, &win);
    int width = win.right - win.left, height = win.bottom - win.top;
    // Never past the phone screen's top-left corner, even when the box is
    // larger than the screen.
    int x = phone.left + ((phone.right - phone.left) - width) / 2;
    int y = phone.top + ((phone.bottom - phone.top) - height) / 2;
    SetWindowPos(hwnd, nullptr, x < phone.left ? phone.left : x, y < phone.top ? phone.top : y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

const int kMessageBoxTextId = 0xFFFF;  // the text of a system message box
const UINT_PTR kBoxSubclassId = 0x5A51;

RECT RectInParent(HWND control) {
    RECT r;
    GetWindowRect(control, &r);
    MapWindowPoints(nullptr, GetParent(control), (POINT*)&r, 2);
    return r;
}

// The height the text needs when wrapped at `width` in the control's font.
int WrappedTextHeight(HWND text, int width) {
    int length = GetWindowTextLengthW(text);
    std::wstring buffer((size_t)length + 1, L'\0');
    GetWindowTextW(text, &buffer[0], length + 1);
    HDC dc = GetDC(text);
    if (!dc) return 0;
    RECT r = {0, 0, width, 0};
    {
        SelectedObject font(dc, (HGDIOBJ)SendMessageW(text, WM_GETFONT, 0, 0));
        DrawTextW(dc, buffer.c_str(), length, &r, DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX);
    }
    ReleaseDC(text, dc);
    return r.bottom;
}

// A message box sized for the desktop is narrowed to the phone screen: its
// text wraps in the narrower box, the buttons move under it and stay
// centred.
void NarrowMessageBox(HWND box, int maxWidth) {
    HWND text = GetDlgItem(box, kMessageBoxTextId);
    RECT win;
    GetWindowRect(box, &win);
    int shrink = (win.right - win.left) - maxWidth;
    if (!text || shrink <= 0) return;
    RECT textRect = RectInParent(text);
    int textWidth = (textRect.right - textRect.left) - shrink;
    if (textWidth < ScaleX(60)) return;
    int oldHeight = textRect.bottom - textRect.top;
    int newHeight = WrappedTextHeight(text, textWidth);
    int grow = newHeight > oldHeight ? newHeight - oldHeight : 0;
    MoveWindow(text, textRect.left, textRect.top, textWidth, oldHeight + grow, FALSE);

    RECT client;
    GetClientRect(box, &client);
    int clientWidth = client.right - shrink;
    std::vector<std::pair<HWND, RECT>> buttons;
    int left = INT_MAX, right = INT_MIN;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!HasClass(child, L"Button")) continue;
        RECT r = RectInParent(child);
        buttons.push_back({child, r});
        if (r.left < left) left = r.left;
        if (r.right > right) right = r.right;
    }
    int dx = buttons.empty() ? 0 : (clientWidth - (right - left)) / 2 - left;
    for (const auto& [button, r] : buttons)
        SetWindowPos(button, nullptr, r.left + dx, r.top + grow, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(box, nullptr, 0, 0, maxWidth, (win.bottom - win.top) + grow,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

const UINT kMsgPlaceBox = WM_APP + 0x5A2;

// A box the hook took carries this property: kBoxTaken until the box has
// been placed, which happens once, then kBoxPlaced.
const wchar_t kBoxProp[] = L"ZvPlacing";
const HANDLE kBoxTaken = (HANDLE)1, kBoxPlaced = (HANDLE)2;

void PlaceOnPhoneScreen(HWND box) {
    if (GetPropW(box, kBoxProp) == kBoxPlaced) return;
    SetPropW(box, kBoxProp, kBoxPlaced);
    RECT phone;
    GetPhoneScreenRect(&phone);
    NarrowMessageBox(box, phone.right - phone.left);
    CentreOnPhoneScreen(box);
}

// A message box is activated while it lays itself out (its buttons are
// placed after the activation), so it is placed when it is shown, or at the
// latest when its loop runs. A box whose frame changed before its first
// activation keeps an inactive caption under Wine: tell the frame again once
// it is active.
LRESULT CALLBACK PlacedBoxProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    switch (msg) {
    case WM_SHOWWINDOW:
        if (wParam) PlaceOnPhoneScreen(hwnd);
        break;
    case kMsgPlaceBox: PlaceOnPhoneScreen(hwnd); return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE) {
            LRESULT r = DefSubclassProc(hwnd, msg, wParam, lParam);
            SendMessageW(hwnd, WM_NCACTIVATE, TRUE, 0);
            return r;
        }
        break;
    case WM_NCDESTROY:
        RemoveWindowSubclass(hwnd, PlacedBoxProc, kBoxSubclassId);
        RemovePropW(hwnd, kBoxProp);
        break;
    }
    return DefSubclassProc(hwnd, msg, wParam, lParam);
}

const UINT_PTR kMenuSubclassId = 0x5A52;

// The menu window whose right edge is where a submenu at `x` was put (its
// parent), or NULL.
HWND MenuEndingAt(HWND self, int x) {
    for (HWND w = GetTopWindow(nullptr); w; w = GetWindow(w, GW_HWNDNEXT)) {
        if (w == self || !IsWindowVisible(w) || !IsMenuWindow(w) ||
            GetWindowThreadProcessId(w, nullptr) != GetCurrentThreadId())
            continue;
        RECT r;
        GetWindowRect(w, &r);
        if (abs(r.right - x) <= ScaleX(8)) return w;
    }
    return nullptr;
}

// Menus open on the phone screen, as they would on the phone: the system
// keeps them on the desktop only, so a submenu next to a soft-key menu
// would open beside the phone. One that does not fit on the right of its
// parent opens on its left; anything else is pushed inside.
void KeepMenuOnPhoneScreen(HWND menu, WINDOWPOS* pos) {
    if ((pos->flags & SWP_NOMOVE) || !g_phone.originSet) return;
    RECT phone;
    GetPhoneScreenRect(&phone);
    RECT now;
    GetWindowRect(menu, &now);
    int cx = (pos->flags & SWP_NOSIZE) ? now.right - now.left : pos->cx;
    int cy = (pos->flags & SWP_NOSIZE) ? now.bottom - now.top : pos->cy;
    if (pos->x + cx > phone.right) {
        HWND parent = MenuEndingAt(menu, pos->x);
        RECT parentRect;
        if (parent && GetWindowRect(parent, &parentRect) && parentRect.left - cx >= phone.left)
            pos->x = parentRect.left - cx;
        else
            pos->x = phone.right - cx;
    }
    if (pos->x < phone.left) pos->x = phone.left;
    // Above the soft-key bar, which stays visible under an open menu.
    int bottom = phone.bottom - SoftKeyBarHeight();
    if (pos->y + cy > bottom) pos->y = bottom - cy;
    if (pos->y < phone.top) pos->y = phone.top;
}

LRESULT CALLBACK MenuWindowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (msg == WM_WINDOWPOSCHANGING) KeepMenuOnPhoneScreen(hwnd, (WINDOWPOS*)lParam);
    if (msg == WM_NCDESTROY) RemoveWindowSubclass(hwnd, MenuWindowProc, kMenuSubclassId);
    return DefSubclassProc(hwnd, msg, wParam, lParam);
}

LRESULT CALLBACK DialogPlacementProc(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND && IsMenuWindow((HWND)wParam))
        SetWindowSubclass((HWND)wParam, MenuWindowProc, kMenuSubclassId, 0);
    if (code == HCBT_ACTIVATE) {
        HWND hwnd = (HWND)wParam;
        if (!IsOnPhoneScreen(hwnd) && !(GetWindowLongW(hwnd, GWL_STYLE) & WS_CHILD) && IsDialogClass(hwnd) &&
            !GetPropW(hwnd, kBoxProp)) {
            SetPropW(hwnd, kBoxProp, kBoxTaken);
            if (IsWindowVisible(hwnd)) {
                PlaceOnPhoneScreen(hwnd);
            } else {
                CentreOnPhoneScreen(hwnd);
                PostMessageW(hwnd, kMsgPlaceBox, 0, 0);
            }
            SetWindowSubclass(hwnd, PlacedBoxProc, kBoxSubclassId, 0);
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
    RECT band = {pt.x - win.left, pt.y - win.top, pt.x - win.left + SoftKeyBandWidth(hwnd),
                 pt.y - win.top + SoftKeyBarHeight()};
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

// The band spans the frame's inside, under a vertical scroll bar too: the
// client area alone is narrower when the window scrolls.
int SoftKeyBandWidth(HWND parent) {
    RECT win;
    GetWindowRect(parent, &win);
    POINT origin = ClientOrigin(parent);
    int border = origin.x - win.left;
    return (win.right - win.left) - 2 * border;
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

void PlaceDialogsOnPhoneScreen() { InstallDialogPlacementHook(); }

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
