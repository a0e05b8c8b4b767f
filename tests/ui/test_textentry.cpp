// The text entry dialog driven through its soft keys and the Back key.
#include <windows.h>

#include <string>

#include "LangIds.h"
#include "app/ScreenScale.h"
#include "base/AppGlobals.h"
#include "listwindow/TextEntry.h"
#include "settings/AppSettings.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"

namespace {

TextEntryRequest Request(const wchar_t* text, const wchar_t* prompt = L"Please insert template name: ") {
    TextEntryRequest req = {};
    req.module = hInstance;
    lstrcpynW(req.text, text, kTextEntryMaxChars + 1);
    req.prompt = prompt;
    return req;
}

INT_PTR Run(ui::Script& s, TextEntryRequest& req, const char* file, int line) {
    return ui::RunModal(s, [&] { return (INT_PTR)RunTextEntryDialog(nullptr, req); }, file, line);
}
#define RUN(s, req) Run(s, req, __FILE__, __LINE__)

}  // namespace

TEST_CASE(Ui_TextEntry_OkReturnsTheTypedText) {
    TextEntryRequest req = Request(L"Pack");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L"Pack"));
        CHECK_EQ(d.FocusId(), kTextEntryEditId);
        CHECK_EQ(d.SoftKeyCommand(ui::Left), IDC_OK);
        CHECK_EQ(d.SoftKeyCommand(ui::Right), IDC_CANCEL);
        d.Type(L"ing list");  // the caret starts after the text
    });
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.text, L"Packing list");
}

TEST_CASE(Ui_TextEntry_EnterConfirmsLikeOk) {
    TextEntryRequest req = Request(L"");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        d.Type(L"Goals");
        d.Enter();
    });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.text, L"Goals");
}

TEST_CASE(Ui_TextEntry_OkWithEmptyBoxGivesEmptyText) {
    TextEntryRequest req = Request(L"x");
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.Back(); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L""));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(req.text, L"");
}

TEST_CASE(Ui_TextEntry_TextIsCutAt255) {
    TextEntryRequest req = Request(L"");
    std::wstring longText;
    for (int i = 0; i < 300; ++i) longText += (wchar_t)(L'a' + i % 26);
    ui::Script s;
    s.Step([&](ui::Dlg& d) { SetWindowTextW(d.Item(kTextEntryEditId), longText.c_str()); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ((int)GetWindowTextLengthW(d.Item(kTextEntryEditId)), 300);  // the box itself holds more
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RUN(s, req), 1);
    CHECK_EQ(std::wstring(req.text), longText.substr(0, 255));
    CHECK_EQ(req.text[255], L'\0');
}

TEST_CASE(Ui_TextEntry_BackErasesAndNeverCloses) {
    TextEntryRequest req = Request(L"abc");
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.Back(); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L"ab"));
        d.Back();
        d.Back();
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L""));
        d.Back();  // an empty box: still nothing closes
        d.Back();
    });
    s.Step([](ui::Dlg& d) {
        CHECK(IsWindowVisible(d.hwnd));
        CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L""));
        d.Type(L"xy");
        d.SoftKey(ui::Right);
    });
    CHECK_EQ(RUN(s, req), 0);
    CHECK_EQ(req.text, L"abc");  // Cancel leaves the caller's text as it was
    CHECK_EQ(ui::MessageBoxes().size(), 0u);
}

TEST_CASE(Ui_TextEntry_CancelLeavesTheRequestUntouched) {
    TextEntryRequest req = Request(L"Shopping");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        SetWindowTextW(d.Item(kTextEntryEditId), L"something else");
        d.SoftKey(ui::Right);
    });
    CHECK_EQ(RUN(s, req), 0);
    CHECK_EQ(req.text, L"Shopping");
}

namespace {
class Density {
public:
    explicit Density(int dpi) : m_x(ScreenDpiX()), m_y(ScreenDpiY()) { SetScreenDensity(dpi, dpi); }
    ~Density() { SetScreenDensity(m_x, m_y); }

private:
    int m_x, m_y;
};

void PauseForScreenshot() {
    wchar_t ms[16];
    if (!GetEnvironmentVariableW(L"ZV_SHOT_PAUSE", ms, 16)) return;
    DWORD until = GetTickCount() + _wtoi(ms);
    while (GetTickCount() < until) {
        ui::Pump();
        Sleep(20);
    }
}
}  // namespace

TEST_CASE(Ui_TextEntry_EditSitsUnderThePromptAt96And192Dpi) {
    for (int dpi : {96, 192}) {
        Density density(dpi);
        TextEntryRequest req = Request(L"Weekend trip");
        ui::Script s;
        s.Timeout(60000);
        s.Step([](ui::Dlg& d) {
            RECT client = d.ClientRect();
            CHECK_EQ(client.right, ScaleX(240));
            RECT r;
            GetWindowRect(d.Item(kTextEntryEditId), &r);
            MapWindowPoints(nullptr, d.hwnd, (POINT*)&r, 2);
            CHECK_EQ(r.left, ScaleX(5));
            CHECK_EQ(r.top, ScaleY(30));
            CHECK_EQ(r.right - r.left, client.right - ScaleX(10));
            CHECK_EQ(r.bottom - r.top, ScaleY(20));
            // The list font grows with the density.
            HFONT font = (HFONT)SendMessageW(d.Item(kTextEntryEditId), WM_GETFONT, 0, 0);
            LOGFONTW lf = {};
            GetObjectW(font, sizeof lf, &lf);
            int points = g_appSettings.FontSize.value > 0 ? (int)g_appSettings.FontSize.value : 12;
            CHECK_EQ(lf.lfHeight, (LONG)ScaleY(points));
        });
        s.Step([](ui::Dlg&) { PauseForScreenshot(); });
        s.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
        RUN(s, req);
    }
}

TEST_CASE(Ui_TextEntry_PromptAndBoxUseTheListFontSettings) {
    CeString face = g_appSettings.FontFace.value;
    DWORD size = g_appSettings.FontSize.value;
    g_appSettings.FontFace.value = L"Tahoma";
    g_appSettings.FontSize.value = 16;
    TextEntryRequest req = Request(L"");
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        HFONT font = (HFONT)SendMessageW(d.Item(kTextEntryEditId), WM_GETFONT, 0, 0);
        LOGFONTW lf = {};
        GetObjectW(font, sizeof lf, &lf);
        CHECK_EQ(lf.lfHeight, (LONG)ScaleY(16));
        CHECK_EQ((const wchar_t*)lf.lfFaceName, L"Tahoma");
        d.SoftKey(ui::Right);
    });
    RUN(s, req);
    g_appSettings.FontFace.value = face;
    g_appSettings.FontSize.value = size;
}
