// Texts and messages from the language module.
#pragma once
#include <windows.h>

#include <initializer_list>
#include <string>

#include "base/TextBuffer.h"

// Loads string `id` of `module` into `out` (empty when the module lacks it).
// Returns the number of characters, 0 for a missing ID. Texts stop at 1023.
int LoadResString(HINSTANCE module, UINT id, TextBuffer& out);

// String `id` of the language module.
std::wstring ResText(UINT id);

// String `id` of the language module with its "%s" placeholders replaced by
// `values` in order; a value is never read as a format.
std::wstring ResFormat(UINT id, std::initializer_list<std::wstring> values);

