#include "tests/ui/test_listwindow_support.h"

#include <commctrl.h>

#include "base/AppGlobals.h"
#include "listwindow/ListWindowState.h"

namespace lwtest {

Cell Choice(int v) {
    Cell c;
    c.choice = v;
    return c;
}

Cell Txt(const std::wstring& s) {
    Cell c;
    c.text = s;
    return c;
}

Cell When(int year, int month, int day, int hour, int minute) {
    Cell c;
    c.time.wYear = (WORD)year;
    c.time.wMonth = (WORD)month;
    c.time.wDay = (WORD)day;
    c.time.wHour = (WORD)hour;
    c.time.wMinute = (WORD)minute;
    return c;
}

static bool IsChoice(int type) { return type == 2 || type == 4 || type == 6 || type == 8; }
static bool IsMoment(int type) { return type == 0 || type == 1 || type == 7; }

std::vector<unsigned char> ListBytes(const ListContent& content) {
    Bytes out;
    std::wstring version = content.version;
    version.resize(4, L'\0');
    out.wchars(version).u32((uint32_t)content.fields.size()).u32((uint32_t)content.items.size());
    out.viewState(content.sortColumn, content.sortFlag);
    for (const FieldContent& f : content.fields)
        out.append(doctest::FieldChunks(f.name, f.type, f.width, f.defaultText.c_str(), f.defaultChoice, 0, 0));
    for (const ItemContent& item : content.items) {
        if (item.backColor != 0xFFFFFFFF) out.chunkU32(120, item.backColor);
        for (size_t i = 0; i < content.fields.size(); ++i) {
            uint32_t type = (uint32_t)content.fields[i].type;
            const Cell& c = item.cells[i];
            const SYSTEMTIME& t = c.time;
            if (IsChoice((int)type)) out.chunkU32(type, (uint32_t)c.choice);
            else if (IsMoment((int)type))
                out.chunk(type, Bytes().systemTime(t.wYear, t.wMonth, t.wDayOfWeek, t.wDay, t.wHour, t.wMinute,
                                                   t.wSecond, t.wMilliseconds));
            else out.chunkText(type, c.text);
        }
    }
    return out.v;
}

std::wstring TestFolder() {
    doctest::RemoveTree(L"\\zvlisttests\\");
    CreateDirectoryW(L"\\zvlisttests\\", nullptr);
    return L"\\zvlisttests\\";
}

INT_PTR RunList(ui::Script& script, const std::wstring& path, ListOpenRequest& request, const char* file, int line) {
    request = ListOpenRequest();
    request.module = hInstance;
    lstrcpynW(request.path, path.c_str(), MAX_PATH);
    request.saved = 0xEE;  // neither answer: shows whether the window wrote it
    // Every script starts once the window has settled: its focus timer has
    // put the focus on the list and the selection mark on row 0.
    ui::Script settle;
    settle.WaitUntil([](ui::Dlg& d) {
        HWND list = d.Item(kListViewControlId);
        if (!list || GetFocus() != list) return false;
        return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == 0 || SendMessageW(list, LVM_GETSELECTIONMARK, 0, 0) == 0;
    });
    if (!script.steps.empty()) script.steps.insert(script.steps.begin(), settle.steps.front());
    return ui::RunModal(script, [&] { return RunListWindow(nullptr, request); }, file, line);
}

std::vector<std::wstring> Column(ui::Dlg& d, int col) {
    std::vector<std::wstring> texts;
    int count = d.ListCount(kListViewControlId);
    for (int row = 0; row < count; ++row) texts.push_back(d.ListText(kListViewControlId, row, col));
    return texts;
}

void SelectRow(ui::Dlg& d, int row) {
    HWND list = d.Item(kListViewControlId);
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, (WPARAM)row, (LPARAM)&item);
    SendMessageW(list, LVM_SETSELECTIONMARK, 0, row);
    SetFocus(list);
}

}  // namespace lwtest
