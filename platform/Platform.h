// The phone screen on the desktop: where it is and how a window is put on it.
// Only start-up and the test harness need these; everything else uses the
// shell interface of platform/aygshell.h as it would on the phone.
//
// Table of contents of platform/:
//   aygshell.h        the shell interface (declarations)
//   PhoneScreen.cpp   the screen rectangle, fitting windows onto it, the
//                     frame band under the client area that shows the bar
//   MenuBar.cpp       SHCreateMenuBar: the soft-key bar and its messages
//   SoftKeyMenu.cpp   popups opened from a soft key, numbered for digits
//   SoftKeyPaint.cpp  the bar's look
//   SoftKeys.cpp      the thread keyboard hook: F1/F2/Esc to the bar
//   ShellMisc.cpp     SHInitDialog, activation, Back key, Done, SIP, TransparentImage
//   PhoneDialog.h/.cpp  RunPhoneDialog: every full-screen dialog's set-up
//   MenuBars.h/.cpp   a soft-key bar from a menu resource; Back overridden
//   ScreenScale.h/.cpp  ScaleX/ScaleY and the screen density
//   SoftKeyBar.h, PlatformInternal.h   shared inside platform/ only
#pragma once
#include <windows.h>

// The phone screen in desktop coordinates: ScaleX(240) x ScaleY(320) pixels,
// the application's area and the soft-key bar under it.
void GetPhoneScreenRect(RECT* rc);

// Height of the soft-key bar in pixels.
int SoftKeyBarHeight();

// Puts a top-level window on the phone screen: a desktop caption (move and
// close), its client area the phone screen minus the soft-key bar, the bar's
// band below the client area. A window that was moved by the user moves the
// phone screen: later windows (and a window coming back to the front) follow.
// SHInitDialog with SHIDIF_SIZEDLGFULLSCREEN and SHCreateMenuBar on a
// top-level window call this; start-up may call it for the main window.
void FitToPhoneScreen(HWND hwnd);

// From now on message boxes and other small dialogs of this thread open over
// the phone screen, no wider than it (start-up calls this before its first
// message box; fitting a window does it too).
void PlaceDialogsOnPhoneScreen();

// True when the window has been fitted.
bool IsOnPhoneScreen(HWND hwnd);

// SHCreateMenuBar from a menu built in code: the bar takes ownership of
// `menu` (a top-level POPUP's button ID is its item ID). Flags and parent
// come from `info` as for SHCreateMenuBar; info->hwndMB receives the bar.
struct tagSHMENUBARINFO;
BOOL CreateSoftKeyBar(tagSHMENUBARINFO* info, HMENU menu);

// The soft-key bar whose parent is this window (or NULL).
HWND FindSoftKeyBar(HWND parent);
