// The user's settings and how they are kept in the registry.
#include "settings/AppSettings.h"
#include "tests/app/RegistryTestUtil.h"
#include "tests/framework/ZvTest.h"

static const wchar_t kRoot[] = L"Software\\Quenta\\Zorvel";
static const wchar_t kGeneral[] = L"Software\\Quenta\\Zorvel\\General";
static const wchar_t kColors[] = L"Software\\Quenta\\Zorvel\\Colors";
static const wchar_t kTemplates[] = L"Software\\Quenta\\Zorvel\\Templates";

TEST_CASE(App_Settings_DefaultsOnEmptyRegistry) {
    regtest::WipeProgramKey();
    CAppSettings s;
    s.LoadSettings();
    CHECK_EQ(s.InstallPath.value.c_str(), L"\\Program Files\\Quenta\\Zorvel");
    CHECK_EQ(s.FontSize.value, 12u);
    CHECK_EQ(s.FontFace.value.c_str(), L"Segoe Condensed");
    CHECK_EQ(s.IconsFolder.value.c_str(), L"\\Program Files\\Quenta\\Zorvel\\Icons\\");
    CHECK_EQ(s.TemplatePath.value.c_str(), L"");
    CHECK_EQ(s.ListViewBack.value, DefaultColor);
    CHECK_EQ(s.MainViewList.value, DefaultColor);
    // Loading creates the Root, General and Colors keys.
    CHECK(regtest::KeyExists(kRoot));
    CHECK(regtest::KeyExists(kGeneral));
    CHECK(regtest::KeyExists(kColors));
    CHECK(!regtest::KeyExists(kTemplates));
    // The icons folder follows the installation folder.
    regtest::SetString(kRoot, L"InstallPath", L"\\Storage Card\\App");
    s.LoadSettings();
    CHECK_EQ(s.IconsFolder.value.c_str(), L"\\Storage Card\\App\\Icons\\");
}

TEST_CASE(App_Settings_SaveWritesOnlyChangesAndDeletesDefaults) {
    regtest::WipeProgramKey();
    regtest::SetDword(kGeneral, L"ListViewText", 0x123456);
    CAppSettings s;
    s.LoadSettings();
    // A setting never Set is not written even if its value vanished meanwhile.
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kGeneral, L"ListViewText");
    s.FontSize.Set(14);
    s.ListViewBack.Set(0x0080FF);
    s.FontFace.Set(L"Tahoma");
    s.SaveSettings();
    CHECK_EQ(regtest::GetDword(kGeneral, L"FontSize"), 14u);
    CHECK_EQ(regtest::GetString(kGeneral, L"FontFace"), std::wstring(L"Tahoma"));
    // Colours live under General, never under Colors.
    CHECK_EQ(regtest::GetDword(kGeneral, L"ListViewBack"), 0x0080FFu);
    CHECK(!regtest::HasValue(kColors, L"ListViewBack"));
    // Untouched settings are not written; saving creates the Templates key.
    CHECK(!regtest::HasValue(kGeneral, L"ListViewText"));
    CHECK(!regtest::HasValue(kRoot, L"TemplatePath"));
    CHECK(!regtest::HasValue(kRoot, L"InstallPath"));
    CHECK(regtest::KeyExists(kTemplates));

    // Set back to its default and confirmed: the value is deleted, not stored.
    CAppSettings t;
    t.LoadSettings();
    CHECK_EQ(t.FontSize.value, 14u);
    CHECK_EQ(t.ListViewBack.value, 0x0080FFu);
    t.FontSize.Set(12);
    t.FontFace.Set(L"Segoe Condensed");
    t.SaveSettings();
    CHECK(!regtest::HasValue(kGeneral, L"FontSize"));
    CHECK(!regtest::HasValue(kGeneral, L"FontFace"));
    CHECK_EQ(regtest::GetDword(kGeneral, L"ListViewBack"), 0x0080FFu);

    // Loading again throws an unsaved change away.
    t.ListViewText.Set(0x00FF00);
    t.LoadSettings();
    CHECK_EQ(t.ListViewText.value, DefaultColor);
    // A setting Set to the value it has is saved all the same, at every save;
    // one Set before the last load is not saved.
    t.FontSize.Set(12);
    for (int save = 0; save < 2; ++save) {
        regtest::SetDword(kGeneral, L"FontSize", 16);
        regtest::SetDword(kGeneral, L"ListViewText", 0x123456);
        t.SaveSettings();
        CHECK(!regtest::HasValue(kGeneral, L"FontSize"));
        CHECK_EQ(regtest::GetDword(kGeneral, L"ListViewText"), 0x123456u);
    }
}
