// The list window driven in-process: opening, sorting, checking, colouring,
// menus, scrolling, saving and leaving, and files that go wrong (a save that
// fails part-way, a list damaged when it is opened), with saved files and
// their backups checked byte for byte.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/CsvDialogs.h"
#include "dialogs/FileSelectDialog.h"
#include "document/SafeWrite.h"
#include "listwindow/ItemEditor.h"
#include "listwindow/ListWindow.h"
#include "listwindow/ListWindowState.h"
#include "platform/Platform.h"
#include "platform/ScreenScale.h"
#include "settings/IconPicker.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace {

constexpr int kList = kListViewControlId;
using Texts = std::vector<std::wstring>;
using doctest::Bytes;
using doctest::FileExists;
using doctest::ReadBytes;
using doctest::WriteBytes;

// One field as the file holds it.
struct FieldContent {
    std::wstring name;
    int type;
    int width = 60;
};

FieldContent Field(const std::wstring& name, int type, int width = 60) { return {name, type, width}; }

// One cell: a choice, a text or a moment, by the field's type.
struct Cell {
    int choice = 0;
    std::wstring text;
    SYSTEMTIME time = {};
};
Cell Choice(int v) { return {v, L"", {}}; }
Cell Txt(const std::wstring& s) { return {0, s, {}}; }
Cell When(int year, int month, int day) {
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

// The whole file for `content` as the layout defines it (the version in an
// 8-byte slot, as files of other versions have it).
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
            const uint32_t type = (uint32_t)content.fields[i].type;
            const Cell& c = item.cells[i];
            const SYSTEMTIME& t = c.time;
            if (type == 2 || type == 4 || type == 6 || type == 8) out.chunkU32(type, (uint32_t)c.choice);  // choices
            else if (type == 0 || type == 1 || type == 7)  // moments
                out.chunk(type, Bytes().systemTime(t.wYear, t.wMonth, t.wDayOfWeek, t.wDay, t.wHour, t.wMinute,
                                                   t.wSecond, t.wMilliseconds));
            else out.chunkText(type, c.text);
        }
    }
    return out.v;
}

// A folder of its own for the list tests ("\zvlisttests\"), emptied.
std::wstring TestFolder() {
    doctest::RemoveTree(L"\\zvlisttests\\");
    CreateDirectoryW(L"\\zvlisttests\\", nullptr);
    return L"\\zvlisttests\\";
}

// Writes `content` as `name` in a freshly emptied TestFolder(); returns its path.
std::wstring WriteList(const std::wstring& name, const ListContent& content) {
    std::wstring path = TestFolder() + name;
    WriteBytes(path, ListBytes(content));
    return path;
}

// Runs the list window on `path` under `script`.
INT_PTR RunList(ui::Script& script, const std::wstring& path, ListOpenRequest& request,
                const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    request = ListOpenRequest();
    request.module = hInstance;
    lstrcpynW(request.path, path.c_str(), MAX_PATH);
    request.saved = 0xEE;  // neither answer: shows whether the window wrote it
    // Every script starts once the window has settled: its focus timer has
    // put the focus on the list and the selection mark on row 0.
    ui::Script settle;
    settle.WaitUntil([](ui::Dlg& d) {
        HWND list = d.Item(kList);
        if (!list || GetFocus() != list) return false;
        return SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == 0 || SendMessageW(list, LVM_GETSELECTIONMARK, 0, 0) == 0;
    });
    if (!script.steps.empty()) script.steps.insert(script.steps.begin(), settle.steps.front());
    return ui::RunModal(script, [&] { return RunListWindow(nullptr, request); }, file, line);
}

// Adds an item (`command` IDM_ADD_ITEM) or edits the selected one
// (IDM_EDIT_ITEM) through the item editor: field 1 is given `text` and the
// editor is confirmed, or cancelled when `text` is null.
void EditItem(ui::Script& s, UINT command, const wchar_t* text) {
    s.Step([command](ui::Dlg& d) { d.Command(command); });
    s.WaitFor(L"#32770", ResText(IDS_ITEM_EDIT_TITLE).c_str());
    s.Step([text](ui::Dlg& d) {
        if (!text) {
            d.SoftKey(ui::Right);  // Cancel
            return;
        }
        d.SetFocusTo(kItemEditorFirstId + 1);
        SetWindowTextW(d.Item(kItemEditorFirstId + 1), text);
    });
    if (text) s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });  // Done
    s.WaitFor(L"#32770", L"Zorvel");
}

// Texts of column `col` of every row, top to bottom.
Texts Column(ui::Dlg& d, int col) {
    Texts texts;
    for (int row = 0; row < d.ListCount(kList); ++row) texts.push_back(d.ListText(kList, row, col));
    return texts;
}

// Selects and focuses row `row` as the navigation keys would (-1: no row).
void SelectRow(ui::Dlg& d, int row) {
    HWND list = d.Item(kList);
    LVITEMW item = {};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = row < 0 ? 0 : LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, (WPARAM)row, (LPARAM)&item);
    SendMessageW(list, LVM_SETSELECTIONMARK, 0, row);
    SetFocus(list);
}

HWND Header(ui::Dlg& d) { return (HWND)SendMessageW(d.Item(kList), LVM_GETHEADER, 0, 0); }
int ColumnWidth(ui::Dlg& d, int col) { return (int)SendMessageW(d.Item(kList), LVM_GETCOLUMNWIDTH, col, 0); }

// Header item `column` with its text (up to 15 characters) in `text`.
HDITEMW HeaderItem(ui::Dlg& d, int column, wchar_t (&text)[16]) {
    HDITEMW item = {};
    item.mask = HDI_TEXT | HDI_FORMAT | HDI_BITMAP;
    item.pszText = text;
    item.cchTextMax = 16;
    SendMessageW(Header(d), HDM_GETITEMW, column, (LPARAM)&item);
    return item;
}

bool HeaderHasMark(ui::Dlg& d, int column) {
    wchar_t text[16];
    HDITEMW item = HeaderItem(d, column, text);
    return (item.fmt & HDF_BITMAP) && item.hbm;
}

void TapHeader(ui::Dlg& d, int column) {
    RECT rc = {};
    SendMessageW(Header(d), HDM_GETITEMRECT, column, (LPARAM)&rc);
    d.Tap(Header(d), (rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2);
}

// The popup menus on the screen.
std::vector<HWND> OpenMenus() {
    std::vector<HWND> menus;
    for (HWND w = GetTopWindow(nullptr); w; w = GetWindow(w, GW_HWNDNEXT)) {
        wchar_t name[16];
        if (IsWindowVisible(w) && GetClassNameW(w, name, 16) && lstrcmpW(name, L"#32768") == 0) menus.push_back(w);
    }
    return menus;
}

bool MenuOpen(ui::Dlg& d) { return d.MenuOpen(); }
bool MenuClosed(ui::Dlg& d) { return !d.MenuOpen(); }
bool MenuGrayed(HMENU menu, UINT item, UINT by = MF_BYCOMMAND) { return GetMenuState(menu, item, by) & MF_GRAYED; }

std::wstring BackupOf(const std::wstring& path) { return path.substr(0, path.size() - 3) + L"BAK"; }

uitest::BoxWant Box(UINT text, UINT caption, UINT style) { return {ResText(text), ResText(caption), style}; }
uitest::BoxWant LeaveUnsaved() {
    return Box(IDS_LEAVE_UNSAVED_TEXT, IDS_LEAVE_UNSAVED_CAPTION, MB_YESNO | MB_ICONQUESTION);
}

// The grocery list in a given item order (indexes into Grocery().items),
// with the view state it should be saved with.
ListContent GroceryAs(std::vector<int> order, int sortColumn, int flag) {
    ListContent content = Grocery();
    content.items.clear();
    for (int i : order) content.items.push_back(Grocery().items[(size_t)i]);
    content.sortColumn = sortColumn;
    content.sortFlag = flag;
    return content;
}

// One thing a user does in the list window, and what the window shows after it.
struct Act {
    enum Kind { Cmd, Header, Cell, Select, Key, Edit, Colour, Menu, Context } kind;
    int a = 0;  // command, key, row (Cell: of column `col`), palette entry (0: Cancel) or context menu entry
    int col = -1;                       // a column whose texts are then read ...
    std::wstring shows = L"";           // ... top to bottom, joined by '|'
    int marked = -2;                    // the column with the sort mark (-1: none; -2: not looked at)
    const wchar_t* selected = nullptr;  // the text in `col` of the one selected, focused row
    const wchar_t* typed = nullptr;     // Edit: the item's new text (nullptr: the editor is cancelled)
};

// Adds (IDM_ADD_ITEM) or edits an item; the item typed is then the one selected.
Act EditAct(UINT command, const wchar_t* typed, std::wstring shows) {
    return {Act::Edit, (int)command, typed ? 1 : -1, std::move(shows), -2, typed, typed};
}

// A session on one list: the acts, then Save (the left soft key) or Back
// with the answers given; the file must then hold `written`.
struct ListCase {
    const char* name;
    ListContent start;
    std::vector<Act> acts;
    bool save;
    std::vector<int> answers;
    ListContent written;
};

std::wstring Joined(const Texts& texts) {
    std::wstring out;
    for (const std::wstring& t : texts) out += (out.empty() ? L"" : L"|") + t;
    return out;
}

void CheckAct(ui::Dlg& d, const ListCase& c, size_t index) {
    const Act& act = c.acts[index];
    std::string where = std::string(c.name) + ", act " + std::to_string(index + 1);
    const std::wstring at = L" (" + std::wstring(where.begin(), where.end()) + L")";
    if (act.col >= 0) CHECK_EQ(Joined(Column(d, act.col)) + at, act.shows + at);
    for (int col = 0; act.marked != -2 && col < (int)c.start.fields.size(); ++col)
        if (HeaderHasMark(d, col) != (col == act.marked))
            zvtest::Fail(__FILE__, __LINE__, where + ": sort mark on column " + std::to_string(col));
    if (!act.selected) return;
    int mark = d.ListSelectionMark(kList);
    int selected = (int)SendMessageW(d.Item(kList), LVM_GETNEXTITEM, (WPARAM)-1, LVNI_SELECTED);
    if (d.ListFocused(kList) != mark || selected != mark || d.ListText(kList, mark, act.col) != act.selected)
        zvtest::Fail(__FILE__, __LINE__, where + ": the selected row is not " + zvtest::Show(act.selected));
}

void PlayAct(ui::Script& s, const Act& act) {
    switch (act.kind) {
    case Act::Cmd: s.Step([&](ui::Dlg& d) { d.Command((UINT)act.a); }); return;
    case Act::Header: s.Step([&](ui::Dlg& d) { TapHeader(d, act.a); }); return;
    case Act::Cell: s.Step([&](ui::Dlg& d) { d.TapCell(kList, act.a, act.col); }); return;
    case Act::Select: s.Step([&](ui::Dlg& d) { SelectRow(d, act.a); }); return;
    case Act::Key: s.Step([&](ui::Dlg& d) { d.Key((UINT)act.a); }); return;
    case Act::Edit: EditItem(s, (UINT)act.a, act.typed); return;
    case Act::Colour:
        s.Step([](ui::Dlg& d) { d.Command(IDM_ITEM_COLOR); });
        s.WaitFor(L"#32770", ResText(IDS_COLOR_TITLE).c_str());
        s.Step([&](ui::Dlg& d) {
            if (act.a) d.TapCenter(act.a);
            else d.Command(IDM_COLOR_CANCEL);
        });
        if (act.a) s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });  // Done
        s.WaitFor(L"#32770", L"Zorvel");
        return;
    case Act::Menu:  // the soft-key menu: the item commands grayed exactly without a selection; Back closes it
        s.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
        s.WaitUntil(MenuOpen);
        s.Step([](ui::Dlg& d) {
            HMENU menu = d.SoftKeyMenu(ui::Right);
            const bool none = d.ListSelectionMark(kList) < 0;
            CHECK(MenuGrayed(menu, IDM_EDIT_ITEM) == none && MenuGrayed(menu, IDM_DELETE_ITEM) == none);
            CHECK(MenuGrayed(menu, LISTWIN_POS_ROW_COLOR_POPUP, MF_BYPOSITION) == none);
            CHECK(!MenuGrayed(menu, IDM_ADD_ITEM));
            d.Back();
        });
        s.WaitUntil(MenuClosed);
        return;
    case Act::Context:  // the context menu on the list: entry `a` chosen, or closed with Back (0)
        s.Step([](ui::Dlg& d) {
            POINT at = {20, 40};
            ClientToScreen(d.Item(kList), &at);
            PostMessageW(d.hwnd, WM_CONTEXTMENU, (WPARAM)d.Item(kList), MAKELPARAM(at.x, at.y));
        });
        s.WaitUntil(MenuOpen);
        s.Step([&](ui::Dlg& d) {
            for (int i = 0; i < act.a; ++i) d.Key(VK_DOWN);
            if (act.a) d.Key(VK_RETURN);
            else d.Back();
        });
        s.WaitUntil(MenuClosed);
        return;
    }
}

}  // namespace

// A check list opens with its menus and a backup. The list icon and fitted
// columns count as changes: leaving asks, No keeps the window, Yes leaves
// the file as it was.
TEST_CASE(Ui_List_OpensCheckListWithMenusAndBackup) {
    ListContent content = Grocery();
    content.fields[3].name = L"";  // an empty name: " " in the header, its type's name in the menu
    std::wstring path = WriteList(L"Grocery - weekly.zvl", content);
    HWND listWindow = nullptr;
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 3);
        CHECK(Column(d, 1) == Texts({L"milk", L"Bread", L"apples"}));
        CHECK_EQ(d.ListText(kList, 1, 0), ResText(IDS_CHECK_SET));
        CHECK_EQ(d.Text(0), std::wstring(L"Zorvel"));
        CHECK(SendMessageW(d.hwnd, WM_GETICON, ICON_SMALL, 0) && SendMessageW(d.hwnd, WM_GETICON, ICON_BIG, 0));
        CHECK_EQ(d.SoftKeyCommand(ui::Left), IDM_SAVE);
        HMENU menu = d.SoftKeyMenu(ui::Right);
        CHECK(GetMenuState(menu, IDM_DELETE_CHECKED, MF_BYCOMMAND) != (UINT)-1);
        CHECK(ui::Dlg::MenuTexts(GetSubMenu(menu, LISTWIN_POS_SORT_POPUP)) ==
              Texts({L"Done", L"Item", L"Qty", ResText(IDS_TYPE_CHECK), ResText(IDS_NONE)}));
        wchar_t text[16] = {};
        HeaderItem(d, 3, text);
        CHECK_EQ(std::wstring(text), std::wstring(L" "));
        CHECK_EQ(ColumnWidth(d, 1), 90);  // stored widths are used when the list has items
        listWindow = d.hwnd;
        d.Command(IDM_LIST_ICON);
    });
    s.WaitUntil([&](ui::Dlg& d) { return d.hwnd != listWindow && d.Item(IconPicker::kIconListId); });
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });  // confirm without choosing
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) { d.Back(); });
    s.Step([&](ui::Dlg& d) { d.Command(IDM_AUTOSIZE_COLUMNS); });
    s.Step([&](ui::Dlg& d) {
        // Each column fits its widest text (at least ScaleX(5)) plus a margin.
        for (int i = 0; i < 4; ++i) CHECK(ColumnWidth(d, i) >= ScaleX(5) + ScaleX(16));
        CHECK(ColumnWidth(d, 1) > ScaleX(20) + ScaleX(16));  // "apples", "Bread", "milk"
        d.Back();
    });
    s.Answer(IDNO).Answer(IDYES);
    CHECK_EQ((int)RunList(s, path, req), 1);
    uitest::CheckBoxes({LeaveUnsaved(), LeaveUnsaved()}, ZV_HERE);
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadBytes(path), ListBytes(content));
    CHECK(FileExists(BackupOf(path)));
}

TEST_CASE(Ui_List_NonCheckListWithoutItemsComputesWidths) {
    ListContent content;
    content.fields = {Field(L"Due", 0, 77), Field(L"Prio", 2, 77), Field(L"Task", 3, 77), Field(L"Ok", 6, 77)};
    std::wstring path = WriteList(L"Empty.zvl", content);
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 0);
        HMENU menu = d.SoftKeyMenu(ui::Right);
        CHECK_EQ(GetMenuState(menu, IDM_DELETE_CHECKED, MF_BYCOMMAND), (UINT)-1);
        // Without "Delete checked items" the sort popup is still found by its place.
        CHECK_EQ(ui::Dlg::MenuTexts(GetSubMenu(menu, LISTWIN_POS_SORT_POPUP))[0], L"Due");
        int share = d.ClientRect(0).right / 4;
        CHECK_EQ(ColumnWidth(d, 0), share);
        CHECK_EQ(ColumnWidth(d, 2), share);
        CHECK_EQ(ColumnWidth(d, 3), ScaleX(30));
        // No items: a column click has nothing to sort by and changes nothing.
        TapHeader(d, 2);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(!HeaderHasMark(d, 2));
        d.Enter();  // the Action key does nothing outside a check list
        d.Back();
    });
    CHECK_EQ((int)RunList(s, path, req), 1);
    CHECK(ui::MessageBoxes().empty());
    CHECK_EQ((int)req.saved, 0);
}

// Sorting, checking, colouring, adding, editing, deleting and leaving, each as
// a user does it, with the file checked byte for byte at the end.
TEST_CASE(Ui_List_SessionsEndInTheirFiles) {
    std::wstring checked = ResText(IDS_CHECKED), unchecked = ResText(IDS_UNCHECKED);
    ListContent dates;
    dates.fields = {Field(L"Due", 0, 70), Field(L"Prio", 2, 30), Field(L"Task", 3, 90)};
    dates.items = {
        {{When(2007, 3, 1), Choice(0), Txt(L"first")}},     // normal
        {{When(2006, 12, 24), Choice(2), Txt(L"second")}},  // low
        {{When(2007, 3, 1), Choice(1), Txt(L"third")}},     // high
        {{When(2007, 3, 1), Choice(1), Txt(L"fourth")}},    // high
    };
    ListContent firstDeleted = Grocery(), twoDone = Grocery();
    firstDeleted.items.erase(firstDeleted.items.begin());
    twoDone.items[0].cells[0] = Choice(2);  // not exactly 1: stays on Delete checked
    ListContent deletedChecked = twoDone;
    deletedChecked.items.erase(deletedChecked.items.begin() + 1);
    ListContent toggled = Grocery();
    toggled.items[0].cells[3] = Choice(1);
    toggled.items[2].cells[0] = Choice(1);
    ListContent coloured = Grocery();
    coloured.items[0].backColor = RGB(0xFF, 0x66, 0x33);  // palette entry 27
    coloured.items[1].backColor = RGB(181, 219, 181);
    coloured.items[2].backColor = RGB(255, 255, 181);
    ListContent sortedByItem = GroceryAs({2, 1, 0}, 1, 1);
    ListContent withCheese = sortedByItem, withApricots = Grocery();
    withCheese.items.insert(withCheese.items.begin() + 2,
                            ItemContent{{Choice(0), Txt(L"Cheese"), Txt(L""), Choice(0)}});
    withApricots.items.push_back(ItemContent{{Choice(0), Txt(L"Apricots"), Txt(L""), Choice(0)}});

    ListContent staleOrder;
    staleOrder.fields = {Field(L"Done", 6, 30), Field(L"Item", 3, 90)};
    staleOrder.items = {{{Choice(0), Txt(L"milk")}}, {{Choice(1), Txt(L"Bread")}}, {{Choice(0), Txt(L"apples")}}};

    const ListCase cases[] = {
        // Flag 0 from the file: a text column sorts descending; the same column
        // again ascends; an item added to the sorted rows is placed by a search.
        {"sort twice, add", Grocery(),
         {{Act::Select, 1}, {Act::Cmd, IDM_SORT_BASE + 1, 1, L"milk|Bread|apples", 1},
          {Act::Cmd, IDM_SORT_BASE + 1, 1, L"apples|Bread|milk", 1},
          EditAct(IDM_ADD_ITEM, L"Cheese", L"apples|Bread|Cheese|milk")},
         true, {}, withCheese},
        // Another column keeps flag 0: numbers ascend; a tap on the same
        // header turns it; unsorted keeps the order and drops the mark.
        {"text then number", Grocery(),
         {{Act::Cmd, IDM_SORT_BASE + 1, 1, L"milk|Bread|apples"}, {Act::Cmd, IDM_SORT_BASE + 2, 2, L"1.5|2|10"},
          {Act::Header, 2, 2, L"10|2|1.5", 2}, {Act::Cmd, IDM_SORT_BASE + 4, 2, L"10|2|1.5", -1}},
         true, {}, GroceryAs({1, 0, 2}, -1, 1)},
        // Priority by rank (high first), dates ascending then descending;
        // equal keys: the later-created item first.
        {"dates and priorities", dates,
         {{Act::Cmd, IDM_SORT_BASE + 1, 2, L"third|fourth|first|second"},
          {Act::Cmd, IDM_SORT_BASE + 0, 2, L"second|fourth|third|first"},
          {Act::Cmd, IDM_SORT_BASE + 0, 2, L"fourth|third|first|second"}},
         false, {IDYES}, dates},
        // A tap turns any check cell and writes the texts the other way round
        // from the Action command; Enter and the Action command turn cell 0 only.
        {"taps and Action", Grocery(),
         {{Act::Cell, 0, 3, unchecked + L"|" + unchecked + L"|" + checked},
          {Act::Cell, 2, 0, unchecked + L"|" + checked + L"|" + unchecked}, {Act::Select, 1},
          {Act::Key, VK_RETURN, 0, unchecked + L"|" + unchecked + L"|" + unchecked},
          {Act::Cmd, IDOK, 0, unchecked + L"|" + checked + L"|" + unchecked}},
         true, {}, toggled},
        // Colour keys do nothing until Down has been pressed once; the
        // command colours the selected row too, and so does the picker
        // (whose Cancel keeps the colour).
        {"colours", Grocery(),
         {{Act::Select, 0}, {Act::Key, 'R'}, {Act::Key, VK_DOWN}, {Act::Key, 'G'}, {Act::Key, VK_DOWN},
          {Act::Cmd, IDM_ROW_YELLOW}, {Act::Select, 0}, {Act::Colour, 27}, {Act::Colour, 0}},
         true, {}, coloured},
        // Check all and uncheck all reset a list for reuse without marking it
        // changed: leaving asks nothing and the file stays as it was.
        {"check all", Grocery(),
         {{Act::Cmd, IDM_CHECK_ALL, 0, checked + L"|" + checked + L"|" + checked},
          {Act::Cmd, IDM_UNCHECK_ALL, 0, unchecked + L"|" + unchecked + L"|" + unchecked}, {Act::Cmd, IDM_CHECK_ALL}},
         false, {}, Grocery()},
        // Without a selection the item commands are grayed and do nothing.
        // Back in an open menu closes that menu only; the context menu's
        // third entry deletes the selected item.
        {"menus", Grocery(),
         {{Act::Select, -1}, {Act::Menu}, {Act::Cmd, IDM_EDIT_ITEM},
          {Act::Cmd, IDM_DELETE_ITEM, 1, L"milk|Bread|apples"}, {Act::Select, 0}, {Act::Menu}, {Act::Context, 0},
          {Act::Context, 3, 1, L"Bread|apples"}},
         true, {}, firstDeleted},
        {"delete checked", twoDone, {{Act::Cmd, IDM_DELETE_CHECKED, 1, L"milk|apples"}}, true, {}, deletedChecked},
        // Edit, a sort and Check all keep the item worked on selected.
        {"the item worked on stays selected", sortedByItem,
         {{Act::Select, 0}, EditAct(IDM_EDIT_ITEM, L"yoghurt", L"Bread|milk|yoghurt"), {Act::Select, 0},
          {Act::Cmd, IDM_SORT_BASE + 1, 1, L"yoghurt|milk|Bread", -2, L"Bread"},
          {Act::Cmd, IDM_CHECK_ALL, 1, L"yoghurt|milk|Bread", -2, L"Bread"}},
         false, {IDYES}, sortedByItem},
        // Check all changes the sort column's keys without sorting: an item
        // added afterwards is not placed by searching the stale order but
        // lands where a full re-sort puts it (equal checks by creation order).
        {"add after check all", staleOrder,
         {{Act::Cmd, IDM_SORT_BASE + 0, 1, L"milk|apples|Bread"}, {Act::Cmd, IDM_CHECK_ALL, 1, L"milk|apples|Bread"},
          EditAct(IDM_ADD_ITEM, L"Cheese", L"Cheese|milk|Bread|apples")},
         false, {IDYES}, staleOrder},
        {"add to an unsorted list", Grocery(),
         {EditAct(IDM_ADD_ITEM, L"Apricots", L"milk|Bread|apples|Apricots"), EditAct(IDM_ADD_ITEM, nullptr, L"")},
         true, {}, withApricots},
    };
    for (const ListCase& c : cases) {
        g_colorKeysArmed = 0;
        std::wstring path = WriteList(L"Grocery.zvl", c.start);
        std::vector<unsigned char> before = ReadBytes(path);
        ListOpenRequest req;
        ui::Script s;
        for (size_t i = 0; i < c.acts.size(); ++i) {
            PlayAct(s, c.acts[i]);
            s.Step([&, i](ui::Dlg& d) { CheckAct(d, c, i); });
        }
        s.Step([&](ui::Dlg& d) {
            if (c.save) d.SoftKey(ui::Left);
            else d.Back();
        });
        for (int answer : c.answers) s.Answer(answer);
        CHECK_EQ((int)RunList(s, path, req), 1);
        uitest::CheckBoxes(std::vector<uitest::BoxWant>(c.answers.size(), LeaveUnsaved()), ZV_HERE);
        CHECK_EQ((int)req.saved, c.save ? 1 : 0);
        if (ReadBytes(path) != (c.save ? ListBytes(c.written) : before))
            zvtest::Fail(ZV_HERE, std::string(c.name) + ": the file written");
    }
}

// Names in any script: a Greek list with an emoji, exported under a Japanese name with an accent.
TEST_CASE(Ui_List_ExportWritesTheUtf16File) {
    std::wstring path = WriteList(L"\x039a\x03ae\x03c0\x03bf\x03c2 \xd83d\xde00.zvl", Grocery());
    const std::wstring folder = L"\\zvlisttests\\";  // the list's own folder
    g_fileSelectLastFolder = folder.c_str();
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_EXPORT); });
    s.WaitFor(L"#32770", L"File Select");
    s.Step([&](ui::Dlg& d) {
        SetWindowTextW(d.Item(kFileSelectNameEdit), L"\x9031\x520a caf\x00e9");
        d.Command(IDC_FILE_SELECT_ACCEPT);
    });
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) { d.Back(); });
    CHECK_EQ((int)RunList(s, path, req), 1);
    uitest::CheckBoxes({Box(IDS_EXPORT_DONE_TEXT, IDS_EXPORT_DONE_CAPTION, MB_ICONEXCLAMATION)}, ZV_HERE);
    // The body is the export's own (checked byte for byte with the text files); here, its header row.
    std::wstring head = L"(" + ResText(IDS_TYPE_CHECK) + L")Done\t";
    std::vector<unsigned char> got = ReadBytes(folder + L"\x9031\x520a caf\x00e9.CSV");
    got.resize(std::min(got.size(), 2 + 2 * head.size()));
    CHECK_BYTES(got, Bytes().u16(0xFEFF).wchars(head).v);
}

// The main window's import, as the user gives it: pick the text file, get a
// new list of the same name in the category.
TEST_CASE(Ui_List_ImportPicksAFileAndWritesTheList) {
    std::wstring category = TestFolder();
    std::wstring source = category + L"csv\\";
    CreateDirectoryW(source.c_str(), nullptr);
    std::wstring head = L"(" + ResText(IDS_TYPE_TEXT) + L")Item\t(" + ResText(IDS_TYPE_NUMBER) + L")Qty\r\n";
    WriteBytes(source + L"Pantry.CSV", Bytes().u16(0xFEFF).wchars(head + L"milk\t2\t\r\ntea\t1\t").v);
    g_fileSelectLastFolder = source.c_str();
    CeString listPath;
    ui::Script s;
    s.WaitFor(L"#32770", L"File Select");
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListText(kFileSelectList, d.ListSelectionMark(kFileSelectList)), std::wstring(L"Pantry.CSV"));
        d.SoftKey(ui::Left);
    });
    INT_PTR imported = ui::RunModal(s, [&] { return (INT_PTR)importCsv(nullptr, category.c_str(), &listPath); });
    CHECK_EQ((int)imported, 1);
    CHECK_EQ(std::wstring(listPath.c_str()), category + L"Pantry.zvl");
    ListContent want;
    want.fields = {Field(L"Item", 3, 0), Field(L"Qty", 5, 0)};  // no owner: no width to share
    want.items = {{{Txt(L"milk"), Txt(L"2")}}, {{Txt(L"tea"), Txt(L"1")}}};
    CHECK_BYTES(ReadBytes(category + L"Pantry.zvl"), ListBytes(want));
}

// At both densities: a row is tall enough for a check box and a line of
// text; Right scrolls a list wider than the screen and Left scrolls back,
// moving no row; a submenu of a soft-key menu opens on the phone screen, not
// beside it.
TEST_CASE(Ui_FirstUse_RowsScrollingAndSubmenus) {
    ListContent content = Grocery();
    for (FieldContent& field : content.fields) field.width = 200;
    auto originX = [](ui::Dlg& d) { return GetScrollPos(d.Item(kList), SB_HORZ); };
    for (int dpi : {96, 192}) {
        uitest::DensityScope density(dpi);
        std::wstring path = WriteList(L"First use.zvl", content);
        ListOpenRequest req;
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            RECT row = {LVIR_BOUNDS, 0, 0, 0};
            SendMessageW(d.Item(kList), LVM_GETITEMRECT, 0, (LPARAM)&row);
            CHECK((int)(row.bottom - row.top) >= ScaleY(12) + ScaleY(2));  // the check bitmap and a margin
            CHECK_EQ(originX(d), 0);
            d.Key(VK_RIGHT);
        });
        s.Step([&](ui::Dlg& d) {
            CHECK(originX(d) > 0);
            d.Key(VK_LEFT);
            d.Key(VK_LEFT);
        });
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(originX(d), 0);
            CHECK_EQ(d.ListSelectionMark(kList), 0);
            d.SoftKey(ui::Right);
        });
        s.WaitUntil(MenuOpen);
        s.Step([](ui::Dlg& d) {
            // The sort submenu's number: entries before it that are not separators.
            HMENU menu = d.SoftKeyMenu(ui::Right);
            int number = 0;
            for (int pos = 0; pos <= LISTWIN_POS_SORT_POPUP; ++pos)
                if (!(GetMenuState(menu, (UINT)pos, MF_BYPOSITION) & MF_SEPARATOR)) ++number;
            d.Char((wchar_t)(L'0' + number % 10));
        });
        s.WaitUntil([](ui::Dlg&) { return OpenMenus().size() == 2; });
        s.Step([](ui::Dlg&) {
            RECT phone, r;
            GetPhoneScreenRect(&phone);
            for (HWND menu : OpenMenus()) {
                GetWindowRect(menu, &r);
                CHECK(r.left >= phone.left && r.right <= phone.right);
                CHECK(r.top >= phone.top && r.bottom <= phone.bottom);
            }
            EndMenu();
        });
        s.WaitUntil(MenuClosed);
        s.Step([](ui::Dlg& d) { d.Back(); });
        CHECK_EQ((int)RunList(s, path, req), 1);
    }
}

// The window stays open with its changes; left unsaved, the list and its
// backup are the good list, opened again too.
TEST_CASE(Ui_Damaged_FailedSaveLeaveReopenKeepsTheBackup) {
    const std::vector<unsigned char> good = ListBytes(Grocery());
    std::wstring path = WriteList(L"Shop.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        d.Command(IDM_SORT_BASE + 1);
        setWriteFaultAfter(40);  // the disk fills up part-way through the save
        d.SoftKey(ui::Left);
    });
    s.Step([&](ui::Dlg& d) {
        setWriteFaultAfter(-1);
        CHECK(Column(d, 1) == Texts({L"milk", L"Bread", L"apples"}));
        d.Back();
    });
    s.Answer(IDOK).Answer(IDYES);
    CHECK_EQ((int)RunList(s, path, req), 1);
    setWriteFaultAfter(-1);
    uitest::BoxWant failed = Box(IDS_SAVE_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
    failed.text += L"\n\n" + ResText(IDS_CAUSE_DISK_FULL);
    uitest::CheckBoxes({failed, LeaveUnsaved()}, ZV_HERE);
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadBytes(path), good);
    CHECK_BYTES(ReadBytes(BackupOf(path)), good);

    // Opened again: the list and its backup are the good list still.
    ui::Script again;
    again.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 3);
        d.Back();
    });
    CHECK_EQ((int)RunList(again, path, req), 1);
    CHECK(ui::MessageBoxes().empty());
    CHECK_BYTES(ReadBytes(path), good);
    CHECK_BYTES(ReadBytes(BackupOf(path)), good);
}

// A list of another version is refused without a backup. A cut list opens
// with what could be read and asks before saving.
TEST_CASE(Ui_Damaged_OtherVersionRefusedCutListOpensAndAsksBeforeSaving) {
    ListContent old = Grocery();
    old.version = L"1.6";
    std::wstring path = WriteList(L"Old.zvl", old);
    ListOpenRequest req;
    ui::Script refused;
    CHECK_EQ((int)RunList(refused, path, req), 1);
    uitest::CheckBoxes({Box(IDS_LIST_VERSION_BAD, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION)}, ZV_HERE);
    CHECK(!FileExists(BackupOf(path)));

    const std::vector<unsigned char> good = ListBytes(Grocery());
    const std::vector<unsigned char> cut(good.begin(), good.end() - 3);
    path = WriteList(L"Shop.zvl", Grocery());
    WriteBytes(BackupOf(path), good);
    WriteBytes(path, cut);
    uitest::BoxWant partly = Box(IDS_LIST_PARTLY_READ, IDS_SAVE_DAMAGED_CAPTION, MB_ICONEXCLAMATION);
    partly.text.replace(partly.text.find(L"%s"), 2, L"2 of 3");

    // No to the question: nothing is written, the backup stays good.
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 2);
        d.SoftKey(ui::Left);
    });
    s.Step([&](ui::Dlg& d) { d.Back(); });
    s.Answer(IDOK).Answer(IDNO);
    CHECK_EQ((int)RunList(s, path, req), 1);
    uitest::CheckBoxes({partly, Box(IDS_SAVE_DAMAGED_TEXT, IDS_SAVE_DAMAGED_CAPTION, MB_YESNO | MB_ICONQUESTION)},
                       ZV_HERE);
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadBytes(path), cut);
    CHECK_BYTES(ReadBytes(BackupOf(path)), good);

    // Yes: the list is saved whole with the items that could be read.
    ui::Script yes;
    yes.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });
    yes.Answer(IDOK).Answer(IDYES);
    CHECK_EQ((int)RunList(yes, path, req), 1);
    CHECK_EQ((int)req.saved, 1);
    ListContent two = Grocery();
    two.items.pop_back();
    CHECK_BYTES(ReadBytes(path), ListBytes(two));
    CHECK_BYTES(ReadBytes(BackupOf(path)), good);
}
