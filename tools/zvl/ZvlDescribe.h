// Texts that describe a loaded file: shared by info, show and show --json.
#pragma once
#include <string>

#include "document/ListDocument.h"

// The code name of a type ("Date" ... "Selection"), independent of the
// language; "Unknown" outside 0..8.
const wchar_t* TypeCodeName(FieldType type);
// What a new item of this field starts with, as the field editor shows it
// ("Today", "08:30", "High", the default text ...).
std::wstring DefaultDescription(const FieldDef& field);
// Whether the stored sort flag means ascending order for this field type:
// flag 1 sorts text, priority, yes/no and selection columns ascending, but
// dates, times, numbers and check marks descending.
bool SortIsAscending(FieldType type, bool flag);
// A cell's display text with tabs and line breaks made blanks, so that one
// item stays one line.
std::wstring OneLineCell(const wchar_t* text);
