// The colour picker: a modal full-screen chooser with three modes (sliders
// with number fields, a hexadecimal "HTML#" field, a palette of 50 colours)
// and a preview strip along the bottom.
//
// The caller builds a CColorPicker, calls Run and reads the result:
//
//     CColorPicker picker(hLangModule, hInstance, TRUE, ColorModePalette, current,
//                         kColorPickerResource, IDM_COLOR_PICKER_MENUBAR);
//     int chosen = picker.Run(hwnd);
//     if (chosen != ColorPickerCancelled) setting.Set((COLORREF)chosen);
//
// Run returns the colour (0x000000 to 0xFFFFFF), DefaultColor (-1) when the
// user chose "Default", or ColorPickerCancelled (-2).
#pragma once
#include <windows.h>

#include "base/Handles.h"
#include "platform/aygshell.h"
#include "settings/AppSettings.h"

enum ColorPickerMode {
    ColorModeSliders = 0,
    ColorModeHtml = 1,
    ColorModePalette = 2,
};

const int ColorPickerCancelled = -2;
// The resource number callers hand in; the picker keeps it but has no use for it.
const UINT kColorPickerResource = 181;

const int kPaletteSize = 50;
const int kPaletteColumns = 10;
// The fixed palette, index = button identifier (0-49), as COLORREF values.
COLORREF PaletteColor(int index);

// Control identifiers. The palette buttons use 0-49 (their palette index);
// the other controls sit above the menu commands 1020-1024.
enum ColorPickerControlId {
    IDC_COLOR_RED_LABEL = 1101,   // + channel (0 red, 1 green, 2 blue)
    IDC_COLOR_RED_SLIDER = 1111,  // + channel
    IDC_COLOR_RED_FIELD = 1121,   // + channel
    IDC_COLOR_HTML_LABEL = 1131,
    IDC_COLOR_HTML_FIELD = 1132,
};

// The texts the picker loads from the language module when it is built.
enum ColorPickerText {
    ColorTextTitle,
    ColorTextRed,
    ColorTextGreen,
    ColorTextBlue,
    ColorTextSlidersMode,
    ColorTextPaletteMode,
    ColorTextCancel,
    ColorTextSelect,
    ColorTextDefault,
    ColorTextTooLarge,
    ColorTextTooLargeCaption,
    ColorTextPreview,
    ColorTextCount,
};

class CColorPicker {
public:
    CColorPicker(HINSTANCE resourceModule, HINSTANCE programModule, BOOL allowDefault, int initialMode,
                 COLORREF initialColor, UINT resourceNumber, UINT menuBarId);
    CColorPicker(const CColorPicker&) = delete;
    CColorPicker& operator=(const CColorPicker&) = delete;

    // Runs the dialog modally, owned by `owner`. Returns the colour,
    // DefaultColor as -1, or ColorPickerCancelled.
    int Run(HWND owner);

    HINSTANCE resourceModule;  // menu bar and the controls' instance
    HINSTANCE programModule;
    BOOL allowDefault;         // nonzero: the menu offers "Default"
    int mode;                  // ColorPickerMode
    UINT resourceNumber;
    UINT menuBarId;
    wchar_t text[ColorTextCount][256];

    COLORREF color;            // or DefaultColor
    int red, green, blue;      // 0-255 (a number field may leave a stray value)

    HWND menuBar = nullptr;
    HWND palette[kPaletteSize] = {};
    HWND labels[3] = {};
    HWND sliders[3] = {};
    HWND fields[3] = {};
    HWND htmlLabel = nullptr;
    HWND htmlField = nullptr;
    FontHandle font;
};
