// The templates manager: the templates folder's templates, to make, edit and
// delete. Runs modally; returns its dialog's result.
#pragma once
#include <windows.h>

int RunTemplatesManager(HWND owner);
