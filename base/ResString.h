// Texts and messages from the language module.
#pragma once
#include <windows.h>

#include <string>

#include "base/TextBuffer.h"

// Loads string `id` of `module` into `out` (empty when the module lacks it).
// Returns the number of characters, 0 for a missing ID. Texts stop at 1023.
int LoadResString(HINSTANCE module, UINT id, TextBuffer& out);

// String `id` of the language module.
std::wstring ResText(UINT id);

