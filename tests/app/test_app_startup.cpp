// Start-up rules: screen scaling, the kind of a command-line file, the date
// style of a language module and the placement of the sample files.
#include <windows.h>

#include <string>

#include "platform/ScreenScale.h"
#include "app/Startup.h"
#include "base/AppGlobals.h"
#include "tests/framework/ZvTest.h"

namespace {
struct DensityScope {
    int x = ScreenDpiX(), y = ScreenDpiY();
    ~DensityScope() {
        InitScreenScale(0);
        SetScreenDensity(x, y);
    }
};

TextBuffer* Buffer(const wchar_t* text) {
    static ScopedTextBuffer b;
    b.Assign(text);
    return &b;
}

std::wstring TempFolder() {
    wchar_t path[MAX_PATH];
    GetTempPathW(MAX_PATH, path);
    std::wstring folder = std::wstring(path) + L"zv-samples\\";
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

void WriteText(const std::wstring& path, const char* text) {
    HANDLE f = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD n;
    WriteFile(f, text, (DWORD)strlen(text), &n, nullptr);
    CloseHandle(f);
}

std::string ReadText(const std::wstring& path) {
    HANDLE f = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (f == INVALID_HANDLE_VALUE) return "<missing>";
    char buffer[256];
    DWORD n = 0;
    ReadFile(f, buffer, sizeof buffer, &n, nullptr);
    CloseHandle(f);
    return std::string(buffer, n);
}

bool Exists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }
}  // namespace

TEST_CASE(App_Scale_Densities) {
    DensityScope keep;
    InitScreenScale(0);
    SetScreenDensity(96, 96);
    CHECK_EQ(ScaleX(-5), -5);
    CHECK_EQ(ScaleX(240), 240);
    CHECK(IsLowDensityScreen());
    SetScreenDensity(131, 131);
    CHECK_EQ(ScaleX(1), 1);
    CHECK_EQ(ScaleX(10), 14);  // (10 * 131 + 48) / 96
    SetScreenDensity(143, 143);
    CHECK(IsLowDensityScreen());  // 143 still takes the low-density images
    CHECK_EQ(ScaleY(-3), -4);     // rounds half up, symmetrically
    SetScreenDensity(144, 144);
    CHECK(!IsLowDensityScreen());
    CHECK_EQ(ScaleX(1), 2);
    SetScreenDensity(192, 120);
    CHECK_EQ(ScaleX(3), 6);
    CHECK_EQ(ScaleY(240), 300);
    SetScreenDensity(0, 0);
    CHECK_EQ(ScaleX(50), 0);
    InitScreenScale(1);  // forced double whatever the density
    CHECK_EQ(ScaleX(7), 14);
    CHECK_EQ(ScaleY(-7), -14);
}

TEST_CASE(App_Startup_CommandLineKinds) {
    CHECK(IsListFileName(*Buffer(L"\\My Documents\\Personal\\Grocery - weekly.zvl")));
    CHECK(IsListFileName(*Buffer(L"X.ZVL")));
    CHECK(!IsListFileName(*Buffer(L"\\Templates\\Goals.zvt")));
    CHECK(!IsListFileName(*Buffer(L"\"\\a b\\Goals.zvl\"")));  // a quoted path ends in a quote
    CHECK(!IsListFileName(*Buffer(L"")));

    wchar_t title[260];
    FileTitleFromPath(*Buffer(L"\\Templates\\Simple check-list.zvt"), title);
    CHECK_EQ(title, L"Simple check-list");
    FileTitleFromPath(*Buffer(L"\\a.b\\name.x.zvt"), title);
    CHECK_EQ(title, L"name");
    FileTitleFromPath(*Buffer(L"\\Folder\\.hidden"), title);
    CHECK_EQ(title, L"");
    FileTitleFromPath(*Buffer(L"plain"), title);
    CHECK_EQ(title, L"plain");
}

TEST_CASE(App_Startup_DesktopQuotesRemoved) {
    wchar_t quoted[] = L"\"\\My Documents\\Grocery - weekly.zvl\" ";
    UnquoteDesktopCommandLine(quoted);
    CHECK_EQ(quoted, L"\\My Documents\\Grocery - weekly.zvl");
    wchar_t plain[] = L"\\Lists\\a.zvl";
    UnquoteDesktopCommandLine(plain);
    CHECK_EQ(plain, L"\\Lists\\a.zvl");
    wchar_t two[] = L"\"a\" \"b\"";  // two arguments stay as they are
    UnquoteDesktopCommandLine(two);
    CHECK_EQ(two, L"\"a\" \"b\"");
    wchar_t empty[] = L"";
    UnquoteDesktopCommandLine(empty);
    CHECK_EQ(empty, L"");
}

TEST_CASE(App_Startup_DottedDateLanguages) {
    CHECK(LanguageUsesDottedDates(L"\\Windows\\langger.dll"));
    CHECK(LanguageUsesDottedDates(L"\\Windows\\LANGHEB.DLL"));
    CHECK(!LanguageUsesDottedDates(L"\\Windows\\LangGerman.dll"));
    CHECK(!LanguageUsesDottedDates(L"\\Program Files\\Quenta\\Zorvel\\LangEng.dll"));
    CHECK(!LanguageUsesDottedDates(L""));
}

TEST_CASE(App_Startup_SampleFiles) {
    std::wstring folder = TempFolder();
    std::wstring plain = folder + L"Goals.zvt";
    // Each start finds both copies (a first install or a reinstall) and keeps
    // the one that fits the screen, unless the user already has the file.
    const struct { const char* existing; bool lowDensity; const char* kept; } starts[] = {
        {nullptr, true, "qvga"},
        {"edited", false, "edited"},
        {nullptr, false, "vga"},
    };
    for (const auto& start : starts) {
        DeleteFileW(plain.c_str());
        if (start.existing) WriteText(plain, start.existing);
        WriteText(plain + L"_vga", "vga");
        WriteText(plain + L"_qvga", "qvga");
        PlaceSampleFile(folder.c_str(), L"Goals.zvt", start.lowDensity);
        CHECK_EQ(ReadText(plain), std::string(start.kept));
        CHECK(!Exists(plain + L"_vga"));
        CHECK(!Exists(plain + L"_qvga"));
    }

    // A missing folder is not reported and creates nothing.
    PlaceSampleFile((folder + L"missing\\").c_str(), L"Goals.zvt", true);
    CHECK(!Exists(folder + L"missing"));
    DeleteFileW(plain.c_str());
}
