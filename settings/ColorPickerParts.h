// Pieces of the colour picker shared between its dialog procedure
// (ColorPicker.cpp) and its layout and drawing (ColorPickerPaint.cpp).
#pragma once
#include <windows.h>

#include "settings/ColorPicker.h"

// Places every control for a client area `width` pixels wide.
void LayoutColorPicker(CColorPicker& picker, int width);
// The preview strip along the bottom of the client area.
RECT PreviewStripRect(HWND dialog);
// WM_PAINT: the preview strip, drawn off-screen and copied in one piece.
BOOL OnPaintColorPicker(HWND dialog, CColorPicker& picker);
// WM_DRAWITEM for the palette buttons (identifiers below 50).
BOOL OnDrawPaletteButton(const DRAWITEMSTRUCT* item);
