#include "settings/AppSettings.h"

#include <cwchar>

#include "base/AppGlobals.h"

CAppSettings g_appSettings;

namespace {
const wchar_t* const kKeyPaths[] = {
    ZV_PROGRAM_KEY,
    ZV_PROGRAM_KEY L"\\General",
    ZV_PROGRAM_KEY L"\\Colors",
    ZV_PROGRAM_KEY L"\\Templates",
};

HKEY CreateKey(unsigned keyIndex) {
    const wchar_t* path = SettingsKeyPath(keyIndex);
    HKEY key = nullptr;
    if (!path || RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return nullptr;
    return key;
}

void CloseKey(HKEY key) {
    if (key) RegCloseKey(key);
}

// Runs `work` on the given key, or on the setting's own key opened for the call.
template <class Work>
void WithKey(const CBaseSetting& setting, HKEY key, Work work) {
    if (key) {
        work(key);
        return;
    }
    HKEY own = setting.OpenKey();
    work(own);
    CloseKey(own);
}
}  // namespace

const wchar_t* SettingsKeyPath(unsigned keyIndex) {
    return keyIndex < sizeof kKeyPaths / sizeof kKeyPaths[0] ? kKeyPaths[keyIndex] : nullptr;
}

void CBaseSetting::Init(const wchar_t* valueName, unsigned index) {
    dirty = 0;
    name = valueName;
    keyIndex = index;
}

HKEY CBaseSetting::OpenKey() const { return CreateKey(keyIndex); }

void ReadSettingString(const wchar_t* name, CeString& out, const wchar_t* defaultText, HKEY key) {
    wchar_t buffer[260] = {};
    DWORD size = sizeof buffer;
    if (!key || RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(buffer), &size) != ERROR_SUCCESS) {
        // The defaults are the program's own texts and hold no per-cent sign.
        wsprintfW(buffer, defaultText);
    }
    buffer[259] = 0;
    out = buffer;
}

void WriteSettingString(HKEY key, const wchar_t* name, const wchar_t* text, const wchar_t* defaultText) {
    if (wcscmp(text, defaultText) == 0) {
        RegDeleteValueW(key, name);
        return;
    }
    RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), DWORD((wcslen(text) + 1) * sizeof(wchar_t)));
}

DWORD ReadSettingDword(const wchar_t* name, DWORD defaultValue, HKEY key) {
    DWORD value = 0, size = sizeof value;
    if (!key || RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size) != ERROR_SUCCESS)
        return defaultValue;
    return value;
}

int WriteSettingDword(HKEY key, const wchar_t* name, DWORD value, DWORD defaultValue) {
    if (value == defaultValue)
        RegDeleteValueW(key, name);
    else
        RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
    return 1;
}

DWORD CNumericSetting::Load(HKEY key, DWORD def, const wchar_t* valueName, unsigned index) {
    Init(valueName, index);
    defaultValue = def;
    WithKey(*this, key, [&](HKEY k) { value = ReadSettingDword(name, defaultValue, k); });
    return value;
}

void CNumericSetting::Set(DWORD newValue) {
    value = newValue;
    dirty = 1;
}

void CNumericSetting::Save(HKEY key) {
    if (!dirty) return;
    WithKey(*this, key, [&](HKEY k) { WriteSettingDword(k, name, value, defaultValue); });
}

const wchar_t* CStringSetting::Load(HKEY key, const wchar_t* defaultText, const wchar_t* valueName, unsigned index) {
    Init(valueName, index);
    defaultValue = defaultText;
    WithKey(*this, key, [&](HKEY k) { ReadSettingString(name, value, defaultValue, k); });
    return value;
}

void CStringSetting::Set(const wchar_t* text) {
    value = text;
    dirty = 1;
}

void CStringSetting::Save(HKEY key) {
    if (!dirty) return;
    WithKey(*this, key, [&](HKEY k) { WriteSettingString(k, name, value, defaultValue); });
}

void CAppSettings::LoadSettings() {
    HKEY root = CreateKey(SettingsKeyRoot);
    InstallPath.Load(root, L"\\Program Files\\Quenta\\Zorvel", L"InstallPath", SettingsKeyRoot);
    TemplatePath.Load(root, L"", L"TemplatePath", SettingsKeyRoot);
    CloseKey(root);

    // The colours belong to the Colors key in name only: they are read and
    // written through the General key that is open at the time, so that is
    // where they live in the registry.
    HKEY general = CreateKey(SettingsKeyGeneral);
    CeString iconsDefault = InstallPath.value + L"\\Icons\\";
    FontSize.Load(general, 12, L"FontSize", SettingsKeyGeneral);
    FontFace.Load(general, L"Segoe Condensed", L"FontFace", SettingsKeyGeneral);
    IconsFolder.Load(general, iconsDefault, L"IconsFolder", SettingsKeyGeneral);
    MainViewCategory.Load(general, DefaultColor, L"MainViewCategory", SettingsKeyColors);
    ListViewBack.Load(general, DefaultColor, L"ListViewBack", SettingsKeyColors);
    MainViewList.Load(general, DefaultColor, L"MainViewList", SettingsKeyColors);
    ListViewText.Load(general, DefaultColor, L"ListViewText", SettingsKeyColors);
    CloseKey(general);

    CloseKey(CreateKey(SettingsKeyColors));
}

void CAppSettings::SaveSettings() {
    HKEY root = CreateKey(SettingsKeyRoot);
    TemplatePath.Save(root);
    CloseKey(root);

    HKEY general = CreateKey(SettingsKeyGeneral);
    FontSize.Save(general);
    FontFace.Save(general);
    IconsFolder.Save(general);
    ListViewBack.Save(general);
    ListViewText.Save(general);
    MainViewCategory.Save(general);
    MainViewList.Save(general);
    CloseKey(general);

    CloseKey(CreateKey(SettingsKeyColors));
    CloseKey(CreateKey(SettingsKeyTemplates));
}
