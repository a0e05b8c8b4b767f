// The colour picker driven through its real dialog: sliders, the
// hexadecimal field, the number-field check, the palette keys, the menu and
// the three kinds of result.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "app/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "settings/ColorPicker.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"

namespace {

int RunPicker(ui::Script& script, BOOL allowDefault, int mode, COLORREF color, const char* file, int line) {
    CColorPicker picker(hLangModule, hInstance, allowDefault, mode, color, kColorPickerResource,
                        IDM_COLOR_PICKER_MENUBAR);
    return (int)ui::RunModal(script, [&] { return (INT_PTR)picker.Run(nullptr); }, file, line);
}

int SliderPos(ui::Dlg& d, int channel) {
    return (int)SendMessageW(d.Item(IDC_COLOR_RED_SLIDER + channel), TBM_GETPOS, 0, 0);
}

void CheckChannels(ui::Dlg& d, int r, int g, int b, const char* file, int line) {
    CHECK_EQ_AT(d.Text(IDC_COLOR_RED_FIELD), std::to_wstring(r), file, line);
    CHECK_EQ_AT(d.Text(IDC_COLOR_RED_FIELD + 1), std::to_wstring(g), file, line);
    CHECK_EQ_AT(d.Text(IDC_COLOR_RED_FIELD + 2), std::to_wstring(b), file, line);
    CHECK_EQ_AT(SliderPos(d, 0), r * 100 / 255, file, line);
    CHECK_EQ_AT(SliderPos(d, 1), g * 100 / 255, file, line);
    CHECK_EQ_AT(SliderPos(d, 2), b * 100 / 255, file, line);
}

// Palette button `index` by its identifier among the dialog's buttons (the
// soft-key bar may also carry identifier 0).
HWND PaletteButton(ui::Dlg& d, int index) {
    for (HWND child = GetWindow(d.hwnd, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t cls[16] = L"";
        GetClassNameW(child, cls, 16);
        if (GetDlgCtrlID(child) == index && lstrcmpiW(cls, L"Button") == 0) return child;
    }
    return nullptr;
}

void SelectAllIn(ui::Dlg& d, int id) {
    d.SetFocusTo(id);
    SendMessageW(d.Item(id), EM_SETSEL, 0, -1);
}

std::vector<UINT> MenuIds(HMENU menu) {
    std::vector<UINT> ids;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) ids.push_back(GetMenuItemID(menu, i));
    return ids;
}

// True when some pixel of the preview strip's middle row has this colour.
bool StripShows(ui::Dlg& d, COLORREF color) {
    RECT client = d.ClientRect();
    int y = client.bottom - ScaleY(12);
    HDC dc = GetDC(d.hwnd);
    bool found = false;
    for (int x = 0; x < client.right && !found; ++x) found = GetPixel(dc, x, y) == color;
    ReleaseDC(d.hwnd, dc);
    return found;
}

}  // namespace

TEST_CASE(Ui_Color_SliderHalfwayGives127) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_SLIDER);
        CheckChannels(d, 0, 0, 0, ZV_HERE);
        CHECK(d.Visible(IDC_COLOR_RED_SLIDER));
        CHECK(!d.Visible(IDC_COLOR_HTML_FIELD));
        CHECK(!d.Visible(5));  // a palette button
        // Two pages of 20 and ten single steps: 50.
        d.Key(VK_NEXT);
        d.Key(VK_NEXT);
        for (int i = 0; i < 10; ++i) d.Key(VK_RIGHT);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(SliderPos(d, 0), 50);
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD), L"127");
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"7F0000");
        // Down moves to the green slider, not the red one's value.
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_SLIDER + 1);
        CHECK_EQ(SliderPos(d, 0), 50);
        d.Key(VK_END);  // green to 100: 255
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD + 1), L"255");
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"7FFF00");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, TRUE, ColorModeSliders, RGB(0, 0, 0), ZV_HERE), (int)RGB(127, 255, 0));
}

TEST_CASE(Ui_Color_HtmlFieldSetsChannelsAndSliders) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_HTML_FIELD);
        CHECK(d.Visible(IDC_COLOR_HTML_FIELD));
        CHECK(!d.Visible(IDC_COLOR_RED_SLIDER));
        CHECK(!d.Visible(5));
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"123456");
        SelectAllIn(d, IDC_COLOR_HTML_FIELD);
        d.Type(L"FF8000");
    });
    // Leaving the field by switching to the sliders takes the text.
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
    s.Step([](ui::Dlg& d) {
        CHECK(d.MenuOpen());
        d.Char(L'1');  // the first entry: sliders
    });
    s.Step([](ui::Dlg& d) {
        CHECK(!d.MenuOpen());
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_SLIDER);
        CHECK(!d.Visible(IDC_COLOR_HTML_FIELD));
        CheckChannels(d, 255, 128, 0, ZV_HERE);
        CHECK_EQ(SliderPos(d, 0), 100);
        CHECK_EQ(SliderPos(d, 1), 50);
        CHECK_EQ(SliderPos(d, 2), 0);
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, TRUE, ColorModeHtml, RGB(0x12, 0x34, 0x56), ZV_HERE), 0x0080FF);
}

TEST_CASE(Ui_Color_HtmlFieldKeepsChannelsThatDoNotParse) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        SelectAllIn(d, IDC_COLOR_HTML_FIELD);
        d.Type(L"#AB");  // red only; a leading '#' is allowed
    });
    // The left soft key reads the field the user is still in.
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ(RunPicker(s, TRUE, ColorModeHtml, RGB(0x12, 0x34, 0x56), ZV_HERE), (int)RGB(0xAB, 0x34, 0x56));

    ui::Script junk;
    junk.Step([](ui::Dlg& d) {
        SelectAllIn(d, IDC_COLOR_HTML_FIELD);
        d.Type(L"zz");
        d.Command(IDM_COLOR_SLIDERS);  // leaving the field reads it
    });
    junk.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"123456");
        CheckChannels(d, 0x12, 0x34, 0x56, ZV_HERE);
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(junk, TRUE, ColorModeHtml, RGB(0x12, 0x34, 0x56), ZV_HERE), (int)RGB(0x12, 0x34, 0x56));
}

TEST_CASE(Ui_Color_NumberAbove255IsRefusedAndUndone) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        d.Key(VK_TAB);  // slider -> red field, text selected
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_FIELD);
        d.Type(L"300");
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD), L"300");
        d.Key(VK_TAB);  // leave the field
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(ui::MessageBoxes().size(), 1u);
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD), L"64");
        CHECK_EQ(SliderPos(d, 0), 25);
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"400000");
        // An accepted number moves the slider and the hexadecimal text.
        d.SetFocusTo(IDC_COLOR_RED_FIELD + 1);
        SendMessageW(d.Item(IDC_COLOR_RED_FIELD + 1), EM_SETSEL, 0, -1);
        d.Type(L"200");
        d.Key(VK_UP);  // up to the red field
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_FIELD);
        CHECK_EQ(SliderPos(d, 1), 78);
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"40C800");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, FALSE, ColorModeSliders, RGB(64, 0, 0), ZV_HERE), (int)RGB(64, 200, 0));
    const std::vector<ui::MessageBoxRecord>& boxes = ui::MessageBoxes();
    CHECK_EQ(boxes.size(), 1u);
    if (!boxes.empty()) {
        CHECK_EQ(boxes[0].text, ResText(IDS_COLOR_TOO_LARGE_TEXT));
        CHECK_EQ(boxes[0].caption, ResText(IDS_COLOR_TOO_LARGE_CAPTION));
        CHECK_EQ(boxes[0].buttons, (UINT)MB_OK);
    }
}

TEST_CASE(Ui_Color_ConfirmWithRefusedNumberStays) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        SelectAllIn(d, IDC_COLOR_RED_FIELD + 2);
        d.Type(L"999");
        d.SoftKey(ui::Left);  // refused: the dialog stays, the field is undone
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(ui::MessageBoxes().size(), 1u);
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD + 2), L"3");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, FALSE, ColorModeSliders, RGB(1, 2, 3), ZV_HERE), (int)RGB(1, 2, 3));
}

TEST_CASE(Ui_Color_PaletteKeysWrapByRows) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK(d.Focus() == PaletteButton(d, 0));
        CHECK(d.Visible(49));
        CHECK(!d.Visible(IDC_COLOR_RED_SLIDER));
        d.SetFocusTo(7);
        d.Key(VK_UP);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), 47);
        d.Key(VK_DOWN);
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), 17);
        d.SetFocusTo(3);
        d.Key(VK_UP);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), 43);
        d.SetFocusTo(45);
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), 5);
        d.Key(VK_RIGHT);  // left and right step through the buttons
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), 6);
        d.Key(VK_LEFT);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), 5);
        // Enter picks the focused colour and the dialog stays.
        d.Enter();
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"99FF99");
        CHECK(StripShows(d, RGB(0x99, 0xFF, 0x99)));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, TRUE, ColorModePalette, RGB(0, 0, 0), ZV_HERE), (int)RGB(0x99, 0xFF, 0x99));
}

// Buttons 1 and 2 share their identifiers with IDOK and IDCANCEL: pressing
// them picks their colour and neither ends nor cancels the dialog.
TEST_CASE(Ui_Color_PaletteButtonsOneAndTwoPickColours) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        d.SetFocusTo(1);
        d.Enter();
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"CCCCFF");
        d.TapCenter(2);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), 2);
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"99CCFF");
        d.TapCenter(27);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"FF6633");
        CheckChannels(d, 0xFF, 0x66, 0x33, ZV_HERE);
        d.TapCenter(49);
    });
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ(RunPicker(s, TRUE, ColorModePalette, RGB(0, 0, 0), ZV_HERE), (int)RGB(0x33, 0x00, 0x33));
}

TEST_CASE(Ui_Color_MenuOffersDefaultOnlyWhenAllowed) {
    const UINT kWithDefault[] = {IDM_COLOR_SLIDERS, IDM_COLOR_HTML, IDM_COLOR_PALETTE, 0, IDM_COLOR_DEFAULT,
                                 IDM_COLOR_CANCEL};
    const UINT kWithout[] = {IDM_COLOR_SLIDERS, IDM_COLOR_HTML, IDM_COLOR_PALETTE, 0, IDM_COLOR_CANCEL};
    for (int allow = 0; allow < 2; ++allow) {
        std::vector<UINT> want = allow ? std::vector<UINT>(kWithDefault, kWithDefault + 6)
                                       : std::vector<UINT>(kWithout, kWithout + 5);
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(d.SoftKeyText(ui::Left), ResText(IDS_COLOR_SELECT));
            CHECK_EQ(d.SoftKeyText(ui::Right), ResText(IDS_MENU));
            CHECK_EQ(d.SoftKeyCommand(ui::Left), IDOK);
            HMENU menu = d.SoftKeyMenu(ui::Right);
            CHECK(menu != nullptr);
            std::vector<UINT> ids = MenuIds(menu);
            CHECK_EQ(ids.size(), want.size());
            for (size_t i = 0; i < ids.size() && i < want.size(); ++i) CHECK_EQ(ids[i], want[i]);
            d.Command(IDM_COLOR_DEFAULT);  // ignored unless allowed
        });
        s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
        int result = RunPicker(s, allow, ColorModeSliders, RGB(10, 20, 30), ZV_HERE);
        CHECK_EQ(result, allow ? (int)DefaultColor : (int)RGB(10, 20, 30));
    }
}

TEST_CASE(Ui_Color_DefaultShowsInPreviewUntilAColourIsPicked) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK(StripShows(d, RGB(0xCC, 0x33, 0xCC)));
        d.SoftKey(ui::Right);
    });
    s.Step([](ui::Dlg& d) {
        std::vector<std::wstring> texts = ui::Dlg::MenuTexts(d.SoftKeyMenu(ui::Right));
        CHECK_EQ(texts.size(), 6u);
        if (texts.size() == 6) CHECK_EQ(texts[4], L"&4 Default");
        d.Char(L'4');
    });
    s.Step([](ui::Dlg& d) {
        CHECK(!StripShows(d, RGB(0xCC, 0x33, 0xCC)));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, TRUE, ColorModePalette, RGB(0xCC, 0x33, 0xCC), ZV_HERE), (int)DefaultColor);

    // A colour picked after "Default" replaces it.
    ui::Script again;
    again.Step([](ui::Dlg& d) { d.Command(IDM_COLOR_DEFAULT); });
    again.Step([](ui::Dlg& d) { d.TapCenter(40); });
    again.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ(RunPicker(again, TRUE, ColorModePalette, RGB(0xCC, 0x33, 0xCC), ZV_HERE), 0);
}

TEST_CASE(Ui_Color_CancelReturnsMinusTwo) {
    ui::Script menu;
    menu.Step([](ui::Dlg& d) { d.Command(IDM_COLOR_CANCEL); });
    CHECK_EQ(RunPicker(menu, TRUE, ColorModeSliders, RGB(1, 2, 3), ZV_HERE), ColorPickerCancelled);

    ui::Script back;
    back.Step([](ui::Dlg& d) {
        d.SetFocusTo(2);  // palette button 2 has IDCANCEL's identifier
        d.Back();
    });
    CHECK_EQ(RunPicker(back, TRUE, ColorModePalette, RGB(1, 2, 3), ZV_HERE), ColorPickerCancelled);

    ui::Script slider;
    slider.Step([](ui::Dlg& d) { d.Back(); });
    CHECK_EQ(RunPicker(slider, FALSE, ColorModeSliders, DefaultColor, ZV_HERE), ColorPickerCancelled);
}

TEST_CASE(Ui_Color_MenuChecksTheCurrentMode) {
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
    s.Step([](ui::Dlg& d) {
        HMENU menu = d.SoftKeyMenu(ui::Right);
        CHECK(GetMenuState(menu, IDM_COLOR_PALETTE, MF_BYCOMMAND) & MF_CHECKED);
        CHECK(!(GetMenuState(menu, IDM_COLOR_SLIDERS, MF_BYCOMMAND) & MF_CHECKED));
        d.Char(L'2');  // HTML#
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_HTML_FIELD);
        CHECK(d.Visible(IDC_COLOR_HTML_LABEL));
        CHECK(!d.Visible(10));
        d.SoftKey(ui::Right);
    });
    s.Step([](ui::Dlg& d) {
        HMENU menu = d.SoftKeyMenu(ui::Right);
        CHECK(GetMenuState(menu, IDM_COLOR_HTML, MF_BYCOMMAND) & MF_CHECKED);
        CHECK(!(GetMenuState(menu, IDM_COLOR_PALETTE, MF_BYCOMMAND) & MF_CHECKED));
        d.Char(L'2');  // HTML# again: no change
    });
    s.Step([](ui::Dlg& d) { d.Command(IDM_COLOR_CANCEL); });
    CHECK_EQ(RunPicker(s, TRUE, ColorModePalette, RGB(0, 0, 0), ZV_HERE), ColorPickerCancelled);
}

namespace {

RECT ChildRect(ui::Dlg& d, int id) {
    RECT r;
    GetWindowRect(id < kPaletteSize ? PaletteButton(d, id) : d.Item(id), &r);
    MapWindowPoints(nullptr, d.hwnd, (POINT*)&r, 2);
    return r;
}

void CheckRect(const RECT& r, int x, int y, int w, int h, const char* file, int line) {
    CHECK_EQ_AT(r.left, (LONG)x, file, line);
    CHECK_EQ_AT(r.top, (LONG)y, file, line);
    CHECK_EQ_AT(r.right - r.left, (LONG)w, file, line);
    CHECK_EQ_AT(r.bottom - r.top, (LONG)h, file, line);
}

DWORD ShotPause() {
    wchar_t value[16];
    return GetEnvironmentVariableW(L"ZV_SHOT_PAUSE_MS", value, 16) ? (DWORD)_wtoi(value) : 0;
}

}  // namespace

// With ZV_SHOT_PAUSE_MS set, a step that keeps the dialog on screen that
// long, for screenshots of the pickers (shared with the icon picker tests).
void AddShotPause(ui::Script& s) {
    DWORD pause = ShotPause();
    if (!pause) return;
    s.Timeout(pause + 5000);
    DWORD* until = new DWORD(0);
    s.Step([until, pause](ui::Dlg&) { *until = GetTickCount() + pause; });
    s.WaitUntil([until](ui::Dlg&) { return GetTickCount() >= *until; });
}

// The cells, rows and fields are placed from the screen density: 240 x 320
// phone pixels at 96 dpi, twice that at 192.
TEST_CASE(Ui_Color_LayoutFollowsDensity) {
    int oldX = ScreenDpiX(), oldY = ScreenDpiY();
    const int densities[2] = {96, 192};
    for (int dpi : densities) {
        SetScreenDensity(dpi, dpi);
        int k = dpi / 96;
        ui::Script s;
        s.Step([k](ui::Dlg& d) {
            RECT client = d.ClientRect();
            CHECK_EQ(client.right, (LONG)(240 * k));
            // gap = (240 - 160 - 20) / 10 = 6, step 22, first column at 13.
            CheckRect(ChildRect(d, 0), 13 * k, 5 * k, 16 * k, 16 * k, ZV_HERE);
            CheckRect(ChildRect(d, 11), 35 * k, 26 * k, 16 * k, 16 * k, ZV_HERE);
            CheckRect(ChildRect(d, 49), 211 * k, 89 * k, 16 * k, 16 * k, ZV_HERE);
            CheckRect(ChildRect(d, IDC_COLOR_RED_SLIDER + 1), 40 * k, 40 * k, 144 * k, 20 * k, ZV_HERE);
            CheckRect(ChildRect(d, IDC_COLOR_RED_FIELD + 2), 190 * k, 70 * k, 40 * k, 20 * k, ZV_HERE);
            CheckRect(ChildRect(d, IDC_COLOR_HTML_FIELD), 41 * k, 10 * k, 189 * k, 20 * k, ZV_HERE);
            CHECK(StripShows(d, RGB(0x33, 0x66, 0x99)));
        });
        AddShotPause(s);
        s.Step([](ui::Dlg& d) { d.Command(IDM_COLOR_SLIDERS); });
        AddShotPause(s);
        s.Step([](ui::Dlg& d) { d.Command(IDM_COLOR_HTML); });
        AddShotPause(s);
        s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
        CHECK_EQ(RunPicker(s, TRUE, ColorModePalette, RGB(0x33, 0x66, 0x99), ZV_HERE), (int)RGB(0x33, 0x66, 0x99));
    }
    SetScreenDensity(oldX, oldY);
}
