// The settings dialog and its pages driven as a user drives them: the page
// list's keys, values kept or thrown away by Done and Back, the swatches,
// the rows' layout, and the about screen.
#include <windows.h>

#include <functional>
#include <string>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "mainview/AboutScreen.h"
#include "settings/AppSettings.h"
#include "settings/ColorPicker.h"
#include "settings/SettingsDialog.h"
#include "settings/SettingsWindow.h"
#include "tests/app/RegistryTestUtil.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"
#include "tests/ui/test_templates_support.h"

namespace {

const wchar_t kGeneralKey[] = L"Software\\Quenta\\Zorvel\\General";
const wchar_t kColorsKey[] = L"Software\\Quenta\\Zorvel\\Colors";
const DWORD kMissing = 0xDEADBEEF;

// Every case starts with no stored settings, and leaves memory as stored and
// no folders of its own in the registry.
struct SettingsScope {
    SettingsScope() { RegDeleteTreeW(HKEY_CURRENT_USER, kGeneralKey); }
    ~SettingsScope() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kGeneralKey);
        for (const wchar_t* name : {L"TemplatePath", L"ListsPath"})
            RegDeleteKeyValueW(HKEY_CURRENT_USER, kProgramKey, name);
        g_appSettings.LoadSettings();
    }
};

enum End { Done, CancelYes, CancelNoThenDone };

// Runs the dialog under `s`, which ends back on the page list: with Done, or
// with Back answered Yes, or answered No and then Done.
INT_PTR RunSettings(ui::Script& s, End end = Done, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    s.WaitFor(L"#32770", L"Settings");
    if (end != Done) s.Answer(end == CancelYes ? IDYES : IDNO).Step([](ui::Dlg& d) { d.Back(); });
    if (end != CancelYes) s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    return ui::RunModal(s, [] { return (INT_PTR)RunSettingsDialog(hInstance, hLangModule, hImageModule); }, file, line);
}

// Pixels inside a swatch, clear of its frame: the corner's colour and
// whether anything black (the "Default" text) is drawn on it.
std::pair<COLORREF, bool> Swatch(HWND swatch) {
    RECT r;
    GetClientRect(swatch, &r);
    HDC dc = GetDC(swatch);
    bool black = false;
    for (int y = ScaleY(3); y < r.bottom - ScaleY(3) && !black; ++y)
        for (int x = ScaleX(3); x < r.right - ScaleX(3) && !black; ++x) black = GetPixel(dc, x, y) == RGB(0, 0, 0);
    const COLORREF corner = GetPixel(dc, ScaleX(3), ScaleY(3));
    ReleaseDC(swatch, dc);
    return {corner, black};
}

}  // namespace

// Digits, their QWERTY letters, Enter on the mark and a tap each open
// their row's page; "3" runs the templates manager, not a settings page. At
// 192 dpi the rows of the pages fit the screen.
TEST_CASE(Ui_Settings_PageListOpensPages) {
    SettingsScope scope;
    uitest::DensityScope density(192);
    struct Row {
        std::function<void(ui::Dlg&)> act;
        const wchar_t *page, *titleWhileOpen;
    } rows[] = {
        {[](ui::Dlg& d) { d.Key('W'); }, L"General", L"Settings"},
        {[](ui::Dlg& d) { d.Key('1'); }, L"General", L"Settings"},
        {[](ui::Dlg& d) { d.Key('E'); }, L"Colors", L"Settings"},
        {[](ui::Dlg& d) { d.Key('2'); }, L"Colors", L"Settings"},
        {[](ui::Dlg& d) { d.Enter(); }, L"General", L"1  General"},
        {[](ui::Dlg& d) { d.Key(VK_DOWN); d.Enter(); }, L"Colors", L"2  Colors"},
        {[](ui::Dlg& d) { d.TapCell(kSettingsPageList, 1, 0); }, L"Colors", L"Settings"},
        {[](ui::Dlg& d) { d.Key('3'); }, L"Templates", L"Settings"},
        {[](ui::Dlg& d) { d.Key('R'); }, L"Templates", L"Settings"},
    };
    for (Row& row : rows) {
        ui::Script s;
        s.Step([&](ui::Dlg& d) { row.act(d); });  // keys go to the focused page list
        s.WaitFor(L"#32770", row.page);
        s.Step([&](ui::Dlg& d) {
            const ui::Dlg settings = {GetWindow(d.hwnd, GW_OWNER)};
            CHECK_EQ(settings.Text(), std::wstring(row.titleWhileOpen));
            if (row.page == std::wstring(L"Colors"))
                uitest::ControlsFit(d.hwnd, {kSwatchListViewText + 1, 6 + 1}, ZV_HERE);
            else if (row.page == std::wstring(L"General"))
                uitest::ControlsFit(d.hwnd, {kGeneralTemplatesEdit + 1, kGeneralTemplatesBrowse + 1}, ZV_HERE);
            d.Back();
        });
        CHECK_EQ(RunSettings(s), 1);
    }
}

// The font size reaches the registry only through Done of the dialog,
// whichever way the page was left; the default is deleted, not stored.
TEST_CASE(Ui_Settings_FontSizeStoredOnlyWhenConfirmed) {
    struct Row {
        DWORD stored;
        const wchar_t* keys;  // on the size spinner, then the page left with Back (~) or Done (!)
        End end;
        DWORD want;  // in the registry afterwards
        INT_PTR result;
    } rows[] = {
        {kMissing, L">>|~", Done, 14, 1},
        {kMissing, L">>|!", Done, 14, 1},
        {kMissing, L">>|!", CancelYes, kMissing, 0},
        {10, L">>>|~", CancelYes, 10, 0},
        {kMissing, L">|~", CancelNoThenDone, 13, 1},
        {14, L"<<|~", Done, kMissing, 1},   // back to 12
        {kMissing, L">>>>>|~", Done, 8, 1},  // 16 wraps round to 8
    };
    for (const Row& row : rows) {
        SettingsScope scope;
        if (row.stored != kMissing) regtest::SetDword(kGeneralKey, L"FontSize", row.stored);
        ui::Script s;
        s.Step([](ui::Dlg& d) { d.Key('1'); });
        s.WaitFor(L"#32770", L"General");
        const std::wstring size = std::to_wstring(row.stored == kMissing ? 12 : row.stored);
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(tmpltest::ListText(d, kGeneralSizeList + 1, tmpltest::ListSel(d, kGeneralSizeList + 1)), size);
        });
        tmpltest::Keys(s, row.keys);
        CHECK_EQ(RunSettings(s, row.end), row.result);
        CHECK_EQ(regtest::GetDword(kGeneralKey, L"FontSize", kMissing), row.want);
        // What was thrown away is not left in memory either.
        CHECK_EQ(g_appSettings.FontSize.value, row.want == kMissing ? 12 : row.want);
    }
}

// The about screen, from the settings menu, shows the folders as the
// registry has them, or "Not set"; Back returns to the settings. On the
// Folders tab Clear empties the box and Done of the dialog stores the empty
// folder; Browse opens the folder chooser, and cancelling it keeps the text.
TEST_CASE(Ui_Settings_AboutScreenAndFolderRows) {
    SettingsScope scope;
    regtest::SetString(kGeneralKey, L"IconsFolder", L"\\Icons\\");
    regtest::SetString(kProgramKey, L"ListsPath", L"\\My Documents\\Zorvel Lists\\");
    for (const wchar_t* templates : {(const wchar_t*)nullptr, L"\\Program Files\\Quenta\\Zorvel\\Templates\\"}) {
        if (templates) regtest::SetString(kProgramKey, L"TemplatePath", templates);
        ui::Script s;
        s.Step([](ui::Dlg& d) { d.Command(IDM_SETTINGS_ABOUT); });
        s.WaitFor(L"#32770", L"About");
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(d.Text(kAboutListsFolder), L"\\My Documents\\Zorvel Lists\\");
            CHECK_EQ(d.Text(kAboutTemplatesFolder), std::wstring(templates ? templates : L"Not set"));
            d.Back();
        });
        if (templates) {
            s.WaitFor(L"#32770", L"Settings");
            s.Step([](ui::Dlg& d) { d.Key('W'); });
            s.WaitFor(L"#32770", L"General");
            s.Step([](ui::Dlg& d) {
                CHECK(!d.Visible(kGeneralIconsEdit + 1));
                d.Command(IDM_PAGE_TAB_BASE + 1);
            });
            s.Step([&](ui::Dlg& d) {
                CHECK(d.Visible(kGeneralIconsEdit + 1));
                CHECK(!d.Visible(kGeneralSizeList + 1));
                CHECK_EQ(d.Text(kGeneralIconsEdit + 1), L"\\Icons\\");
                CHECK_EQ(d.Text(kGeneralTemplatesEdit + 1), std::wstring(templates));
                d.TapCenter(kGeneralIconsClear + 1);
                d.TapCenter(kGeneralTemplatesBrowse + 1);
            });
            s.WaitFor(L"#32770", L"Select Folder");
            s.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });  // Cancel
            s.WaitFor(L"#32770", L"General");
            s.Step([&](ui::Dlg& d) {
                CHECK_EQ(d.Text(kGeneralIconsEdit + 1), L"");
                CHECK_EQ(d.Text(kGeneralTemplatesEdit + 1), std::wstring(templates));
                d.SoftKey(ui::Left);
            });
        }
        CHECK_EQ(RunSettings(s), 1);
        CHECK_EQ(regtest::GetString(kGeneralKey, L"IconsFolder"), templates ? L"" : L"\\Icons\\");
    }
    CHECK_EQ(regtest::GetString(kProgramKey, L"TemplatePath"), L"\\Program Files\\Quenta\\Zorvel\\Templates\\");
}

// A swatch never chosen shows "Default" on white; a picked colour shows at
// once and is stored under General by Done, or thrown away by a confirmed
// Back; a cancelled picker changes nothing. The first swatch has IDCANCEL's
// identifier and must not close the page.
TEST_CASE(Ui_Settings_ColorSwatches) {
    const COLORREF picked = PaletteColor(1);  // 0 is white, as an unset swatch
    struct Row {
        int swatch;
        const wchar_t* setting;
        bool tap, pick;  // else the action key on the focused swatch; else the picker is cancelled
        End end;
        DWORD want;
    } rows[] = {
        {kSwatchMainViewCategory, L"MainViewCategory", true, true, Done, picked},
        {kSwatchListViewText, L"ListViewText", false, true, Done, picked},
        {kSwatchMainViewList, L"MainViewList", false, true, CancelYes, kMissing},
        {kSwatchListViewBack, L"ListViewBack", true, false, Done, kMissing},
    };
    for (const Row& row : rows) {
        SettingsScope scope;
        const int id = row.swatch + 1;
        ui::Script s;
        s.Step([](ui::Dlg& d) { d.Key('2'); });
        s.WaitFor(L"#32770", L"Colors");
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(d.FocusId(), kSwatchMainViewCategory + 1);
            CHECK_EQ(ui::Dlg::MenuTexts(d.SoftKeyMenu(ui::Right)).size(), 1u);  // Done only: no tab entry
            CHECK(Swatch(d.Item(id)) == std::make_pair(RGB(255, 255, 255), true));
            if (row.tap) {
                d.TapCenter(id);
            } else {
                d.SetFocusTo(id);
                d.Enter();
            }
        });
        s.WaitFor(L"#32770", L"Choose Color");
        tmpltest::Keys(s, row.pick ? L">|#|!" : L"~");  // Enter takes the focused palette colour; Back cancels
        s.WaitFor(L"#32770", L"Colors");
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(Swatch(d.Item(id)).first, row.pick ? picked : RGB(255, 255, 255));
            d.Back();
        });
        RunSettings(s, row.end);
        CHECK_EQ(regtest::GetDword(kGeneralKey, row.setting, kMissing), row.want);
        CHECK(!regtest::HasValue(kColorsKey, row.setting));
    }
}
