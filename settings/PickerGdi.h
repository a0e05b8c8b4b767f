// Small drawing helpers shared by the colour and icon pickers: RAII for the
// GDI objects they make while painting, and the pickers' font.
#pragma once
#include <windows.h>

#include <cwchar>

#include "platform/ScreenScale.h"

namespace picker {

struct SolidBrush {
    HBRUSH handle;
    explicit SolidBrush(COLORREF color) : handle(CreateSolidBrush(color)) {}
    ~SolidBrush() { DeleteObject(handle); }
    SolidBrush(const SolidBrush&) = delete;
    SolidBrush& operator=(const SolidBrush&) = delete;
};

// Selects an object into a DC for the scope; a null object selects nothing.
struct SelectedObject {
    HDC dc;
    HGDIOBJ old;
    SelectedObject(HDC dc, HGDIOBJ object) : dc(dc), old(object ? SelectObject(dc, object) : nullptr) {}
    ~SelectedObject() {
        if (old) SelectObject(dc, old);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;
};

// An off-screen bitmap compatible with `screen`, selected into its own DC.
struct MemoryCanvas {
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ oldBitmap;
    MemoryCanvas(HDC screen, int w, int h)
        : dc(CreateCompatibleDC(screen)), bitmap(CreateCompatibleBitmap(screen, w, h)) {
        oldBitmap = SelectObject(dc, bitmap);
    }
    ~MemoryCanvas() {
        SelectObject(dc, oldBitmap);
        DeleteObject(bitmap);
        DeleteDC(dc);
    }
    MemoryCanvas(const MemoryCanvas&) = delete;
    MemoryCanvas& operator=(const MemoryCanvas&) = delete;
};

inline void Fill(HDC dc, const RECT& r, COLORREF color) {
    SolidBrush brush(color);
    FillRect(dc, &r, brush.handle);
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
