// Machine-level configuration in the registry.
#include <cwchar>

#include "app/RegistryConfig.h"
#include "tests/app/RegistryTestUtil.h"
#include "tests/framework/ZvTest.h"

static const wchar_t kKey[] = L"Software\\Quenta\\Zorvel";

TEST_CASE(App_Registry_EmptyKeyGivesEmptyValues) {
    regtest::WipeProgramKey();
    RegistryConfig config;
    config.LoadStartupPaths();
    CHECK_EQ(config.installPath.Text(), L"");
    CHECK_EQ(config.value.Text(), L"");
    wchar_t out[260] = L"junk";
    config.GetListsPath(1, out);
    CHECK_EQ(out, L"");
    config.GetTemplatePath(out);
    CHECK_EQ(out, L"");
    config.GetLanguageModulePath(out);
    CHECK_EQ(out, L"");
    // Reading created the key but wrote nothing into it.
    CHECK(regtest::KeyExists(kKey));
    CHECK(!regtest::HasValue(kKey, L"ListsPath"));
    CHECK(!regtest::HasValue(kKey, L"InstallPath"));
}

TEST_CASE(App_Registry_ListsPathNumbers) {
    regtest::WipeProgramKey();
    RegistryConfig config;
    config.SetListsPath(1, L"\\One");
    config.SetListsPath(2, L"\\Two");
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath"), std::wstring(L"\\One"));
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath2"), std::wstring(L"\\Two"));
    CHECK(!regtest::HasValue(kKey, L"ListsPath1"));
    wchar_t out[260];
    config.GetListsPath(1, out);
    CHECK_EQ(out, L"\\One");

    // A value too long for the 260-character buffer reads as the default.
    regtest::SetString(kKey, L"TemplatePath", std::wstring(300, L'x').c_str());
    CHECK_EQ(ReadStringValue(HKEY_CURRENT_USER, L"TemplatePath", config.value, L"dflt"), 0);
    CHECK_EQ(config.value.Text(), L"dflt");
}

TEST_CASE(App_Registry_EnsureTrailingBackslash) {
    wchar_t a[260] = L"\\My Documents\\Lists";
    EnsureTrailingBackslash(a);
    CHECK_EQ(a, L"\\My Documents\\Lists\\");
    wchar_t b[260] = L"\\Storage Card\\";
    EnsureTrailingBackslash(b);
    CHECK_EQ(b, L"\\Storage Card\\");
    wchar_t c[260] = L"";
    EnsureTrailingBackslash(c);
    CHECK_EQ(c, L"");
}

TEST_CASE(App_Registry_RotationKeepsDuplicates) {
    regtest::WipeProgramKey();
    RotateListsPaths(L"\\A");
    RotateListsPaths(L"\\B");
    RotateListsPaths(L"\\A");
    // The old values gain a trailing "\" as they move down; the new one is written as given.
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath"), std::wstring(L"\\A"));
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath2"), std::wstring(L"\\B\\"));
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath3"), std::wstring(L"\\A\\"));
    RotateListsPaths(L"\\C");
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath3"), std::wstring(L"\\B\\"));
}

// Written at every start: the same keys each time, with the program's full
// path, which the shell needs from whatever drive is current.
TEST_CASE(App_Registry_FileAssociations) {
    const std::wstring command = L"\"D:\\Program Files\\Quenta\\Zorvel\\Zorvel.exe\" %1";
    const std::wstring icon = L"D:\\Program Files\\Quenta\\Zorvel\\Zorvel.exe,-130";
    for (int pass = 0; pass < 2; ++pass) {
        RegisterFileAssociations(L"D:\\Program Files\\Quenta\\Zorvel\\Zorvel.exe");
        CHECK_EQ(regtest::GetString(L"Software\\Classes\\.zvl", L"Default"), std::wstring(L"listfile"));
        CHECK_EQ(regtest::GetString(L"Software\\Classes\\.zvt", L"Content Type"), std::wstring(L"ZorvelTemplateFile"));
        for (std::wstring kind : {L"Software\\Classes\\listfile", L"Software\\Classes\\templatefile"}) {
            CHECK_EQ(regtest::GetString((kind + L"\\DefaultIcon").c_str(), L"Default"), icon);
            CHECK_EQ(regtest::GetString((kind + L"\\Shell\\Open\\Command").c_str(), L"Default"), command);
            CHECK_EQ(regtest::GetString((kind + L"\\Shell\\Open\\Command").c_str(), nullptr), command);
        }
    }
}
