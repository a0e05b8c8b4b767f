// Message boxes open over the phone screen and no wider than it, their text
// wrapped to fit, at both densities.
#include <windows.h>

#include <string>

#include "platform/Platform.h"
#include "platform/ScreenScale.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace {

// Where the box was when it closed: window, text and button rectangles.
struct SeenBox {
    RECT window = {}, text = {}, button = {};
    int textNeeds = 0;  // height of the text wrapped at the text control's width
} g_seen;

HHOOK g_watch;

LRESULT CALLBACK WatchBoxes(int code, WPARAM wParam, LPARAM lParam) {
    HWND box = (HWND)wParam;
    HWND text = code == HCBT_DESTROYWND ? GetDlgItem(box, 0xFFFF) : nullptr;
    if (text) {
        GetWindowRect(box, &g_seen.window);
        GetWindowRect(text, &g_seen.text);
        GetWindowRect(GetDlgItem(box, IDOK), &g_seen.button);
        wchar_t buffer[512];
        int length = GetWindowTextW(text, buffer, 512);
        HDC dc = GetDC(text);
        HGDIOBJ old = SelectObject(dc, (HGDIOBJ)SendMessageW(text, WM_GETFONT, 0, 0));
        RECT r = {0, 0, g_seen.text.right - g_seen.text.left, 0};
        DrawTextW(dc, buffer, length, &r, DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX);
        SelectObject(dc, old);
        ReleaseDC(text, dc);
        g_seen.textNeeds = r.bottom;

    }
    return CallNextHookEx(g_watch, code, wParam, lParam);
}

}  // namespace

TEST_CASE(Ui_MessageBox_FitsThePhoneScreenAndWraps) {
    PlaceDialogsOnPhoneScreen();
    for (int dpi : {96, 192}) {
        uitest::DensityScope density(dpi);
        g_seen = SeenBox();
        g_watch = SetWindowsHookExW(WH_CBT, WatchBoxes, nullptr, GetCurrentThreadId());
        ui::Script s;
        ui::RunModal(s, [] {
            return (INT_PTR)MessageBoxW(nullptr,
                                        L"Error loading system files Please re-install Zorvel. The number must be "
                                        L"between -999999999 and 999999999 with at most four decimals.",
                                        L"Error", MB_ICONEXCLAMATION);
        });
        UnhookWindowsHookEx(g_watch);
        RECT phone;
        GetPhoneScreenRect(&phone);
        CHECK(g_seen.window.left >= phone.left);
        CHECK(g_seen.window.right <= phone.right);
        CHECK(g_seen.window.top >= phone.top);
        CHECK((int)(g_seen.text.bottom - g_seen.text.top) >= g_seen.textNeeds);
        CHECK(g_seen.text.right <= g_seen.window.right);
        CHECK(g_seen.button.top >= g_seen.text.bottom);
        CHECK(g_seen.button.left >= g_seen.window.left && g_seen.button.right <= g_seen.window.right);
    }
}
