// The user's preferences: one global CAppSettings made of nine settings.
// Each setting knows its registry value name, its key, its default and
// whether it was changed; a value equal to its default is deleted from the
// registry instead of stored.
//
// Table of contents of settings/:
//   AppSettings.h/.cpp  the settings object g_appSettings and its registry values
//   ListLook.h/.cpp     the list font and row colours every list screen uses
//   ColorPicker.h/.cpp  the colour picker; ColorPickerPaint.cpp its drawing,
//                       ColorPickerParts.h what its files share
//   IconPicker.h/.cpp   the icon picker; IconCache.cpp the icons folder scan
//   PickerGdi.h         drawing helpers and the font of both pickers
//   SettingsDialog.h/.cpp  the settings dialog: the page list, Done and Back
//   SettingsWindow.h/.cpp  the page framework CSettingsWindow: running a
//                       page, its soft keys, routing, the control rows
//   GeneralPage.cpp     CGeneralSettingsWindow: font size and face, folders
//   ColorsPage.cpp      CColorsSettingsWindow: the four colour swatches
#pragma once
#include <windows.h>

#include "base/CeString.h"

enum SettingsKey : unsigned {
    SettingsKeyRoot = 0,       // Software\Quenta\Zorvel
    SettingsKeyGeneral = 1,    // ...\General
    SettingsKeyColors = 2,     // ...\Colors
    SettingsKeyTemplates = 3,  // ...\Templates
};

// No colour chosen: consumers use the system colour instead.
const COLORREF DefaultColor = 0xFFFFFFFF;
inline bool IsDefaultColor(COLORREF c) { return c > 0xFFFFFFFE; }

const wchar_t* SettingsKeyPath(unsigned keyIndex);  // nullptr for an unknown index

class CBaseSetting {
public:
    virtual void Init(const wchar_t* name, unsigned keyIndex);
    HKEY OpenKey() const;  // the caller closes it

    int dirty = 0;
    CeString name;
    unsigned keyIndex = 0;
};

class CNumericSetting : public CBaseSetting {
public:
    DWORD Load(HKEY key, DWORD defaultValue, const wchar_t* valueName, unsigned keyIndex);
    void Set(DWORD newValue);
    void Save(HKEY key);

    DWORD value = 0;
    DWORD defaultValue = 0;
};

class CStringSetting : public CBaseSetting {
public:
    const wchar_t* Load(HKEY key, const wchar_t* defaultText, const wchar_t* valueName, unsigned keyIndex);
    void Set(const wchar_t* text);
    void Save(HKEY key);

    CeString value;
    CeString defaultValue;
};

// Registry value helpers shared by the settings (and usable on any open key).
void ReadSettingString(const wchar_t* name, CeString& out, const wchar_t* defaultText, HKEY key);
void WriteSettingString(HKEY key, const wchar_t* name, const wchar_t* text, const wchar_t* defaultText);
DWORD ReadSettingDword(const wchar_t* name, DWORD defaultValue, HKEY key);
int WriteSettingDword(HKEY key, const wchar_t* name, DWORD value, DWORD defaultValue);

class CAppSettings {
public:
    void LoadSettings();
    void SaveSettings();

    CStringSetting InstallPath;
    CNumericSetting FontSize;
    CStringSetting FontFace;
    CStringSetting IconsFolder;
    CStringSetting TemplatePath;
    CNumericSetting MainViewCategory;
    CNumericSetting MainViewList;
    CNumericSetting ListViewBack;
    CNumericSetting ListViewText;
};

extern CAppSettings g_appSettings;
