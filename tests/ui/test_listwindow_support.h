// Shared by the list window's UI tests: list files built byte by byte from
// the file layout (never by the writer under test), and a runner that opens
// the real list window on one.
#pragma once
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "listwindow/ListWindow.h"
#include "tests/core/test_doc_util.h"
#include "tests/harness/UiHarness.h"

namespace lwtest {

using doctest::Bytes;

// One field as the file holds it.
struct FieldContent {
    std::wstring name;
    int type;
    int width = 60;
};

inline FieldContent Field(const std::wstring& name, int type, int width = 60) { return {name, type, width}; }

// One cell: a choice, a text or a moment, by the field's type.
struct Cell {
    int choice = 0;
    std::wstring text;
    SYSTEMTIME time = {};
};
inline Cell Choice(int v) { return {v, L"", {}}; }
inline Cell Txt(const std::wstring& s) { return {0, s, {}}; }
inline Cell When(int year, int month, int day) {
    return {0, L"", {WORD(year), WORD(month), 0, WORD(day), 0, 0, 0, 0}};
}

struct ItemContent {
    std::vector<Cell> cells;
    uint32_t backColor = 0xFFFFFFFF;
};

struct ListContent {
    std::wstring version = L"1.7";
    int sortColumn = -1;
    int sortFlag = 0;
    std::vector<FieldContent> fields;
    std::vector<ItemContent> items;
};

// A shopping check list: Done (check), Item (text), Qty (number),
// Got (a second check column).
ListContent Grocery();

// The whole file for `content` as the layout defines it (the version in an
// 8-byte slot, as files of other versions have it).
std::vector<unsigned char> ListBytes(const ListContent& content);

// A folder of its own for the list tests ("\zvlisttests\"), emptied.
std::wstring TestFolder();
using doctest::FileExists;
using doctest::ReadBytes;
using doctest::WriteBytes;
// Writes `content` as `name` in a freshly emptied TestFolder(); returns its path.
std::wstring WriteList(const std::wstring& name, const ListContent& content);

// Runs the list window on `path` under `script`.
INT_PTR RunList(ui::Script& script, const std::wstring& path, ListOpenRequest& request,
                const char* file = __builtin_FILE(), int line = __builtin_LINE());

// Adds an item (`command` IDM_ADD_ITEM) or edits the selected one
// (IDM_EDIT_ITEM) through the item editor: field 1 is given `text` and the
// editor is confirmed, or cancelled when `text` is null.
void EditItem(ui::Script& s, UINT command, const wchar_t* text);

// Texts of column `col` of every row, top to bottom.
std::vector<std::wstring> Column(ui::Dlg& d, int col);
// Selects and focuses row `row` as the navigation keys would.
void SelectRow(ui::Dlg& d, int row);

}  // namespace lwtest
