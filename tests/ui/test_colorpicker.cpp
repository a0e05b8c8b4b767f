// The colour picker driven through its real dialog: sliders, the
// hexadecimal field, the number-field check, the palette keys, the menu and
// the three kinds of result.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "settings/ColorPicker.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace {

int RunPicker(ui::Script& script, BOOL allowDefault, int mode, COLORREF color, const char* file = __builtin_FILE(),
              int line = __builtin_LINE()) {
    CColorPicker picker(hLangModule, hInstance, allowDefault, mode, color, kColorPickerResource,
                        IDM_COLOR_PICKER_MENUBAR);
    return (int)ui::RunModal(script, [&] { return (INT_PTR)picker.Run(nullptr); }, file, line);
}

int SliderPos(ui::Dlg& d, int channel) {
    return (int)SendMessageW(d.Item(IDC_COLOR_RED_SLIDER + channel), TBM_GETPOS, 0, 0);
}

// Each channel's number field and slider show `c`.
void CheckChannels(ui::Dlg& d, COLORREF c, const char* file, int line) {
    for (int i = 0; i < 3; ++i) {
        int value = (c >> (8 * i)) & 0xFF;
        CHECK_EQ_AT(d.Text(IDC_COLOR_RED_FIELD + i), std::to_wstring(value), file, line);
        CHECK_EQ_AT(SliderPos(d, i), value * 100 / 255, file, line);
    }
}

void SelectAllIn(ui::Dlg& d, int id) {
    d.SetFocusTo(id);
    SendMessageW(d.Item(id), EM_SETSEL, 0, -1);
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

// A number above 255 is refused and undone; an accepted one moves its slider
// and the hexadecimal text. Up and down move between rows, not the slider's
// value; a page is 20 steps, and halfway gives 127.
TEST_CASE(Ui_Color_SlidersAndNumberFields) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_SLIDER);
        CheckChannels(d, RGB(64, 0, 0), ZV_HERE);
        d.Key(VK_TAB);  // slider -> red field, text selected
    });
    s.Step([](ui::Dlg& d) {
        d.Type(L"300");
        d.Key(VK_TAB);  // leave the field
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(ui::MessageBoxes().size(), 1u);
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD), L"64");
        CHECK_EQ(SliderPos(d, 0), 25);
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"400000");
        SelectAllIn(d, IDC_COLOR_RED_FIELD + 1);
        d.Type(L"200");
        d.Key(VK_UP);  // up to the red field
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_FIELD);
        CHECK_EQ(SliderPos(d, 1), 78);
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"40C800");
        d.SetFocusTo(IDC_COLOR_RED_SLIDER);
        d.Key(VK_NEXT);
        for (int i = 0; i < 5; ++i) d.Key(VK_RIGHT);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(SliderPos(d, 0), 50);
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD), L"127");
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"7FC800");
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
    CHECK_EQ(RunPicker(s, FALSE, ColorModeSliders, RGB(64, 0, 0)), (int)RGB(127, 255, 0));
    const uitest::BoxWant tooLarge = {ResText(IDS_COLOR_TOO_LARGE_TEXT), ResText(IDS_COLOR_TOO_LARGE_CAPTION), MB_OK};
    uitest::CheckBoxes({tooLarge}, ZV_HERE);

    // Confirming with a refused number: the dialog stays, the field is undone.
    ui::Script confirm;
    confirm.Step([](ui::Dlg& d) {
        SelectAllIn(d, IDC_COLOR_RED_FIELD + 2);
        d.Type(L"999");
        d.SoftKey(ui::Left);
    });
    confirm.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD + 2), L"3");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(confirm, FALSE, ColorModeSliders, RGB(1, 2, 3)), (int)RGB(1, 2, 3));
    uitest::CheckBoxes({tooLarge}, ZV_HERE);
}

// The menu checks the current mode; leaving the field by switching to the
// sliders takes the text, keeping channels that do not parse, and the left
// soft key reads the field the user is still in.
TEST_CASE(Ui_Color_HtmlFieldSetsChannelsAndSliders) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_HTML_FIELD);
        CHECK(!d.Visible(IDC_COLOR_RED_SLIDER));
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"123456");
        SelectAllIn(d, IDC_COLOR_HTML_FIELD);
        d.Type(L"zz");
        d.Command(IDM_COLOR_SLIDERS);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"123456");
        CheckChannels(d, RGB(0x12, 0x34, 0x56), ZV_HERE);
        d.Command(IDM_COLOR_HTML);
    });
    s.Step([](ui::Dlg& d) {
        SelectAllIn(d, IDC_COLOR_HTML_FIELD);
        d.Type(L"FF8000");
        d.SoftKey(ui::Right);
    });
    s.Step([](ui::Dlg& d) {
        CHECK(d.MenuOpen());
        HMENU menu = d.SoftKeyMenu(ui::Right);
        CHECK(GetMenuState(menu, IDM_COLOR_HTML, MF_BYCOMMAND) & MF_CHECKED);
        CHECK(!(GetMenuState(menu, IDM_COLOR_SLIDERS, MF_BYCOMMAND) & MF_CHECKED));
        d.Char(L'1');  // the first entry: sliders
    });
    s.Step([](ui::Dlg& d) {
        CHECK(!d.MenuOpen());
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_SLIDER);
        CHECK(!d.Visible(IDC_COLOR_HTML_FIELD));
        CheckChannels(d, RGB(255, 128, 0), ZV_HERE);
        d.Command(IDM_COLOR_HTML);
    });
    s.Step([](ui::Dlg& d) {
        SelectAllIn(d, IDC_COLOR_HTML_FIELD);
        d.Type(L"#AB");  // red only; a leading '#' is allowed
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, TRUE, ColorModeHtml, RGB(0x12, 0x34, 0x56)), (int)RGB(0xAB, 0x80, 0x00));
}

// Ten buttons to a row: up and down wrap between the top and bottom rows,
// left and right step through the buttons; Enter picks the focused colour and
// the dialog stays. Buttons 1 and 2 share their identifiers with IDOK and
// IDCANCEL: pressing them picks their colour and neither ends nor cancels the
// dialog. At 192 dpi palette cells, then sliders and fields, fit the screen,
// and each label is as wide as its text (at least 36 phone pixels).
TEST_CASE(Ui_Color_PaletteKeysTapsAndLayoutAt192Dpi) {
    uitest::DensityScope density(192);
    struct Move {
        int from;
        UINT key;
        int to;
    };
    static const Move kMoves[] = {{7, VK_UP, 47},   {47, VK_DOWN, 7}, {7, VK_DOWN, 17}, {3, VK_UP, 43},
                                  {45, VK_DOWN, 5}, {5, VK_RIGHT, 6}, {6, VK_LEFT, 5}};
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        wchar_t cls[16] = L"";
        GetClassNameW(GetFocus(), cls, 16);
        CHECK_EQ(d.FocusId(), 0);  // palette button 0
        CHECK_EQ(std::wstring(cls), L"Button");
        CHECK(!d.Visible(IDC_COLOR_RED_SLIDER));
        CHECK(StripShows(d, RGB(0x33, 0x66, 0x99)));
        uitest::ControlsFit(d.hwnd, {11, 12, 21, 49}, ZV_HERE);
        d.Command(IDM_COLOR_DEFAULT);  // the colours picked below replace it
    });
    for (const Move& m : kMoves) {
        s.Step([m](ui::Dlg& d) {
            d.SetFocusTo(m.from);
            d.Key(m.key);
        });
        s.Step([m](ui::Dlg& d) { CHECK_EQ(d.FocusId(), m.to); });
    }
    s.Step([](ui::Dlg& d) { d.Enter(); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"99FF99");
        CHECK(StripShows(d, RGB(0x99, 0xFF, 0x99)));
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
        CheckChannels(d, RGB(0xFF, 0x66, 0x33), ZV_HERE);
        d.TapCenter(49);
    });
    s.Step([](ui::Dlg& d) {
        for (int i = 0; i < 4; ++i) {
            int label = i < 3 ? IDC_COLOR_RED_LABEL + i : IDC_COLOR_HTML_LABEL;
            RECT l = uitest::RectInParent(d.Item(label));
            RECT n = uitest::RectInParent(d.Item(i < 3 ? IDC_COLOR_RED_SLIDER + i : IDC_COLOR_HTML_FIELD));
            HDC dc = GetDC(d.Item(label));
            HGDIOBJ old = SelectObject(dc, (HGDIOBJ)SendMessageW(d.Item(label), WM_GETFONT, 0, 0));
            std::wstring text = d.Text(label);
            SIZE size = {};
            GetTextExtentPoint32W(dc, text.c_str(), (int)text.size(), &size);
            SelectObject(dc, old);
            ReleaseDC(d.Item(label), dc);
            CHECK((int)(l.right - l.left) >= size.cx);
            CHECK((int)(l.right - l.left) >= ScaleX(36));
            CHECK(n.left > l.right);
        }
        d.Command(IDM_COLOR_SLIDERS);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(!d.Visible(10));
        uitest::ControlsFit(d.hwnd, {IDC_COLOR_RED_SLIDER, IDC_COLOR_RED_SLIDER + 2, IDC_COLOR_RED_FIELD,
                                     IDC_COLOR_RED_FIELD + 2}, ZV_HERE);
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, TRUE, ColorModePalette, RGB(0x33, 0x66, 0x99)), (int)RGB(0x33, 0x00, 0x33));
}

// "Default" is offered, and taken, only when allowed; the preview shows the
// caller's colour until then. (A colour picked after it replaces it: the
// palette case.)
TEST_CASE(Ui_Color_DefaultOnlyWhenAllowedAndShownInPreview) {
    const COLORREF start = RGB(0xCC, 0x33, 0xCC);
    for (int allow = 0; allow < 2; ++allow) {
        std::vector<UINT> want = {IDM_COLOR_SLIDERS, IDM_COLOR_HTML, IDM_COLOR_PALETTE, 0, IDM_COLOR_CANCEL};
        if (allow) want.insert(want.begin() + 4, IDM_COLOR_DEFAULT);
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            HMENU menu = d.SoftKeyMenu(ui::Right);
            std::vector<UINT> ids;
            for (int i = 0; i < GetMenuItemCount(menu); ++i) ids.push_back(GetMenuItemID(menu, i));
            CHECK(ids == want);
            CHECK(StripShows(d, start));
            d.Command(IDM_COLOR_DEFAULT);
        });
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(StripShows(d, start), !allow);
            d.SoftKey(ui::Left);
        });
        CHECK_EQ(RunPicker(s, allow, ColorModePalette, start), allow ? (int)DefaultColor : (int)start);
    }
}

TEST_CASE(Ui_Color_CancelReturnsMinusTwo) {
    struct Row {
        BOOL allowDefault;
        int mode;
        COLORREF color;
        void (*act)(ui::Dlg&);
    } rows[] = {
        {TRUE, ColorModeSliders, RGB(1, 2, 3), [](ui::Dlg& d) { d.Command(IDM_COLOR_CANCEL); }},
        // Palette button 2 has IDCANCEL's identifier: Back on it still cancels.
        {TRUE, ColorModePalette, RGB(1, 2, 3), [](ui::Dlg& d) { d.SetFocusTo(2); d.Back(); }},
        {FALSE, ColorModeSliders, DefaultColor, [](ui::Dlg& d) { d.Back(); }},
    };
    for (const Row& row : rows) {
        ui::Script s;
        s.Step(row.act);
        CHECK_EQ(RunPicker(s, row.allowDefault, row.mode, row.color), ColorPickerCancelled);
    }
}
