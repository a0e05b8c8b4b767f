// The program's start: an installation made by the test, the main window and
// its soft keys, the single-instance rule and a broken installation.
#include <windows.h>

#include <string>

#include "app/Startup.h"
#include "document/ListFile.h"
#include "base/AppGlobals.h"
#include "LangIds.h"
#include "platform/Platform.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"

namespace {
const wchar_t kInstall[] = L"\\zvtest-install";
const wchar_t kLists[] = L"\\zvtest-lists";
const wchar_t kKey[] = L"Software\\Quenta\\Zorvel";

std::wstring BinFolder() {
    wchar_t path[MAX_PATH];
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    while (n > 0 && path[n - 1] != L'\\') --n;
    return std::wstring(path, n);
}

void SetValue(const wchar_t* name, const std::wstring& text) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name, REG_SZ, text.c_str(), DWORD((text.size() + 1) * sizeof(wchar_t)));
}

bool Exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

// A fresh installation as the installer leaves it, with one sample list.
void Install(const wchar_t* languageModule) {
    std::wstring install = kInstall, lists = kLists;
    CreateDirectoryW(install.c_str(), nullptr);
    CreateDirectoryW((install + L"\\Templates").c_str(), nullptr);
    CreateDirectoryW(lists.c_str(), nullptr);
    CreateDirectoryW((lists + L"\\Personal").c_str(), nullptr);
    for (const wchar_t* name : {L"LangEng.dll", L"ZVLowDpiRes.dll", L"ZVHighDpiRes.dll"})
        CopyFileW((BinFolder() + name).c_str(), (install + L"\\" + name).c_str(), FALSE);
    HANDLE f = CreateFileW((lists + L"\\Personal\\Grocery - weekly.zvl_qvga").c_str(), GENERIC_WRITE, 0, nullptr,
                           CREATE_ALWAYS, 0, nullptr);
    CloseHandle(f);
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    SetValue(L"InstallPath", install);
    SetValue(L"ListsPath", lists);
    SetValue(L"TemplatePath", install + L"\\Templates");
    SetValue(L"SelectedLangResFile", install + L"\\" + languageModule);
}

// Start-up replaces the process-wide modules and the main window frees them
// and posts the quit message: the test keeps its own and drops the quit.
struct ModulesScope {
    HINSTANCE lang = hLangModule, image = hImageModule;
    ~ModulesScope() {
        hLangModule = lang;
        hImageModule = image;
        MSG msg;
        while (PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
        }
    }
};

HWND MainWindow() { return FindWindowW(L"ZorvelConsole", L"Zorvel"); }
}  // namespace

TEST_CASE(Ui_Main_StartShowsSoftKeysAndMenu) {
    ModulesScope keep;
    Install(L"LangEng.dll");
    CHECK(InitInstance(hInstance, SW_SHOW, const_cast<LPWSTR>(L"")));
    HWND main = MainWindow();
    CHECK(main != nullptr);
    if (!main) return;

    // Both image modules stay for a later start at the other density; the
    // sample copy that fits is in place.
    CHECK(Exists(std::wstring(kInstall) + L"\\ZVLowDpiRes.dll"));
    CHECK(Exists(std::wstring(kInstall) + L"\\ZVHighDpiRes.dll"));
    CHECK(Exists(std::wstring(kLists) + L"\\Personal\\Grocery - weekly.zvl"));
    CHECK(!Exists(std::wstring(kLists) + L"\\Personal\\Grocery - weekly.zvl_qvga"));

    // A second start finds the first and ends at once.
    CHECK(!InitInstance(hInstance, SW_SHOW, const_cast<LPWSTR>(L"")));

    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK(d.MenuBar() != nullptr);
        CHECK(!d.SoftKeyText(ui::Left).empty());
        CHECK(!d.SoftKeyText(ui::Right).empty());
        CHECK(d.SoftKeyMenu(ui::Right) != nullptr);
        RECT rc = d.ClientRect();
        CHECK_EQ(rc.right, 240);
        d.SoftKey(ui::Right);
    });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([](ui::Dlg& d) {
        std::vector<std::wstring> items = ui::Dlg::MenuTexts(d.SoftKeyMenu(ui::Right));
        CHECK(items.size() >= 3);
        if (!items.empty()) CHECK(items[0].compare(0, 3, L"&1 ") == 0);
        // Only the commands that need no category tree are offered.
        HMENU menu = d.SoftKeyMenu(ui::Right);
        CHECK(!(GetMenuState(menu, IDM_EXIT, MF_BYCOMMAND) & MF_GRAYED));
        CHECK(!(GetMenuState(menu, IDM_ABOUT, MF_BYCOMMAND) & MF_GRAYED));
        CHECK(GetMenuState(menu, IDM_NEW_LIST, MF_BYCOMMAND) & MF_GRAYED);
        d.Back();
    });
    s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen(); });
    s.Step([](ui::Dlg& d) { d.Command(IDM_ABOUT); });
    s.Step([](ui::Dlg& d) { d.Command(IDM_EXIT); });
    CHECK(!ui::RunWindow(s, main));
    CHECK_EQ(ui::MessageBoxes().size(), 1u);  // the about box
    if (!ui::MessageBoxes().empty()) CHECK(ui::MessageBoxes()[0].text.find(L"1.7") != std::wstring::npos);
    CHECK(MainWindow() == nullptr);
}

TEST_CASE(Ui_Main_MissingLanguageModule) {
    ModulesScope keep;
    Install(L"LangMissing.dll");
    ui::Script s;
    INT_PTR started = ui::RunModal(s, [] { return (INT_PTR)InitInstance(hInstance, SW_SHOW, const_cast<LPWSTR>(L"")); });
    CHECK_EQ(started, (INT_PTR)FALSE);
    CHECK(MainWindow() == nullptr);
    CHECK_EQ(ui::MessageBoxes().size(), 1u);
    if (!ui::MessageBoxes().empty()) {
        CHECK_EQ(ui::MessageBoxes()[0].text, std::wstring(L"Error loading system files Please re-install Zorvel"));
        CHECK_EQ(ui::MessageBoxes()[0].caption, std::wstring(L"Error"));
        CHECK_EQ(ui::MessageBoxes()[0].icon, (UINT)MB_ICONEXCLAMATION);
    }
}

namespace {
int CheckedItems(const std::wstring& path) {
    ListDocument doc;
    ReadListOptions quiet;
    quiet.makeBackup = false;
    quiet.showMessages = false;
    if (readListFile(path.c_str(), doc, quiet) != FileStatus::Ok) return -1;
    int n = 0;
    for (const ListItem& item : doc.items) n += item.values[0].choice != 0;
    return n;
}
}  // namespace

// A list named on the command line, the way a double-click hands it over:
// the list window opens at once, the keyboard alone edits and saves it, and
// the program ends with the window.
TEST_CASE(Ui_Main_CommandLineListEditedAndSaved) {
    ModulesScope keep;
    Install(L"LangEng.dll");
    std::wstring list = std::wstring(kLists) + L"\\Personal\\Grocery - weekly.zvl";
    CHECK(CopyFileW((BinFolder() + L"samples\\qvga\\lists\\Personal\\Grocery - weekly.zvl").c_str(), list.c_str(), FALSE));
    int checkedBefore = CheckedItems(list);
    CHECK(checkedBefore > 0);

    std::wstring commandLine = L"\"" + list + L"\"";
    UnquoteDesktopCommandLine(&commandLine[0]);
    ui::Script s;
    s.WaitUntil([](ui::Dlg& d) { return d.MenuBar() != nullptr && d.hwnd != MainWindow(); });
    s.Step([](ui::Dlg& d) { d.Key(VK_DOWN); });
    s.Step([](ui::Dlg& d) { d.Key(VK_RETURN); });  // toggles the check of the focused row
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });  // Save
    INT_PTR started = ui::RunModal(s, [&] { return (INT_PTR)InitInstance(hInstance, SW_SHOW, &commandLine[0]); });
    CHECK_EQ(started, (INT_PTR)FALSE);  // the main window ended with the list window
    CHECK(MainWindow() == nullptr);
    CHECK(ui::MessageBoxes().empty());
    int checkedAfter = CheckedItems(list);
    CHECK(checkedAfter == checkedBefore + 1 || checkedAfter == checkedBefore - 1);
    CHECK(Exists(std::wstring(kLists) + L"\\Personal\\Grocery - weekly.BAK"));
}
