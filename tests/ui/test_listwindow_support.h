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
    int defaultChoice = 0;
    std::wstring defaultText;
};

inline FieldContent Field(const std::wstring& name, int type, int width = 60) {
    FieldContent f;
    f.name = name;
    f.type = type;
    f.width = width;
    return f;
}

// One cell: a choice, a text or a moment, by the field's type.
struct Cell {
    int choice = 0;
    std::wstring text;
    SYSTEMTIME time = {};
};
Cell Choice(int v);
Cell Txt(const std::wstring& s);
Cell When(int year, int month, int day, int hour = 0, int minute = 0);

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

// The whole file for `content` as the layout defines it (the version in an
// 8-byte slot, as files of other versions have it).
std::vector<unsigned char> ListBytes(const ListContent& content);

// A folder of its own for the list tests ("\zvlisttests\"), emptied.
std::wstring TestFolder();
using doctest::FileExists;
using doctest::ReadBytes;
using doctest::WriteBytes;

// Writes `content` to `path` and runs the list window on it under `script`.
INT_PTR RunList(ui::Script& script, const std::wstring& path, ListOpenRequest& request, const char* file, int line);

// Texts of column `col` of every row, top to bottom.
std::vector<std::wstring> Column(ui::Dlg& d, int col);
// Selects and focuses row `row` as the navigation keys would.
void SelectRow(ui::Dlg& d, int row);

}  // namespace lwtest
