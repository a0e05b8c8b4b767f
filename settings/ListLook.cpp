#include "settings/ListLook.h"

#include "platform/ScreenScale.h"
#include "settings/AppSettings.h"

namespace {
// Used when the settings were never loaded or hold an unusable value.
constexpr int kDefaultFontSize = 12;
constexpr wchar_t kDefaultFontFace[] = L"Segoe Condensed";

COLORREF SettingOr(const CNumericSetting& setting, int systemColor) {
    return IsDefaultColor(setting.value) ? GetSysColor(systemColor) : (COLORREF)setting.value;
}
}  // namespace

LOGFONTW ListLogFont(LONG weight) {
    int size = (int)g_appSettings.FontSize.value;
    if (size < 4 || size > 72) size = kDefaultFontSize;
    const wchar_t* face = g_appSettings.FontFace.value.c_str();
    if (!face || !face[0]) face = kDefaultFontFace;
    LOGFONTW font = {};
    font.lfHeight = ScaleY(size);
    font.lfWeight = weight;
    lstrcpynW(font.lfFaceName, face, LF_FACESIZE);
    return font;
}

HFONT CreateListFont(LONG weight) {
    LOGFONTW font = ListLogFont(weight);
    return CreateFontIndirectW(&font);
}

HFONT CreateFormFont(LONG weight) {
    LOGFONTW font = {};
    font.lfHeight = -ScaleY(12);
    font.lfWeight = weight;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    const wchar_t* face = g_appSettings.FontFace.value.c_str();
    lstrcpynW(font.lfFaceName, face && face[0] ? face : L"Tahoma", LF_FACESIZE);
    return CreateFontIndirectW(&font);
}

COLORREF ListBackColor() { return SettingOr(g_appSettings.ListViewBack, COLOR_WINDOW); }
COLORREF ListTextColor() { return SettingOr(g_appSettings.ListViewText, COLOR_WINDOWTEXT); }
COLORREF CategoryTextColor() { return SettingOr(g_appSettings.MainViewCategory, COLOR_WINDOWTEXT); }
COLORREF ListNameTextColor() { return SettingOr(g_appSettings.MainViewList, COLOR_WINDOWTEXT); }
