// Shared between the files of platform/ only.
#pragma once
#include <windows.h>

// Messages the keyboard hook posts to a soft-key bar (outside the toolbar's
// WM_USER range): wParam = the virtual key, lParam = 1 for key up, 0 for key down.
const UINT kMsgBarKey = WM_APP + 0x5A0;
// Posted by the bar to itself to open button wParam's popup once the click
// that asked for it has been handled.
const UINT kMsgBarOpenPopup = WM_APP + 0x5A1;

// Window property of a bar's parent holding the bar's handle.
extern const wchar_t kBarProp[];

// Called by the phone-screen code when the parent's size or frame changed:
// the bar follows the band under the client area.
void PlaceSoftKeyBar(HWND parent);

// Width of the band under a fitted window's client area: the inside of its
// frame, including a vertical scroll bar beside the client area.
int SoftKeyBandWidth(HWND parent);

// The band under a fitted window's client area shows the window's soft-key
// bar: painted from the bar's buttons (the toolbar itself lies outside the
// client area and never paints), and taps in the band press its buttons.
void PaintSoftKeyBand(HWND parent, HDC windowDc, const RECT& bandInWindow);
void TapSoftKeyBand(HWND parent, POINT screenPt, bool up);

// True while a popup opened from a soft key is on screen (the hook leaves the
// keys to the menu then).
bool SoftKeyMenuIsOpen();

// Installs the thread's keyboard hook that turns F1, F2 and Esc into soft-key
// and Back presses (once per thread).
void InstallSoftKeyHook();

// True for an edit box the user can type into.
bool IsEditableEdit(HWND hwnd);

// Erases what Backspace would erase in an edit box.
void EraseBackInEdit(HWND edit);

// Fills the phone-screen size defaults (the density) on first use.
void EnsureScreenScale();
