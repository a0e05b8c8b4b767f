// Helpers shared by the dialog tests: a screen density held for one test,
// device paths on drive C:, scratch files and folders, and where a control
// sits in its dialog.
#pragma once
#include "base/AppGlobals.h"
#include "platform/ScreenScale.h"
#include "tests/app/RegistryTestUtil.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"

namespace uitest {

// The folder the test program runs from, with its trailing "\".
inline std::wstring BinFolder() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::wstring(path, wcsrchr(path, L'\\') + 1);
}

// Start-up replaces the process-wide modules and the main window frees them
// and posts the quit message: the test keeps its own and drops the quit.
struct ModulesScope {
    HINSTANCE lang = hLangModule, image = hImageModule;
    ~ModulesScope() {
        hLangModule = lang;
        hImageModule = image;
        MSG msg;
        while (PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) continue;
    }
};

// A fresh installation as the installer leaves it: the modules in `install`,
// an empty Templates folder, the lists folder, and the four registry values
// (the program's key emptied first).
inline void Install(const std::wstring& install, const std::wstring& lists, const wchar_t* languageModule) {
    CreateDirectoryW(install.c_str(), nullptr);
    CreateDirectoryW((install + L"\\Templates").c_str(), nullptr);
    CreateDirectoryW(lists.c_str(), nullptr);
    for (const wchar_t* name : {L"LangEng.dll", L"ZVLowDpiRes.dll", L"ZVHighDpiRes.dll"})
        CopyFileW((BinFolder() + name).c_str(), (install + L"\\" + name).c_str(), FALSE);
    RegDeleteTreeW(HKEY_CURRENT_USER, kProgramKey);
    regtest::SetString(kProgramKey, L"InstallPath", install.c_str());
    regtest::SetString(kProgramKey, L"ListsPath", lists.c_str());
    regtest::SetString(kProgramKey, L"TemplatePath", (install + L"\\Templates").c_str());
    regtest::SetString(kProgramKey, L"SelectedLangResFile", (install + L"\\" + languageModule).c_str());
}

// A screen density for the life of a test; the old one comes back after.
struct DensityScope {
    int oldX = ScreenDpiX(), oldY = ScreenDpiY();
    explicit DensityScope(int dpi) { SetScreenDensity(dpi, dpi); }
    ~DensityScope() { SetScreenDensity(oldX, oldY); }
};

// Device paths are rooted on the current drive; the tests make theirs on C:.
struct OnDriveC {
    wchar_t saved[MAX_PATH] = {};
    OnDriveC() {
        GetCurrentDirectoryW(MAX_PATH, saved);
        SetCurrentDirectoryW(L"C:\\");
    }
    ~OnDriveC() { SetCurrentDirectoryW(saved); }
};

using doctest::RemoveTree;
using doctest::WriteBytes;

// A control's rectangle in its parent's client coordinates.
inline RECT RectInParent(HWND control) {
    RECT r = {};
    GetWindowRect(control, &r);
    MapWindowPoints(nullptr, GetParent(control), (POINT*)&r, 2);
    return r;
}

// Layout at one density: the client area is the phone screen's width, and
// each control (by id) lies inside it with a size and overlaps none before it.
inline void ControlsFit(HWND dlg, const std::vector<int>& ids, const char* file, int line) {
    RECT client = {};
    GetClientRect(dlg, &client);
    LONG scroll = (GetWindowLongW(dlg, GWL_STYLE) & WS_VSCROLL) ? GetSystemMetrics(SM_CXVSCROLL) : 0;
    CHECK_EQ_AT(client.right + scroll, (LONG)ScaleX(240), file, line);
    std::vector<RECT> rects;
    for (int id : ids) {
        RECT r = RectInParent(GetDlgItem(dlg, id)), both;  // empty for a missing control
        bool inside = IntersectRect(&both, &r, &client) && EqualRect(&both, &r);
        if (!inside) zvtest::Fail(file, line, "control " + std::to_string(id) + " not inside the client area");
        for (const RECT& other : rects)
            if (IntersectRect(&both, &r, &other))
                zvtest::Fail(file, line, "control " + std::to_string(id) + " overlaps an earlier one");
        rects.push_back(r);
    }
}

// The boxes of the last run, in order: each text starts with its own (a cause
// may follow), and the caption and style (buttons | icon) match.
struct BoxWant {
    std::wstring text, caption;
    UINT style;
};
inline void CheckBoxes(const std::vector<BoxWant>& want, const char* file, int line) {
    const std::vector<ui::MessageBoxRecord>& got = ui::MessageBoxes();
    CHECK_EQ_AT(got.size(), want.size(), file, line);
    for (size_t i = 0; i < got.size() && i < want.size(); ++i) {
        CHECK_EQ_AT(got[i].text.substr(0, want[i].text.size()), want[i].text, file, line);
        CHECK_EQ_AT(got[i].caption, want[i].caption, file, line);
        CHECK_EQ_AT(got[i].buttons | got[i].icon, want[i].style, file, line);
    }
}

// The font a control draws with.
inline LOGFONTW FontOf(HWND control) {
    LOGFONTW lf = {};
    GetObjectW((HFONT)SendMessageW(control, WM_GETFONT, 0, 0), sizeof lf, &lf);
    return lf;
}

}  // namespace uitest
