// Text export and import as the user starts them: the file selection dialog
// ("File Select", filter "CSV File", extension ".CSV") picks the file, then
// the document code writes or reads it, and its messages are shown here.
#pragma once
#include <windows.h>

#include "base/CeString.h"
#include "document/ListDocument.h"

// Asks for a target file and exports `document` to it. Returns true when a
// file was written (cancel and failures give false; failures show IDS_EXPORT_CREATE_FAILED / IDS_ERROR_CAPTION).
bool exportCsv(const ListDocument& document, HWND owner);

// Asks for a text file and writes it as a new list in `categoryPath` (a
// folder path; its trailing "\" may be present or not). Column widths are
// the owner's client width divided by the field count. Returns true when a
// list was written; `listPathOut`, when given, receives its path.
bool importCsv(HWND owner, const wchar_t* categoryPath, CeString* listPathOut = nullptr);
