#include "tests/ui/test_listwindow_support.h"

#include <commctrl.h>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "listwindow/ItemEditor.h"
#include "listwindow/ListWindowState.h"

namespace lwtest {

ListContent Grocery() {
    ListContent content;
    content.fields = {Field(L"Done", 6, 30), Field(L"Item", 3, 90), Field(L"Qty", 5, 40), Field(L"Got", 6, 30)};
    content.items = {
        {{Choice(0), Txt(L"milk"), Txt(L"2"), Choice(0)}},
        {{Choice(1), Txt(L"Bread"), Txt(L"10"), Choice(0)}},
        {{Choice(0), Txt(L"apples"), Txt(L"1.5"), Choice(1)}},
    };
    return content;
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
        out.append(doctest::FieldChunks(f.name, f.type, f.width, L"", 0, 0, 0));
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

std::wstring WriteList(const std::wstring& name, const ListContent& content) {
    std::wstring path = TestFolder() + name;
    WriteBytes(path, ListBytes(content));
    return path;
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

void EditItem(ui::Script& s, UINT command, const wchar_t* text) {
    s.Step([command](ui::Dlg& d) { d.Command(command); });
    s.WaitFor(L"#32770", ResText(IDS_ITEM_EDIT_TITLE).c_str());
    s.Step([text](ui::Dlg& d) {
        if (!text) return d.SoftKey(ui::Right);  // Cancel
        d.SetFocusTo(kItemEditorFirstId + 1);
        SetWindowTextW(d.Item(kItemEditorFirstId + 1), text);
    });
    if (text) s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });  // Done
    s.WaitFor(L"#32770", L"Zorvel");
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
