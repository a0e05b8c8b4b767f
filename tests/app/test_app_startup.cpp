// Start-up rules: screen scaling, the kind of a command-line file, the date
// style of a language module, the image modules and the sample files.
#include "app/Startup.h"
#include "tests/ui/UiTestUtil.h"

TEST_CASE(App_Scale_Densities) {
    uitest::DensityScope keep(96);
    // Densities across and down, whether the low-density images fit, and ScaleX(x), ScaleY(y).
    const struct { int dpiX, dpiY; bool low; int x, wantX, y, wantY; } rows[] = {
        {96, 96, true, -5, -5, 240, 240},
        {131, 131, true, 10, 14, 1, 1},  // (10 * 131 + 48) / 96
        {143, 143, true, 1, 1, -3, -4},  // 143 still takes the low-density images; halves round away from 0
        {144, 144, false, 1, 2, 1, 2},
        {192, 120, false, 3, 6, 240, 300},
        {0, 0, true, 50, 0, 50, 0},
    };
    for (const auto& r : rows) {
        SetScreenDensity(r.dpiX, r.dpiY);
        CHECK_EQ(IsLowDensityScreen(), r.low);
        CHECK_EQ(ScaleX(r.x), r.wantX);
        CHECK_EQ(ScaleY(r.y), r.wantY);
    }
    InitScreenScale(1);  // forced double whatever the density
    CHECK_EQ(ScaleX(7), 14);
    CHECK_EQ(ScaleY(-7), -14);
    InitScreenScale(0);
}

TEST_CASE(App_Startup_CommandLineAndLanguage) {
    // A list's name ends in 'l' (a quoted path ends in a quote); its title runs from the last "\" to the first ".".
    const struct { const wchar_t* path; bool list; const wchar_t* title; } names[] = {
        {L"\\My Documents\\Personal\\Grocery - weekly.zvl", true, L"Grocery - weekly"},
        {L"X.ZVL", true, L"X"},
        {L"\\Templates\\Simple check-list.zvt", false, L"Simple check-list"},
        {L"\"\\a b\\Goals.zvl\"", false, L"Goals"},
        {L"\\a.b\\name.x.zvt", false, L"name"},
        {L"\\Folder\\.hidden", false, L""},
        {L"plain", false, L"plain"},
        {L"", false, L""},
    };
    for (const auto& n : names) {
        ScopedTextBuffer path;
        path.Assign(n.path);
        wchar_t title[260];
        FileTitleFromPath(path, title);
        CHECK_EQ(IsListFileName(path), n.list);
        CHECK_EQ(title, n.title);
    }
    // One quoted argument (and trailing blanks) lose their quotes; two arguments stay as they are.
    const struct { const wchar_t *in, *out; } lines[] = {
        {L"\"\\My Documents\\Grocery - weekly.zvl\" ", L"\\My Documents\\Grocery - weekly.zvl"},
        {L"\\Lists\\a.zvl", L"\\Lists\\a.zvl"},
        {L"\"a\" \"b\"", L"\"a\" \"b\""},
        {L"", L""},
    };
    for (const auto& l : lines) {
        std::wstring line = l.in;
        UnquoteDesktopCommandLine(&line[0]);
        CHECK_EQ(line.c_str(), l.out);
    }
    CHECK(LanguageUsesDottedDates(L"\\Windows\\langger.dll"));
    CHECK(LanguageUsesDottedDates(L"\\Windows\\LANGHEB.DLL"));
    CHECK(!LanguageUsesDottedDates(L"\\Windows\\LangGerman.dll"));
    CHECK(!LanguageUsesDottedDates(L"\\Program Files\\Quenta\\Zorvel\\LangEng.dll"));
    CHECK(!LanguageUsesDottedDates(L""));
}

// What starts leave in the folders: both image modules whatever the density,
// and of each sample file the copy that fits the screen.
TEST_CASE(App_Startup_FilesLeftInPlace) {
    std::wstring dir = doctest::ScratchDir(L"start"), folder = dir + L"\\", plain = folder + L"Goals.zvt";
    // Starting at one density and then at the other finds the fitting image
    // module each time: neither start removes the other module.
    const wchar_t* modules[] = {L"ZVLowDpiRes.dll", L"ZVHighDpiRes.dll"};
    for (const wchar_t* name : modules)
        CHECK(CopyFileW((uitest::BinFolder() + name).c_str(), (folder + name).c_str(), FALSE));
    for (bool low : {true, false, true}) {
        HMODULE module = LoadImageModule(dir.c_str(), low);
        CHECK(module != nullptr);
        if (module) FreeLibrary(module);
    }
    for (const wchar_t* name : modules) CHECK(doctest::FileExists(folder + name));

    auto write = [](const std::wstring& path, std::string s) { doctest::WriteBytes(path, {s.begin(), s.end()}); };
    // Each start finds both copies (a first install or a reinstall) and keeps
    // the one that fits the screen, unless the user already has the file.
    const struct { const char* existing; bool lowDensity; const char* kept; } starts[] = {
        {nullptr, true, "qvga"},
        {"edited", false, "edited"},
        {nullptr, false, "vga"},
    };
    for (const auto& start : starts) {
        DeleteFileW(plain.c_str());
        if (start.existing) write(plain, start.existing);
        write(plain + L"_vga", "vga");
        write(plain + L"_qvga", "qvga");
        PlaceSampleFile(folder.c_str(), L"Goals.zvt", start.lowDensity);
        doctest::ByteVec kept = doctest::ReadBytes(plain);
        CHECK_EQ(std::string(kept.begin(), kept.end()), std::string(start.kept));
        CHECK(!doctest::FileExists(plain + L"_vga"));
        CHECK(!doctest::FileExists(plain + L"_qvga"));
    }
    // A missing folder is not reported and creates nothing.
    PlaceSampleFile((folder + L"missing\\").c_str(), L"Goals.zvt", true);
    CHECK(!doctest::FileExists(folder + L"missing"));
    doctest::RemoveTree(folder);
}
