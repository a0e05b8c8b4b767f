// The text entry dialog driven through its soft keys and the Back key.
#include <windows.h>

#include <functional>
#include <string>

#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "dialogs/TextEntry.h"
#include "settings/AppSettings.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace {

TextEntryRequest Request(const wchar_t* text) {
    TextEntryRequest req = {};
    req.module = hInstance;
    lstrcpynW(req.text, text, kTextEntryMaxChars + 1);
    req.prompt = L"Please insert template name: ";
    return req;
}

INT_PTR Run(ui::Script& s, TextEntryRequest& req, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    return ui::RunModal(s, [&] { return (INT_PTR)RunTextEntryDialog(nullptr, req); }, file, line);
}

}  // namespace

// OK, Enter and an emptied box all confirm; the text is cut at 255. Back
// erases one character and never closes, not even in an empty box; Cancel
// leaves the caller's text as it was. At 192 dpi the box fits the screen and
// uses the list font, scaled.
TEST_CASE(Ui_TextEntry_ConfirmCancelAndBackAt192Dpi) {
    CeString face = g_appSettings.FontFace.value;
    DWORD size = g_appSettings.FontSize.value;
    g_appSettings.FontFace.value = L"Tahoma";
    g_appSettings.FontSize.value = 16;
    uitest::DensityScope density(192);
    std::wstring longText;
    for (int i = 0; i < 300; ++i) longText += (wchar_t)(L'a' + i % 26);
    struct Row {
        const wchar_t* start;
        std::function<void(ui::Dlg&)> act;
        INT_PTR result;
        std::wstring want;
    } rows[] = {
        {L"Pack", [](ui::Dlg& d) { d.Type(L"ing list"); d.SoftKey(ui::Left); }, 1, L"Packing list"},  // caret at the end
        {L"", [](ui::Dlg& d) { d.Type(L"Goals"); d.Enter(); }, 1, L"Goals"},
        {L"abc", [](ui::Dlg& d) { d.Back(); d.SoftKey(ui::Left); }, 1, L"ab"},
        {L"x", [](ui::Dlg& d) { d.Back(); d.Back(); d.Back(); d.SoftKey(ui::Left); }, 1, L""},
        {L"abc", [](ui::Dlg& d) { d.Type(L"xy"); d.SoftKey(ui::Right); }, 0, L"abc"},
        {L"", [&](ui::Dlg& d) {
             SetWindowTextW(d.Item(kTextEntryEditId), longText.c_str());
             CHECK_EQ((int)GetWindowTextLengthW(d.Item(kTextEntryEditId)), 300);  // the box itself holds more
             d.SoftKey(ui::Left);
         }, 1, longText.substr(0, 255)},
    };
    for (Row& row : rows) {
        TextEntryRequest req = Request(row.start);
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(row.start));
            CHECK_EQ(d.FocusId(), kTextEntryEditId);
            uitest::ControlsFit(d.hwnd, {kTextEntryEditId}, ZV_HERE);
            LOGFONTW lf = uitest::FontOf(d.Item(kTextEntryEditId));
            CHECK_EQ(lf.lfHeight, (LONG)ScaleY(16));
            CHECK_EQ((const wchar_t*)lf.lfFaceName, L"Tahoma");
            row.act(d);
        });
        CHECK_EQ(Run(s, req), row.result);
        CHECK_EQ(std::wstring(req.text), row.want);
        CHECK_EQ(ui::MessageBoxes().size(), 0u);
    }
    g_appSettings.FontFace.value = face;
    g_appSettings.FontSize.value = size;
}
