// The phone shell on the desktop: screen size, the soft-key bar and its
// messages, the keys (soft keys, Back, digits in menus), message boxes on the
// phone screen, and the harness's scripted answers.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "platform/PhoneDialog.h"
#include "platform/Platform.h"
#include "platform/aygshell.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace {

const int kEditId = 100;
const int kButtonId = 101;
using Texts = std::vector<std::wstring>;

// How the test dialog is set up, and what it saw. Its bar is the list
// window's: Save | Menu (Add Item..., Edit Item..., Delete Item, -,
// Row Color > (Yellow, Red, ...), ...).
struct TestDialog {
    bool overrideBack = true;
    bool ignoreCancel = false;     // IDCANCEL is only recorded
    std::vector<UINT> commands;
    std::vector<LPARAM> hotkeys;
    RECT clientAtInit = {};
} g_test;

BOOL OnInitDialog(HWND hwnd) {
    GetClientRect(hwnd, &g_test.clientAtInit);
    // Laid out over the whole client area, as the program's dialogs are.
    RECT rc = g_test.clientAtInit;
    CreateWindowExW(0, L"button", L"Button", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, rc.bottom - 24, rc.right, 24,
                    hwnd, (HMENU)(INT_PTR)kButtonId, nullptr, nullptr);
    SetFocus(CreateWindowExW(0, L"edit", L"", WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP, 0, 0, rc.right, 24,
                             hwnd, (HMENU)(INT_PTR)kEditId, nullptr, nullptr));
    return FALSE;
}

void OnCommand(HWND hwnd, UINT id) {
    g_test.commands.push_back(id);
    if (id == IDM_SAVE) EndDialog(hwnd, 1);
    else if (id == IDCANCEL && !g_test.ignoreCancel) EndDialog(hwnd, 2);
}

INT_PTR CALLBACK TestDlgProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(hwnd);
    case WM_COMMAND:
        if (lParam) return FALSE;  // control notifications are not commands
        OnCommand(hwnd, LOWORD(wParam));
        return TRUE;
    case WM_HOTKEY:
        g_test.hotkeys.push_back(lParam);
        if (HIWORD(lParam) == VK_ESCAPE) SHSendBackToFocusWindow(msg, wParam, lParam);
        return TRUE;
    }
    return FALSE;
}

// Runs the test dialog, set up afresh, under a script; returns how it ended.
INT_PTR RunTestDialog(ui::Script& s, const TestDialog& setup = {}, HWND owner = nullptr,
                      const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    g_test = setup;
    PhoneDialogSetup phone;
    phone.menuModule = hLangModule;
    phone.menuId = IDM_LIST_WINDOW_MENUBAR;
    phone.overrideBack = setup.overrideBack;
    return ui::RunModal(s, [&] { return RunPhoneDialog(owner, phone, TestDlgProc, 0); }, file, line);
}

RECT ScreenRectOf(HWND hwnd) {
    RECT rc;
    GetWindowRect(hwnd, &rc);
    return rc;
}

RECT ClientScreenRect(HWND hwnd) {
    RECT rc;
    GetClientRect(hwnd, &rc);
    MapWindowPoints(hwnd, nullptr, (POINT*)&rc, 2);
    return rc;
}

std::string RectText(const RECT& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

// The phone screen is 240 x 320 at 96 dpi; the client area fills it above the bar.
void CheckPhoneLayout(HWND dlg, int dpi, const char* file, int line) {
    RECT phone;
    GetPhoneScreenRect(&phone);
    CHECK_EQ_AT(phone.right - phone.left, 240 * dpi / 96, file, line);
    CHECK_EQ_AT(phone.bottom - phone.top, 320 * dpi / 96, file, line);
    int barTop = phone.bottom - SoftKeyBarHeight();
    CHECK_EQ_AT(RectText(ClientScreenRect(dlg)), RectText({phone.left, phone.top, phone.right, barTop}), file, line);
    RECT bar = ScreenRectOf(FindSoftKeyBar(dlg));
    CHECK_EQ_AT(RectText(bar), RectText({phone.left, barTop, phone.right, phone.bottom}), file, line);
    CHECK_AT(IsWindowVisible(FindSoftKeyBar(dlg)), file, line);
}

// Where a message box was when it closed: window, text and button
// rectangles, and the height of its text wrapped at the text control's width.
struct SeenBox {
    RECT window = {}, text = {}, button = {};
    int textNeeds = 0;
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

void SendKey(WORD vk) {
    INPUT in[2] = {};
    in[0].type = in[1].type = INPUT_KEYBOARD;
    in[0].ki.wVk = in[1].ki.wVk = vk;
    in[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, in, sizeof(INPUT));
}

}  // namespace

// At both densities; and wherever the user moved the phone screen.
TEST_CASE(Ui_Platform_FullScreenDialogCoversThePhoneScreen) {
    for (int dpi : {96, 192}) {
        uitest::DensityScope density(dpi);
        ui::Script s;
        s.Step([dpi](ui::Dlg& d) {
            CheckPhoneLayout(d.hwnd, dpi, ZV_HERE);
            // The content was laid out in the whole client area, above the bar.
            CHECK_EQ(RectText(g_test.clientAtInit), RectText(d.ClientRect()));
            d.SoftKey(ui::Left);
        });
        CHECK_EQ(RunTestDialog(s), (INT_PTR)1);
    }
    CHECK_EQ(SoftKeyBarHeight(), ScaleY(26));

    // A dialog follows a phone screen the user moved.
    RECT before;
    GetPhoneScreenRect(&before);
    HWND main = CreateWindowExW(0, L"Static", L"Main", WS_VISIBLE | WS_CLIPSIBLINGS, CW_USEDEFAULT, CW_USEDEFAULT,
                                CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, nullptr, nullptr);
    FitToPhoneScreen(main);
    CHECK(IsOnPhoneScreen(main));
    CHECK_EQ(ClientScreenRect(main).top, before.top);
    RECT win = ScreenRectOf(main);
    SetWindowPos(main, nullptr, win.left + 30, win.top + 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER);  // a user drag
    RECT moved;
    GetPhoneScreenRect(&moved);
    CHECK_EQ(RectText(moved), RectText({before.left + 30, before.top + 20, before.right + 30, before.bottom + 20}));
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CheckPhoneLayout(d.hwnd, ScreenDpiX(), ZV_HERE);
        d.SoftKey(ui::Left);
    });
    RunTestDialog(s, {}, main);
    // Put the phone screen back for the tests that follow.
    SetWindowPos(main, nullptr, win.left, win.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    DestroyWindow(main);
    GetPhoneScreenRect(&moved);
    CHECK_EQ(moved.top, before.top);
}

// Entries are numbered while the menu is open, nested popups too; a digit
// picks one (a top-level digit: see the Back test below). A tap on a key of
// the bar, and a mouse click on the band below the client area (the frame
// shows the bar there), press the key.
TEST_CASE(Ui_Platform_SoftKeysTapsAndClicksSendCommandsAndOpenNumberedMenus) {
    auto tapButton = [](ui::Dlg& d, int index) {
        RECT rc;
        SendMessageW(d.MenuBar(), TB_GETITEMRECT, index, (LPARAM)&rc);
        d.Tap(d.MenuBar(), (rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2);
    };
    // Texts of entries 0, 4, 12 and 13 of a popup.
    auto some = [](HMENU menu) {
        Texts t = ui::Dlg::MenuTexts(menu);
        t.resize(14);
        return t[0] + L"|" + t[4] + L"|" + t[12] + L"|" + t[13];
    };
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.SoftKeyText(ui::Left), L"Save");
        // An entry with a mnemonic of its own: numbering replaces it, closing puts it back.
        ModifyMenuW(d.SoftKeyMenu(ui::Right), 0, MF_BYPOSITION | MF_STRING, IDM_ADD_ITEM, L"&Add Item...");
        d.SoftKey(ui::Right);
    });
    s.Step([&](ui::Dlg& d) {
        // 1 to 9, then 0; separators and the entries after the tenth go unnumbered.
        CHECK_EQ(some(d.SoftKeyMenu(ui::Right)), L"&1 Add Item...|&4 Row Color|&0 Check All|Uncheck All");
        d.Char('4');  // opens the nested popup
    });
    s.Step([](ui::Dlg& d) {
        Texts texts = ui::Dlg::MenuTexts(GetSubMenu(d.SoftKeyMenu(ui::Right), 4));
        texts.resize(2);
        CHECK(texts == (Texts{L"&1 Yellow", L"&2 Red"}));
        d.Char('2');
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(!d.MenuOpen());
        CHECK_EQ(some(d.SoftKeyMenu(ui::Right)), L"&Add Item...|Row Color|Check All|Uncheck All");
        d.SoftKey(ui::Right);  // a soft key pressed while its menu is open closes the menu
    });
    s.Step([](ui::Dlg& d) {
        CHECK(d.MenuOpen());
        d.SoftKey(ui::Right);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(!d.MenuOpen());
        tapButton(d, 1);
    });
    s.Step([](ui::Dlg& d) {
        CHECK(d.MenuOpen());
        d.Key(VK_ESCAPE);  // Back inside a menu closes it
    });
    s.Step([](ui::Dlg& d) {
        CHECK(!d.MenuOpen());
        CHECK(g_test.hotkeys.empty());
        d.TapSoftKey(ui::Right);  // opens the menu only when the band answers the hit test as the bar's
    });
    s.Step([](ui::Dlg& d) {
        CHECK(d.MenuOpen());
        EndMenu();
    });
    s.Step([](ui::Dlg& d) {
        CHECK(!d.MenuOpen());
        RECT band = ScreenRectOf(d.MenuBar());
        // Pressed on one key and released on the other: nothing happens.
        int y = (band.top + band.bottom) / 2;
        PostMessageW(d.hwnd, WM_NCLBUTTONDOWN, HTOBJECT, MAKELPARAM(band.left + 10, y));
        PostMessageW(d.hwnd, WM_NCLBUTTONUP, HTOBJECT, MAKELPARAM(band.right - 10, y));
    });
    s.Step([](ui::Dlg& d) {
        CHECK(!d.MenuOpen());
        CHECK(g_test.commands == std::vector<UINT>{(UINT)IDM_ROW_RED});
        d.TapSoftKey(ui::Left);
    });
    CHECK_EQ(RunTestDialog(s), (INT_PTR)1);
    CHECK(g_test.commands == (std::vector<UINT>{(UINT)IDM_ROW_RED, IDM_SAVE}));
    ui::Script tap;
    tap.Step([&](ui::Dlg& d) { tapButton(d, 0); });
    CHECK_EQ(RunTestDialog(tap), (INT_PTR)1);
}

// Back, overridden, arrives as WM_HOTKEY (press and release) and erases one
// character, never closing; keys from the keyboard driver (not posted by the
// harness) take the same way as the harness's.
TEST_CASE(Ui_Platform_OverriddenBackArrivesAsHotKeyAndErasesOneCharacter) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(GetForegroundWindow(), d.hwnd);
        CHECK_EQ(d.FocusId(), kEditId);
        SendKey('A');
        SendKey('B');
        SendKey(VK_ESCAPE);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kEditId), L"a");
        CHECK(g_test.hotkeys == (std::vector<LPARAM>{MAKELPARAM(0, VK_ESCAPE), MAKELPARAM(MOD_KEYUP, VK_ESCAPE)}));
        d.Type(L"bc");
        d.Back();
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kEditId), L"ab");
        CHECK_EQ(g_test.hotkeys.size(), 4u);
        d.Back();
        d.Back();
        d.Back();  // nothing left to erase: still no closing
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kEditId), L"");
        CHECK(g_test.commands.empty());
        SendKey(VK_F2);
    });
    s.Step([](ui::Dlg& d) {
        CHECK(d.MenuOpen());
        SendKey('2');
        SendKey(VK_F1);
    });
    CHECK_EQ(RunTestDialog(s), (INT_PTR)1);
    CHECK(g_test.commands == (std::vector<UINT>{(UINT)IDM_EDIT_ITEM, IDM_SAVE}));
}

// Without the override Back erases in an edit box and elsewhere cancels;
// without a bar F1 and F2 do nothing and Esc still reaches the dialog manager.
TEST_CASE(Ui_Platform_BackWithoutOverrideAndKeysWithoutBar) {
    TestDialog setup;
    setup.overrideBack = false;
    setup.ignoreCancel = true;
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        d.Type(L"xy");
        d.Back();
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kEditId), L"x");
        CHECK(g_test.hotkeys.empty());
        CHECK(g_test.commands.empty());
        d.SetFocusTo(kButtonId);
        d.Back();
    });
    s.Step([](ui::Dlg& d) {
        CHECK(g_test.commands == std::vector<UINT>{(UINT)IDCANCEL});
        DestroyWindow(d.MenuBar());
        CHECK(d.MenuBar() == nullptr);
        // The client area keeps its size; the band stays as an empty bar.
        CHECK_EQ(d.ClientRect().bottom, g_test.clientAtInit.bottom);
        d.SoftKey(ui::Left);
        d.SoftKey(ui::Right);  // a menu opened here would take the Back below
        d.Back();
        d.Command(IDM_SAVE);
    });
    CHECK_EQ(RunTestDialog(s, setup), (INT_PTR)1);
    CHECK(g_test.commands == (std::vector<UINT>{(UINT)IDCANCEL, (UINT)IDCANCEL, IDM_SAVE}));
}

TEST_CASE(Ui_Platform_TransparentImageFromBitmapOrDc) {
    // Source 2x1: green (the key) and red; destination 2x1 white.
    BITMAPINFO bi = {{sizeof(BITMAPINFOHEADER), 2, -1, 1, 32, BI_RGB, 0, 0, 0, 0, 0}, {}};
    DWORD *src = nullptr, *dst = nullptr;
    HBITMAP srcBmp = CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, (void**)&src, nullptr, 0);
    HBITMAP dstBmp = CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, (void**)&dst, nullptr, 0);
    src[0] = 0x0000FF00;
    src[1] = 0x00FF0000;
    HDC dc = CreateCompatibleDC(nullptr), srcDc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, dstBmp);
    for (HANDLE source : {(HANDLE)srcBmp, (HANDLE)srcDc}) {  // the bitmap alone first, then selected in a DC
        dst[0] = dst[1] = 0x00FFFFFF;
        if (source == srcDc) SelectObject(srcDc, srcBmp);
        GdiFlush();
        CHECK(TransparentImage(dc, 0, 0, 2, 1, source, 0, 0, 2, 1, RGB(0, 255, 0)));
        GdiFlush();
        CHECK_EQ((unsigned)dst[0], 0x00FFFFFFu);  // the key colour left the destination alone
        CHECK_EQ((unsigned)dst[1], 0x00FF0000u);
    }
    CHECK(!TransparentImage(dc, 0, 0, 2, 1, nullptr, 0, 0, 2, 1, 0));
    DeleteDC(srcDc);
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(srcBmp);
    DeleteObject(dstBmp);
}

TEST_CASE(Ui_Platform_ActivationGivesTheFocusBack) {
    HWND w = CreateWindowExW(0, L"Static", L"", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100, nullptr, nullptr, nullptr,
                             nullptr);
    HWND edit = CreateWindowExW(0, L"edit", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, w, nullptr, nullptr, nullptr);
    SHACTIVATEINFO sai = {sizeof sai, nullptr, 0, 0, 0, 0};
    SetFocus(edit);
    SHHandleWMActivate(w, WA_INACTIVE, 0, &sai, 0);
    SetFocus(w);
    SHHandleWMActivate(w, WA_ACTIVE, 0, &sai, 0);
    CHECK_EQ(GetFocus(), edit);
    DestroyWindow(w);
}

// Message boxes open over the phone screen and no wider than it, their text
// wrapped to fit, at both densities. Answers a box cannot take, and answers
// never used, are reported: without this a test scripting a box that never
// comes would pass.
TEST_CASE(Ui_Platform_MessageBoxFitsThePhoneScreenAndWraps) {
    PlaceDialogsOnPhoneScreen();
    for (int dpi : {96, 192}) {
        uitest::DensityScope density(dpi);
        g_seen = SeenBox();
        g_watch = SetWindowsHookExW(WH_CBT, WatchBoxes, nullptr, GetCurrentThreadId());
        ui::Script s;
        s.ExpectProblems();
        s.Answer(IDYES);  // the box only has OK
        s.Answer(IDNO);   // never used
        INT_PTR answer = ui::RunModal(s, [] {
            return (INT_PTR)MessageBoxW(nullptr,
                                        L"Error loading system files Please re-install Zorvel. The number must be "
                                        L"between -999999999 and 999999999 with at most four decimals.",
                                        L"Error", MB_ICONEXCLAMATION);
        });
        UnhookWindowsHookEx(g_watch);
        CHECK_EQ(answer, (INT_PTR)IDOK);
        CHECK_EQ(ui::LastRunProblems().size(), 2u);
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
