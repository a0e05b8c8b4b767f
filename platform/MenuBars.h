// Every window and dialog takes its soft keys from a menu resource: these
// two calls are the whole of what each one does with the shell for that.
#pragma once
#include <windows.h>

// The soft-key bar of `parent` built from menu `menuId` of `module`; NULL
// when it could not be made.
HWND CreateMenuBarFromMenu(HWND parent, HINSTANCE module, UINT menuId);

// Back reaches the bar's parent as WM_HOTKEY instead of taking its default action.
void OverrideBackKey(HWND menuBar);

// Relabels the soft key that sends `command` (or opens the popup with that ID).
void SetSoftKeyText(HWND menuBar, int command, const wchar_t* text);
