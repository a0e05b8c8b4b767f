// The face of the item editor's date-time pickers at any density. Wine's
// picker is laid out for a 96-dpi screen: its drop-down button is a fixed
// 15 pixels wide, and its text sits in a strip one line tall at the top of
// the box. A picker given a face here is painted with its text centred in
// the box and its button scaled with the density, and taps are moved to
// where the picker itself keeps its parts. With the program's font at
// 96 dpi the picker looks exactly as it does on its own.
#pragma once
#include <windows.h>

// The width of the picker's own drop-down button at 96 dpi.
constexpr int kPickerButtonWidth = 15;

// Subclasses `picker` for the rest of its life.
void GivePickerScaledFace(HWND picker);
