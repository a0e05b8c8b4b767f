// The pickers of settings/ driven through their real dialogs. The colour
// picker: sliders, the hexadecimal field, the number-field check, the palette
// keys, the menu and the three kinds of result. The icon picker, over a
// folder of TGA files written here: scan order, the size limit at 96 and 192
// dpi, the cache that is never rescanned, and what confirm and cancel do to
// the caller's icon.
#include <windows.h>
#include <commctrl.h>

#include <cstring>
#include <string>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "images/PlanarImage.h"
#include "settings/AppSettings.h"
#include "settings/ColorPicker.h"
#include "settings/IconPicker.h"
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

// True when some pixel of the row `above` phone pixels over the bottom of the
// client area (the middle of a picker's preview band) has this colour.
bool PreviewShows(ui::Dlg& d, COLORREF color, int above) {
    RECT client = d.ClientRect();
    int y = client.bottom - ScaleY(above);
    HDC dc = GetDC(d.hwnd);
    bool found = false;
    for (int x = 0; x < client.right && !found; ++x) found = GetPixel(dc, x, y) == color;
    ReleaseDC(d.hwnd, dc);
    return found;
}

bool StripShows(ui::Dlg& d, COLORREF color) { return PreviewShows(d, color, 12); }

const wchar_t kIconsRoot[] = L"\\zvtest-icons\\";
const int kList = IconPicker::kIconListId;

const COLORREF kGreen = RGB(0, 200, 0);
const COLORREF kRed = RGB(220, 0, 0);
const COLORREF kBlue = RGB(0, 0, 230);
const COLORREF kGrey = RGB(90, 90, 90);

// An uncompressed true-colour TGA filled with one colour: 18-byte header,
// then bottom-up rows of blue, green, red (and alpha at 32 bits).
void WriteTga(const std::wstring& path, int width, int height, int bits, COLORREF c, BYTE imageType = 2) {
    std::vector<BYTE> bytes = {0, 0, imageType, 0, 0, 0, 0, 0, 0, 0, 0, 0, (BYTE)width, (BYTE)(width >> 8),
                               (BYTE)height, (BYTE)(height >> 8), (BYTE)bits, (BYTE)(bits == 32 ? 8 : 0)};
    for (int i = 0; i < width * height; ++i) {
        bytes.insert(bytes.end(), {GetBValue(c), GetGValue(c), GetRValue(c)});
        if (bits == 32) bytes.push_back(255);
    }
    uitest::WriteBytes(path, bytes);
}

// The icons folder of these tests, on drive C: of the test prefix, and the
// settings and cache put back afterwards. Scan order: the subfolder's icon,
// then the folder's own files by name; big.tga counts only at 192 dpi and
// mapped.tga (colour-mapped) never.
struct IconFolderFixture {
    uitest::OnDriveC drive;
    CeString oldFolder = g_appSettings.IconsFolder.value;  // the value itself, not Set: no registry

    IconFolderFixture() {
        std::wstring root = kIconsRoot;
        uitest::RemoveTree(root);
        CreateDirectoryW(root.c_str(), nullptr);
        CreateDirectoryW((root + L"sub").c_str(), nullptr);
        WriteTga(root + L"a.tga", 16, 16, 32, kRed);
        WriteTga(root + L"big.tga", 32, 32, 32, kGrey);
        WriteTga(root + L"c.tga", 12, 12, 24, kBlue);
        WriteTga(root + L"mapped.tga", 16, 16, 24, kGrey, 1);
        WriteTga(root + L"sub\\b.tga", 16, 16, 32, kGreen);
        WriteTga(root + L"sub\\notes.txt", 4, 4, 24, kGrey);
        g_appSettings.IconsFolder.value = kIconsRoot;
        IconPicker::ReleaseIconCache();
    }
    ~IconFolderFixture() {
        IconPicker::ReleaseIconCache();
        g_appSettings.IconsFolder.value = oldFolder;
        uitest::RemoveTree(kIconsRoot);
    }
};

bool IsSolid(const PlanarImage& image, int width, int height, COLORREF c) {
    if (!image.IsDrawable() || image.width != width || image.height != height) return false;
    for (int i = 0; i < width * height; ++i)
        if (RGB(image.red[i], image.green[i], image.blue[i]) != c || image.alpha[i] != 255) return false;
    return true;
}

void MakeSolid(PlanarImage& image, int size, COLORREF c) {
    image.Allocate(size, size);
    memset(image.red, GetRValue(c), size * size);
    memset(image.green, GetGValue(c), size * size);
    memset(image.blue, GetBValue(c), size * size);
    memset(image.alpha, 255, size * size);
}

bool RunPicker(ui::Script& script, PlanarImage& image, const char* file, int line) {
    auto run = [&] {  // 163: the image strip the callers pass, unused by the picker
        return (INT_PTR)IconPicker::Run(nullptr, hLangModule, (INT_PTR)hInstance, 163, 0, image);
    };
    return ui::RunModal(script, run, file, line) != 0;
}

bool BandShows(ui::Dlg& d, COLORREF c) { return PreviewShows(d, c, 14); }

void TapIcon(ui::Dlg& d, int row) {
    RECT r = {LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(d.Item(kList), LVM_GETITEMRECT, row, (LPARAM)&r);
    d.Tap(kList, (r.left + r.right) / 2, (r.top + r.bottom) / 2);
}

}  // namespace

// A number above 255 is refused and undone; an accepted one moves its slider
// and the hexadecimal text. Up and down move between rows, not the slider's
// value; a page is 20 steps, and halfway gives 127.
TEST_CASE(Ui_Color_SlidersAndNumberFields) {
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_SLIDER);
        CheckChannels(d, RGB(64, 0, 3), ZV_HERE);
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
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"400003");
        SelectAllIn(d, IDC_COLOR_RED_FIELD + 1);
        d.Type(L"200");
        d.Key(VK_UP);  // up to the red field
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_FIELD);
        CHECK_EQ(SliderPos(d, 1), 78);
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"40C803");
        d.SetFocusTo(IDC_COLOR_RED_SLIDER);
        d.Key(VK_NEXT);
        for (int i = 0; i < 5; ++i) d.Key(VK_RIGHT);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(SliderPos(d, 0), 50);
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD), L"127");
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"7FC803");
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), (int)IDC_COLOR_RED_SLIDER + 1);
        CHECK_EQ(SliderPos(d, 0), 50);
        d.Key(VK_END);  // green to 100: 255
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD + 1), L"255");
        CHECK_EQ(d.Text(IDC_COLOR_HTML_FIELD), L"7FFF03");
        SelectAllIn(d, IDC_COLOR_RED_FIELD + 2);
        d.Type(L"999");
        d.SoftKey(ui::Left);  // confirming with a refused number: the dialog stays, the field is undone
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(IDC_COLOR_RED_FIELD + 2), L"3");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunPicker(s, FALSE, ColorModeSliders, RGB(64, 0, 3)), (int)RGB(127, 255, 3));
    const uitest::BoxWant tooLarge = {ResText(IDS_COLOR_TOO_LARGE_TEXT), ResText(IDS_COLOR_TOO_LARGE_CAPTION), MB_OK};
    uitest::CheckBoxes({tooLarge, tooLarge}, ZV_HERE);
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
    // From a button, a key, to a button.
    static const int kMoves[][3] = {{7, VK_UP, 47},   {47, VK_DOWN, 7}, {7, VK_DOWN, 17}, {3, VK_UP, 43},
                                    {45, VK_DOWN, 5}, {5, VK_RIGHT, 6}, {6, VK_LEFT, 5}};
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK(GetFocus() == FindWindowExW(d.hwnd, nullptr, L"Button", nullptr));  // palette button 0, the first
        CHECK(!d.Visible(IDC_COLOR_RED_SLIDER));
        CHECK(StripShows(d, RGB(0x33, 0x66, 0x99)));
        uitest::ControlsFit(d.hwnd, {11, 12, 21, 49}, ZV_HERE);
        d.Command(IDM_COLOR_DEFAULT);  // the colours picked below replace it
    });
    for (const auto& m : kMoves) {
        s.Step([&m](ui::Dlg& d) {
            d.SetFocusTo(m[0]);
            d.Key(m[1]);
        });
        s.Step([&m](ui::Dlg& d) { CHECK_EQ(d.FocusId(), m[2]); });
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
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            bool offered = GetMenuState(d.SoftKeyMenu(ui::Right), IDM_COLOR_DEFAULT, MF_BYCOMMAND) != (UINT)-1;
            CHECK_EQ(offered, allow != 0);
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

// Cells 44 phone pixels wide, rows 32 apart, five cells to a row; the
// 32-pixel icon is offered only at 192 dpi. A missing folder gives an empty
// grid.
TEST_CASE(Ui_Icon_GridCellsAndSizeLimitFollowDensityAndAMissingFolder) {
    IconFolderFixture fixture;
    for (int i = 0; i < 8; ++i)
        WriteTga(std::wstring(kIconsRoot) + L"m" + std::to_wstring(i) + L".tga", 16, 16, 32,
                 RGB(30 * i, 120, 200 - 20 * i));
    for (int k : {1, 2}) {
        uitest::DensityScope density(96 * k);
        IconPicker::ReleaseIconCache();
        PlanarImage image;
        MakeSolid(image, 16 * k, kGrey);
        ui::Script s;
        s.Step([k](ui::Dlg& d) {
            CHECK_EQ(d.ListCount(kList), k == 1 ? 11 : 12);
            auto cell = [&d](int i) {
                RECT r = {LVIR_SELECTBOUNDS, 0, 0, 0};
                SendMessageW(d.Item(kList), LVM_GETITEMRECT, i, (LPARAM)&r);
                return r;
            };
            CHECK_EQ(cell(0).right - cell(0).left, (LONG)(44 * k));
            CHECK_EQ(cell(4).top, cell(0).top);
            CHECK_EQ(cell(5).top - cell(0).top, (LONG)(32 * k));
            TapIcon(d, 2);  // 96 dpi: c.tga; 192 dpi: big.tga
        });
        s.Step([k](ui::Dlg& d) {
            CHECK_EQ(d.ListFocused(kList), 2);
            CHECK(BandShows(d, k == 1 ? kBlue : kGrey));
            d.SoftKey(ui::Left);
        });
        CHECK(RunPicker(s, image, ZV_HERE));
        CHECK(k == 1 ? IsSolid(image, 12, 12, kBlue) : IsSolid(image, 32, 32, kGrey));
    }
    // A missing folder gives an empty grid, and Done keeps the caller's icon.
    IconPicker::ReleaseIconCache();
    g_appSettings.IconsFolder.value = L"\\zvtest-icons-missing\\";
    PlanarImage image;
    MakeSolid(image, 16, kBlue);
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 0);
        d.Key(VK_DOWN);
        d.SoftKey(ui::Left);
    });
    CHECK(RunPicker(s, image, ZV_HERE));
    CHECK(IsSolid(image, 16, 16, kBlue));
}

// What the caller's icon becomes. Each row: the icon the caller holds
// (size 0: none), the picks (a key or a tap on a cell, each with the
// colour the preview band must then show), how the dialog is left, and the
// outcome. Back and Cancel leave the caller's planes as they were, and a
// chosen icon is a copy of the cache's. The scan order (subfolders first,
// then the folder's own files by name) shows in the colours of the cells;
// the folder is read once, so an icon added after the first run never shows.
TEST_CASE(Ui_Icon_ConfirmOrCancelTheCallersIcon) {
    IconFolderFixture fixture;
    struct Pick {
        UINT key;  // 0: tap cell `row`
        int row;
        COLORREF band;
    };
    const struct {
        int size;
        COLORREF start;
        std::vector<Pick> picks;
        UINT leave;  // VK_F1 Done, VK_F2 Cancel, VK_ESCAPE Back, VK_RETURN
        bool confirmed;
        int resultSize;
        COLORREF result;
    } cases[] = {
        {16, kGrey, {{VK_HOME, 0, kGreen}, {VK_RIGHT, 0, kRed}}, VK_F1, true, 16, kRed},
        {16, kGrey, {{0, 2, kBlue}}, VK_RETURN, true, 12, kBlue},
        {16, kGrey, {{0, 1, kRed}}, VK_ESCAPE, false, 16, kGrey},
        {16, kGrey, {{0, 0, kGreen}}, VK_F2, false, 16, kGrey},
        {16, kBlue, {}, VK_F1, true, 16, kBlue},  // confirmed without a choice: the icon stays
        {0, kBlue, {}, VK_F1, true, 0, kBlue},    // no icon stays no icon
    };
    for (const auto& c : cases) {
        PlanarImage image;
        if (c.size) MakeSolid(image, c.size, c.start);
        unsigned char* planes = image.red;
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(d.ListCount(kList), 3);
            CHECK_EQ(d.ListFocused(kList), -1);
            uitest::ControlsFit(d.hwnd, {kList}, ZV_HERE);  // the preview band below: every BandShows check
            if (c.size) CHECK(BandShows(d, c.start));  // the caller's icon at the start
        });
        for (const Pick& p : c.picks) {
            s.Step([&](ui::Dlg& d) {
                if (p.key) d.Key(p.key);
                else TapIcon(d, p.row);
            });
            s.Step([&](ui::Dlg& d) { CHECK(BandShows(d, p.band)); });
        }
        s.Step([&](ui::Dlg& d) { d.Key(c.leave); });
        CHECK_EQ(RunPicker(s, image, ZV_HERE), c.confirmed);
        CHECK(c.resultSize ? IsSolid(image, c.resultSize, c.resultSize, c.result) : image.IsEmpty());
        if (!c.confirmed) CHECK(image.red == planes);
        for (size_t i = 0; i < IconPicker::CachedIconCount(); ++i)  // the cache keeps its own copy
            CHECK(IconPicker::CachedIcon(i).red != image.red);
        WriteTga(std::wstring(kIconsRoot) + L"new.tga", 16, 16, 32, kGrey);
    }
}
