// Machine-level configuration in the registry and the file associations.
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

TEST_CASE(App_Registry_FileAssociations) {
    regtest::WipeProgramKey();
    for (int pass = 0; pass < 2; ++pass) {  // registering twice leaves the same keys and values
        RegisterFileAssociations(L"D:\\Program Files\\Quenta\\Zorvel\\Zorvel.exe");
        const wchar_t* c = L"Software\\Classes\\";
        auto at = [&](const wchar_t* sub) { return std::wstring(c) + sub; };
        CHECK_EQ(regtest::GetString(at(L".zvl").c_str(), L"Default"), std::wstring(L"listfile"));
        CHECK_EQ(regtest::GetString(at(L".zvl").c_str(), L"Content Type"), std::wstring(L"ZorvelFile"));
        CHECK_EQ(regtest::GetString(at(L".zvt").c_str(), L"Default"), std::wstring(L"templatefile"));
        CHECK_EQ(regtest::GetString(at(L".zvt").c_str(), L"Content Type"), std::wstring(L"ZorvelTemplateFile"));
        CHECK_EQ(regtest::GetString(at(L"listfile").c_str(), L"Default"), std::wstring(L"List File"));
        CHECK_EQ(regtest::GetString(at(L"templatefile").c_str(), L"Default"), std::wstring(L"Template File"));
        const std::wstring command = L"\"D:\\Program Files\\Quenta\\Zorvel\\Zorvel.exe\" %1";
        const std::wstring icon = L"D:\\Program Files\\Quenta\\Zorvel\\Zorvel.exe,-130";
        for (const wchar_t* kind : {L"listfile", L"templatefile"}) {
            std::wstring base = at(kind);
            CHECK_EQ(regtest::GetString((base + L"\\DefaultIcon").c_str(), L"Default"), icon);
            CHECK_EQ(regtest::GetString((base + L"\\Shell").c_str(), L"Default"), std::wstring());
            CHECK_EQ(regtest::GetString((base + L"\\Shell\\Open").c_str(), L"Default"), std::wstring());
            CHECK_EQ(regtest::GetString((base + L"\\Shell\\Open\\Command").c_str(), L"Default"), command);
            // The desktop shell reads the unnamed value.
            CHECK_EQ(regtest::GetString((base + L"\\Shell\\Open\\Command").c_str(), nullptr), command);
        }
    }
}
