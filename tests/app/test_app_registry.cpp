// Machine-level configuration in the registry.
#include <cwchar>

#include "app/RegistryConfig.h"
#include "tests/app/RegistryTestUtil.h"
#include "tests/framework/ZvTest.h"

static const wchar_t kKey[] = L"Software\\Quenta\\Zorvel";

TEST_CASE(App_Registry_EmptyKeyThenListsPathNumbers) {
    regtest::WipeProgramKey();
    RegistryConfig config;
    config.LoadStartupPaths();
    CHECK_EQ(config.installPath.Text(), L"");
    CHECK_EQ(config.value.Text(), L"");
    wchar_t lists[260] = L"junk", templates[260] = L"junk", language[260] = L"junk";
    config.GetListsPath(1, lists);
    config.GetTemplatePath(templates);
    config.GetLanguageModulePath(language);
    for (const wchar_t* out : {lists, templates, language}) CHECK_EQ(out, L"");
    // Reading created the key but wrote nothing into it.
    CHECK(regtest::KeyExists(kKey));
    CHECK(!regtest::HasValue(kKey, L"ListsPath"));
    CHECK(!regtest::HasValue(kKey, L"InstallPath"));

    // Lists folder 1 is "ListsPath", the others carry their number.
    config.SetListsPath(1, L"\\One");
    config.SetListsPath(2, L"\\Two");
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath"), std::wstring(L"\\One"));
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath2"), std::wstring(L"\\Two"));
    CHECK(!regtest::HasValue(kKey, L"ListsPath1"));
    config.GetListsPath(1, lists);
    CHECK_EQ(lists, L"\\One");

    // A value too long for the 260-character buffer reads as the default.
    regtest::SetString(kKey, L"TemplatePath", std::wstring(300, L'x').c_str());
    CHECK_EQ(ReadStringValue(HKEY_CURRENT_USER, L"TemplatePath", config.value, L"dflt"), 0);
    CHECK_EQ(config.value.Text(), L"dflt");
}

// Old values gain a trailing "\" as they move down; the new one is written as given.
TEST_CASE(App_Registry_RotationAndTrailingBackslash) {
    regtest::WipeProgramKey();
    for (const wchar_t* folder : {L"\\A", L"\\B", L"\\A"}) RotateListsPaths(folder);
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath"), std::wstring(L"\\A"));
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath2"), std::wstring(L"\\B\\"));
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath3"), std::wstring(L"\\A\\"));
    RotateListsPaths(L"\\C");
    CHECK_EQ(regtest::GetString(kKey, L"ListsPath3"), std::wstring(L"\\B\\"));

    const struct { const wchar_t *in, *out; } paths[] = {
        {L"\\My Documents\\Lists", L"\\My Documents\\Lists\\"}, {L"\\Storage Card\\", L"\\Storage Card\\"}, {L"", L""}};
    for (const auto& p : paths) {
        wchar_t path[260];
        wcscpy(path, p.in);
        EnsureTrailingBackslash(path);
        CHECK_EQ(path, p.out);
    }
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
