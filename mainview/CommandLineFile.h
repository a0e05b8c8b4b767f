// A list or template named on the command line is opened at once, in its
// own window, and the program ends when that window closes.
#pragma once
#include <windows.h>

#include "base/TextBuffer.h"

void OpenCommandLineFile(HWND mainWindow, const TextBuffer& path);
