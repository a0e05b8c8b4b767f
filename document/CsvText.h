// Export and import of a list as tab-separated UTF-16 text (".CSV").
//
// Export layout: FF FE; header cells "(" type name ")" field name separated
// by TAB (none after the last); then for each item CR LF followed by every
// value's text and a TAB. The file does not end with a line break.
//
// The functions here take file paths; the file selection dialog and the
// message boxes are added by the callers (dialogs/CsvDialogs.h). What the
// user is to be told comes back with the result as a DocMessage.
#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "base/CeString.h"
#include "document/DocMessages.h"
#include "document/ListDocument.h"

enum class CsvStatus {
    Ok,             // export written / list written
    CannotCreate,   // export target could not be created (8166)
    CannotOpen,     // import source could not be opened, or too large (8169)
    Declined,       // the list exists and the user did not answer Yes (8183)
    ListNotWritten, // the new list file could not be created (8093)
};
using CsvResult = DocResult<CsvStatus>;

// ---- export ----------------------------------------------------------------

// The bytes of an export of `doc` (mark, header row, rows).
std::vector<unsigned char> buildCsvBytes(const ListDocument& doc);
// Writes the export safely: an existing file is replaced only once the new
// one is complete. The message is 8166/8068 (exclamation) with the cause on
// failure (the file unchanged), 8167/8168 (exclamation) when done.
CsvResult exportCsvToFile(const ListDocument& doc, const wchar_t* path);

// ---- import ----------------------------------------------------------------

// What an import file holds before it becomes a list: the fields of the
// header row and the cells of each row (not checked against the fields).
struct CsvTable {
    std::vector<FieldDef> fields;  // at most 50; header cells past 50 are ignored
    std::vector<std::vector<std::wstring>> rows;
};

// Import limits: a file may be large, but the list it makes must stay
// reasonable, since a one-character row costs a whole item.
constexpr size_t kMaxImportRows = 1000000;
constexpr size_t kMaxImportCells = 4000000;  // rows x fields

// Parses import text (after the byte-order mark, one wchar_t per character).
void parseCsvText(const wchar_t* text, size_t length, CsvTable& table);
// Reads an import file into text by its byte-order mark: FF FE UTF-16LE,
// FE FF UTF-16BE, EF BB BF UTF-8; without a mark one byte per character
// (each byte taken as the character of that code).
// False when the file cannot be opened or read.
bool readCsvFileText(const wchar_t* path, std::wstring& text);
// Turns import text into a list document: view state -1/0, no icon, every
// columnWidth = clientWidth / field count, cells converted by their field's
// type (dates as month-day-year text, choices by their texts, an empty
// Selection as 11); missing cells are empty (choice 0, Selection 11);
// cells past the field count are dropped. False (document empty) when the
// text holds more than kMaxImportRows rows or kMaxImportCells cells, or its
// rows would take more memory than a list file of its size may.
bool csvTextToDocument(const wchar_t* text, size_t length, int clientWidth, ListDocument& doc);
// The list path of an import: categoryPath + "\" + file name without its
// extension + ".zvl", doubled backslashes collapsed.
CeString importListPath(const wchar_t* textPath, const wchar_t* categoryPath);

// Asked before an import replaces an existing list, with the question to
// put (8183 with the list name / 8184, Yes/No, question icon); true replaces
// the list.
using ReplaceQuestion = std::function<bool(const DocMessage& question)>;

// Reads `textPath` and writes a new list in `categoryPath`. The message is
// 8169/8068 (plain) when the file cannot be opened and 8093/8068 (plain)
// when the list cannot be created. An existing list is replaced only when
// `askReplace` answers true; without it the import is declined (no
// message). `listPathOut` receives the new list's path.
CsvResult importCsvFile(const wchar_t* textPath, const wchar_t* categoryPath, int clientWidth,
                        const ReplaceQuestion& askReplace = nullptr, CeString* listPathOut = nullptr);
