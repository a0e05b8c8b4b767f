// The main window "ZorvelConsole": its soft-key bar, its commands and the
// hand-over of a file named on the command line.
#pragma once
#include <windows.h>

LRESULT CALLBACK MainWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
HWND CreateMainWindow(HINSTANCE instance);

extern HWND g_hMainMenuBar;
