// Small drawing helpers shared by the colour and icon pickers (the solid
// fill also by the Colors page's swatches): an off-screen canvas, a solid
// fill and the pickers' font.
#pragma once
#include <windows.h>

#include <cwchar>

#include "base/Handles.h"
#include "platform/ScreenScale.h"

namespace picker {

// An off-screen bitmap compatible with `screen`, selected into its own DC.
struct MemoryCanvas {
    MemoryDC dc;
    BitmapHandle bitmap;
    SelectedObject selection;
    MemoryCanvas(HDC screen, int w, int h)
        : dc(screen), bitmap(CreateCompatibleBitmap(screen, w, h)), selection(dc, bitmap) {}
};

inline void Fill(HDC dc, const RECT& r, COLORREF color) {
    BrushHandle brush(CreateSolidBrush(color));
    FillRect(dc, &r, brush);
}

// The pickers' text: Tahoma at 12 phone pixels, like the other dialogs.
// The caller deletes it.
inline HFONT CreatePickerFont() {
    LOGFONTW lf = {};
    lf.lfHeight = -ScaleY(12);
    lf.lfWeight = FW_NORMAL;
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfQuality = CLEARTYPE_QUALITY;
    wcscpy(lf.lfFaceName, L"Tahoma");
    return CreateFontIndirectW(&lf);
}

}  // namespace picker
