// The list window driven in-process: opening, sorting, checking, colouring,
// saving and leaving, with saved files checked byte for byte.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/FileSelectDialog.h"
#include "dialogs/CsvDialogs.h"
#include "listwindow/ListSort.h"
#include "settings/IconPicker.h"
#include "listwindow/ListWindowState.h"
#include "tests/framework/ZvTest.h"
#include "tests/ui/test_listwindow_support.h"

using namespace lwtest;

namespace {

constexpr int kList = kListViewControlId;
using Texts = std::vector<std::wstring>;

// A shopping check list: Done (check), Item (text), Qty (number),
// Got (a second check column).
ListSpec Grocery() {
    ListSpec content;
    content.fields = {Field(L"Done", 6, 30), Field(L"Item", 3, 90), Field(L"Qty", 5, 40), Field(L"Got", 6, 30)};
    content.items = {
        {{Choice(0), Txt(L"milk"), Txt(L"2"), Choice(0)}},
        {{Choice(1), Txt(L"Bread"), Txt(L"10"), Choice(0)}},
        {{Choice(0), Txt(L"apples"), Txt(L"1.5"), Choice(1)}},
    };
    return content;
}

std::wstring WriteList(const std::wstring& name, const ListSpec& content) {
    std::wstring path = TestFolder() + name;
    WriteFileBytes(path, ListBytes(content));
    return path;
}

#define RUN_LIST(s, path, req) RunList(s, path, req, __FILE__, __LINE__)

}  // namespace

TEST_CASE(Ui_List_OpensCheckListWithMenusAndBackup) {
    ListSpec content = Grocery();
    content.fields[3].name = L"";  // an empty name: " " in the header, its type's name in the menu
    std::wstring path = WriteList(L"Grocery - weekly.zvl", content);
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 3);
        CHECK(Column(d, 1) == Texts({L"milk", L"Bread", L"apples"}));
        CHECK_EQ(d.ListText(kList, 1, 0), ResText(IDS_CHECK_SET));
        CHECK_EQ(d.Text(0), std::wstring(L"Zorvel"));
        CHECK_EQ(d.SoftKeyCommand(ui::Left), IDM_SAVE);
        HMENU menu = d.SoftKeyMenu(ui::Right);
        CHECK(GetMenuState(menu, IDM_DELETE_CHECKED, MF_BYCOMMAND) != (UINT)-1);
        Texts sortMenu = ui::Dlg::MenuTexts(GetSubMenu(menu, LISTWIN_POS_SORT_POPUP));
        CHECK(sortMenu.size() == 5u);
        if (sortMenu.size() == 5u) {
            CHECK(sortMenu[0].find(L"Done") != std::wstring::npos);
            CHECK(sortMenu[3].find(ResText(IDS_TYPE_CHECK)) != std::wstring::npos);
            CHECK(sortMenu[4].find(ResText(IDS_NONE)) != std::wstring::npos);
        }
        HWND header = (HWND)SendMessageW(d.Item(kList), LVM_GETHEADER, 0, 0);
        wchar_t text[16] = {};
        HDITEMW item = {};
        item.mask = HDI_TEXT;
        item.pszText = text;
        item.cchTextMax = 16;
        SendMessageW(header, HDM_GETITEMW, 3, (LPARAM)&item);
        CHECK_EQ(std::wstring(text), std::wstring(L" "));
        // Stored widths are used when the list has items.
        CHECK_EQ((int)SendMessageW(d.Item(kList), LVM_GETCOLUMNWIDTH, 1, 0), 90);
        d.Back();
    });
    INT_PTR result = RUN_LIST(s, path, req);
    CHECK_EQ((int)result, 1);
    CHECK(ui::MessageBoxes().empty());
    CHECK_EQ((int)req.saved, 0);
    CHECK(FileExists(path.substr(0, path.size() - 3) + L"BAK"));
}

// Text columns sort by the locale's sort keys; they must order exactly as
// CompareStringW (system locale, case ignored) orders the same texts.
TEST_CASE(Ui_List_TextSortMatchesCompareString) {
    const wchar_t* texts[] = {L"apple", L"Apple", L"APPLE", L"apples", L"b", L"B", L"\x00e9t\x00e9", L"ete",
                              L"\x00c9T\x00c9", L"co-op", L"coop", L"co op", L"it's", L"its", L"10", L"9",
                              L"", L" ", L"a1", L"a01", L"zebra", L"\x00c5ngstr\x00f6m", L"Zulu"};
    const int n = (int)(sizeof texts / sizeof texts[0]);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            int byCompare = CompareStringW(LOCALE_SYSTEM_DEFAULT, NORM_IGNORECASE, texts[i], -1, texts[j], -1) - 2;
            ListDocument doc;
            FieldDef field;
            field.type = FieldType::Text;
            doc.fields.push_back(field);
            for (int k : {i, j}) {
                ListItem item;
                item.values.resize(1);
                item.values[0].storedType = FieldType::Text;
                item.values[0].text = texts[k];
                item.serial = doc.nextSerial++;
                doc.items.push_back(std::move(item));
            }
            // Flag 1 sorts text ascending; equal texts keep the later item first.
            sortListItems(doc.items, 0, FieldType::Text, true);
            uint32_t firstSerial = doc.items.front().serial;
            uint32_t want = byCompare < 0 ? 0u : byCompare > 0 ? 1u : 1u;
            if (firstSerial != want)
                zvtest::Fail(__FILE__, __LINE__, "order of " + zvtest::Show(texts[i]) + " and " + zvtest::Show(texts[j]));
        }
    }
}

namespace {

// The grocery list in a given item order (indexes into Grocery().items),
// with the view state it should be saved with.
ListSpec GroceryAs(std::vector<int> order, int sortColumn, int flag) {
    ListSpec base = Grocery();
    ListSpec content = base;
    content.items.clear();
    for (int i : order) content.items.push_back(base.items[(size_t)i]);
    content.sortColumn = sortColumn;
    content.sortFlag = flag;
    return content;
}

bool HeaderHasMark(ui::Dlg& d, int column) {
    HWND header = (HWND)SendMessageW(d.Item(kList), LVM_GETHEADER, 0, 0);
    HDITEMW item = {};
    item.mask = HDI_FORMAT | HDI_BITMAP;
    SendMessageW(header, HDM_GETITEMW, column, (LPARAM)&item);
    return (item.fmt & HDF_BITMAP) && item.hbm;
}

void TapHeader(ui::Dlg& d, int column) {
    HWND header = (HWND)SendMessageW(d.Item(kList), LVM_GETHEADER, 0, 0);
    RECT rc = {};
    SendMessageW(header, HDM_GETITEMRECT, column, (LPARAM)&rc);
    d.Tap(header, (rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2);
}

void CheckBox(const ui::MessageBoxRecord& box, UINT text, UINT caption, UINT buttons, UINT icon, const char* file,
              int line) {
    CHECK_EQ_AT(box.text, ResText(text), file, line);
    CHECK_EQ_AT(box.caption, ResText(caption), file, line);
    CHECK_EQ_AT(box.buttons, buttons, file, line);
    CHECK_EQ_AT(box.icon, icon, file, line);
}

}  // namespace

TEST_CASE(Ui_List_NonCheckListWithoutItemsComputesWidths) {
    ListSpec content;
    content.fields = {Field(L"Due", 0, 77), Field(L"Prio", 2, 77), Field(L"Task", 3, 77), Field(L"Ok", 6, 77)};
    std::wstring path = WriteList(L"Empty.zvl", content);
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 0);
        HMENU menu = d.SoftKeyMenu(ui::Right);
        CHECK_EQ(GetMenuState(menu, IDM_DELETE_CHECKED, MF_BYCOMMAND), (UINT)-1);
        int share = d.ClientRect(0).right / 4;
        HWND list = d.Item(kList);
        CHECK_EQ((int)SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0), share);
        CHECK_EQ((int)SendMessageW(list, LVM_GETCOLUMNWIDTH, 2, 0), share);
        CHECK_EQ((int)SendMessageW(list, LVM_GETCOLUMNWIDTH, 3, 0), ScaleX(30));
        // No items: a column click has nothing to sort by and changes nothing.
        TapHeader(d, 2);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(!HeaderHasMark(d, 2));
        d.Enter();  // the Action key does nothing outside a check list
        d.Back();
    });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    CHECK(ui::MessageBoxes().empty());
    CHECK_EQ((int)req.saved, 0);
}

TEST_CASE(Ui_List_SortTwiceReversesAndSavesTheOrder) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        SelectRow(d, 1);
        d.Command(IDM_SORT_BASE + 1);
    });
    s.Step([&](ui::Dlg& d) {
        // Flag 0 from the file: a text column sorts descending.
        CHECK(Column(d, 1) == Texts({L"milk", L"Bread", L"apples"}));
        // The selected item stays selected.
        CHECK_EQ(d.ListSelectionMark(kList), 1);
        CHECK_EQ(d.ListFocused(kList), 1);
        CHECK(HeaderHasMark(d, 1));
        CHECK(!HeaderHasMark(d, 0));
        d.Command(IDM_SORT_BASE + 1);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 1) == Texts({L"apples", L"Bread", L"milk"}));
        d.SoftKey(ui::Left);  // Save
    });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    CHECK(ui::MessageBoxes().empty());
    CHECK_EQ((int)req.saved, 1);
    CHECK_BYTES(ReadFileBytes(path), ListBytes(GroceryAs({2, 1, 0}, 1, 1)));
}

TEST_CASE(Ui_List_TextThenNumberSortInOppositeSenses) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_SORT_BASE + 1); });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 1) == Texts({L"milk", L"Bread", L"apples"}));
        d.Command(IDM_SORT_BASE + 2);  // another column keeps flag 0: numbers ascend
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 2) == Texts({L"1.5", L"2", L"10"}));
        TapHeader(d, 2);  // the same column by a tap: the flag turns, numbers descend
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 2) == Texts({L"10", L"2", L"1.5"}));
        CHECK(HeaderHasMark(d, 2));
        d.Command(IDM_SORT_BASE + 4);  // unsorted: the order stays, the mark goes
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 2) == Texts({L"10", L"2", L"1.5"}));
        CHECK(!HeaderHasMark(d, 2));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    CHECK_BYTES(ReadFileBytes(path), ListBytes(GroceryAs({1, 0, 2}, -1, 1)));
}

TEST_CASE(Ui_List_DatesAndPrioritiesSortByMeaning) {
    ListSpec content;
    content.fields = {Field(L"Due", 0, 70), Field(L"Prio", 2, 30), Field(L"Task", 3, 90)};
    content.items = {
        {{When(2007, 3, 1), Choice(0), Txt(L"first")}},   // normal
        {{When(2006, 12, 24), Choice(2), Txt(L"second")}}, // low
        {{When(2007, 3, 1), Choice(1), Txt(L"third")}},   // high
        {{When(2007, 3, 1), Choice(1), Txt(L"fourth")}},  // high
    };
    std::wstring path = WriteList(L"Dates.zvl", content);
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_SORT_BASE + 1); });
    s.Step([&](ui::Dlg& d) {
        // Priority by rank, flag 0: high first; equal ranks keep creation order.
        CHECK(Column(d, 2) == Texts({L"third", L"fourth", L"first", L"second"}));
        d.Command(IDM_SORT_BASE + 0);
    });
    s.Step([&](ui::Dlg& d) {
        // Dates ascend with flag 0; equal dates put the later-created first.
        CHECK(Column(d, 2) == Texts({L"second", L"fourth", L"third", L"first"}));
        d.Command(IDM_SORT_BASE + 0);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 2) == Texts({L"fourth", L"third", L"first", L"second"}));
        d.Back();
    });
    s.Answer(IDYES);
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    CHECK_EQ(ui::MessageBoxes().size(), 1u);
    CHECK_EQ((int)req.saved, 0);
}

TEST_CASE(Ui_List_AddLandsAtItsSortedPlace) {
    ListSpec content = GroceryAs({2, 1, 0}, 1, 1);  // saved sorted by Item, ascending
    std::wstring path = WriteList(L"Grocery.zvl", content);
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_ADD_ITEM); });
    s.WaitFor(L"#32770", ResText(IDS_ITEM_EDIT_TITLE).c_str());
    s.Step([&](ui::Dlg& d) {
        d.SetFocusTo(401);
        d.Type(L"Cheese");
    });
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });  // Done
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 1) == Texts({L"apples", L"Bread", L"Cheese", L"milk"}));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    ListSpec want = content;
    ItemSpec cheese;
    cheese.cells = {Choice(0), Txt(L"Cheese"), Txt(L""), Choice(0)};
    want.items.insert(want.items.begin() + 2, cheese);
    CHECK_BYTES(ReadFileBytes(path), ListBytes(want));
}

TEST_CASE(Ui_List_AddToUnsortedListAppends) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_ADD_ITEM); });
    s.WaitFor(L"#32770", ResText(IDS_ITEM_EDIT_TITLE).c_str());
    s.Step([&](ui::Dlg& d) {
        d.SetFocusTo(401);
        d.Type(L"Apricots");
    });
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 1) == Texts({L"milk", L"Bread", L"apples", L"Apricots"}));
        d.Command(IDM_ADD_ITEM);
    });
    s.WaitFor(L"#32770", ResText(IDS_ITEM_EDIT_TITLE).c_str());
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Right); });  // Cancel: nothing is added
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 4);
        d.Back();
    });
    s.Answer(IDYES);
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    CHECK_EQ(ui::MessageBoxes().size(), 1u);
}

TEST_CASE(Ui_List_TapTogglesAnyCheckCellEnterOnlyCellZero) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.TapCell(kList, 0, 3); });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(g_listWindow.rows[0]->values[3].choice, 1);
        CHECK_EQ(g_listWindow.rows[0]->values[0].choice, 0);
        // A tap writes the texts the other way round from the Action command.
        CHECK_EQ(d.ListText(kList, 0, 3), ResText(IDS_UNCHECKED));
        d.TapCell(kList, 2, 0);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(g_listWindow.rows[2]->values[0].choice, 1);
        SelectRow(d, 1);
        d.Enter();  // row 1: Done 1 -> 0, Got stays
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(g_listWindow.rows[1]->values[0].choice, 0);
        CHECK_EQ(g_listWindow.rows[1]->values[3].choice, 0);
        // Enter reaches the window through the dialog manager as the Action
        // command, and leaves the Action's text.
        CHECK_EQ(d.ListText(kList, 1, 0), ResText(IDS_UNCHECKED));
        d.Command(IDOK);  // the Action command on row 1 again: 0 -> 1
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(g_listWindow.rows[1]->values[0].choice, 1);
        CHECK_EQ(d.ListText(kList, 1, 0), ResText(IDS_CHECKED));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    ListSpec want = Grocery();
    want.items[0].cells[3] = Choice(1);
    want.items[2].cells[0] = Choice(1);
    CHECK_BYTES(ReadFileBytes(path), ListBytes(want));
}

TEST_CASE(Ui_List_ColourKeysDeadUntilDown) {
    g_colorKeysArmed = 0;
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        SelectRow(d, 0);
        d.Key('R');
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(g_listWindow.rows[0]->backColor, kNoBackColor);
        CHECK_EQ((int)g_listWindow.modified, 0);
        d.Key(VK_DOWN);  // arms the colour keys and moves to row 1
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListSelectionMark(kList), 1);
        d.Key('G');
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(g_listWindow.rows[1]->backColor, (COLORREF)RGB(181, 219, 181));
        d.Command(IDM_ROW_YELLOW);  // the command colours the selected row too
    });
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    ListSpec want = Grocery();
    want.items[1].backColor = RGB(255, 255, 181);
    CHECK_BYTES(ReadFileBytes(path), ListBytes(want));
}

// Check all and uncheck all reset a list for reuse without marking it
// changed, so leaving afterwards asks nothing and the file stays as it was.
TEST_CASE(Ui_List_LeaveAfterCheckAllAsksNothing) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    std::vector<unsigned char> before = ReadFileBytes(path);
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_CHECK_ALL); });
    s.Step([&](ui::Dlg& d) {
        for (int row = 0; row < 3; ++row) CHECK_EQ(d.ListText(kList, row, 0), ResText(IDS_CHECKED));
        d.Command(IDM_UNCHECK_ALL);
    });
    s.Step([&](ui::Dlg& d) {
        for (int row = 0; row < 3; ++row) CHECK_EQ(g_listWindow.rows[(size_t)row]->values[0].choice, 0);
        d.Command(IDM_CHECK_ALL);
    });
    s.Step([&](ui::Dlg& d) { d.Back(); });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    CHECK(ui::MessageBoxes().empty());
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadFileBytes(path), before);
}

TEST_CASE(Ui_List_FailedSaveKeepsTheWindowOpen) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    std::vector<unsigned char> before = ReadFileBytes(path);
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    ListOpenRequest req;
    ui::Script s;
    // Wine running as root writes read-only files all the same, so the file
    // is also held open without sharing while the save is tried.
    HANDLE held = INVALID_HANDLE_VALUE;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_SORT_BASE + 1); });
    s.Step([&](ui::Dlg& d) {
        held = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        CHECK(held != INVALID_HANDLE_VALUE);
        d.SoftKey(ui::Left);
    });
    s.Step([&](ui::Dlg& d) {
        CloseHandle(held);
        held = INVALID_HANDLE_VALUE;
        CHECK_EQ(d.Text(0), std::wstring(L"Zorvel"));
        CHECK(Column(d, 1) == Texts({L"milk", L"Bread", L"apples"}));  // changes kept
        d.Back();
    });
    s.Answer(IDOK).Answer(IDYES);
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    const auto& boxes = ui::MessageBoxes();
    CHECK_EQ(boxes.size(), 2u);
    if (boxes.size() == 2) {
        CheckBox(boxes[0], IDS_SAVE_FAILED, IDS_ERROR_CAPTION, MB_OK, MB_ICONEXCLAMATION, ZV_HERE);
        CheckBox(boxes[1], IDS_LEAVE_UNSAVED_TEXT, IDS_LEAVE_UNSAVED_CAPTION, MB_YESNO, MB_ICONQUESTION, ZV_HERE);
    }
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadFileBytes(path), before);
}

TEST_CASE(Ui_List_LeaveQuestionNoKeepsTheWindow) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        SelectRow(d, 2);
        d.Command(IDM_DELETE_ITEM);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 1) == Texts({L"milk", L"Bread"}));
        d.Back();
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 2);  // No: still open
        d.Back();
    });
    s.Answer(IDNO).Answer(IDYES);
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    const auto& boxes = ui::MessageBoxes();
    CHECK_EQ(boxes.size(), 2u);
    for (const auto& box : boxes)
        CheckBox(box, IDS_LEAVE_UNSAVED_TEXT, IDS_LEAVE_UNSAVED_CAPTION, MB_YESNO, MB_ICONQUESTION, ZV_HERE);
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadFileBytes(path), ListBytes(Grocery()));
}

TEST_CASE(Ui_List_DeleteCheckedRemovesExactlyOnes) {
    ListSpec content = Grocery();
    content.items[0].cells[0] = Choice(2);  // not exactly 1: stays
    std::wstring path = WriteList(L"Grocery.zvl", content);
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_DELETE_CHECKED); });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 1) == Texts({L"milk", L"apples"}));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    ListSpec want = content;
    want.items.erase(want.items.begin() + 1);
    CHECK_BYTES(ReadFileBytes(path), ListBytes(want));
}

TEST_CASE(Ui_List_ExportWritesTheUtf16File) {
    std::wstring folder = TestFolder();
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    g_fileSelectLastFolder = folder.c_str();
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) { d.Command(IDM_EXPORT); });
    s.WaitFor(L"#32770", L"File Select");
    s.Step([&](ui::Dlg& d) {
        SetWindowTextW(d.Item(kFileSelectNameEdit), L"weekly");
        d.Command(IDC_FILE_SELECT_ACCEPT);
    });
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) { d.Back(); });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    const auto& boxes = ui::MessageBoxes();
    CHECK_EQ(boxes.size(), 1u);
    if (!boxes.empty()) CheckBox(boxes[0], IDS_EXPORT_DONE_TEXT, IDS_EXPORT_DONE_CAPTION, MB_OK, MB_ICONEXCLAMATION, ZV_HERE);
    std::wstring check = ResText(IDS_TYPE_CHECK), text = ResText(IDS_TYPE_TEXT), number = ResText(IDS_TYPE_NUMBER);
    std::wstring yes = ResText(IDS_CHECK_SET), no = ResText(IDS_CHECK_CLEAR);
    std::wstring body = L"(" + check + L")Done\t(" + text + L")Item\t(" + number + L")Qty\t(" + check + L")Got" +
                        L"\r\n" + no + L"\tmilk\t2\t" + no + L"\t" +      //
                        L"\r\n" + yes + L"\tBread\t10\t" + no + L"\t" +   //
                        L"\r\n" + no + L"\tapples\t1.5\t" + yes + L"\t";
    Bytes want;
    want.b = {0xFF, 0xFE};
    want.Wide(body, false);
    CHECK_BYTES(ReadFileBytes(folder + L"weekly.CSV"), want.b);
}

TEST_CASE(Ui_List_OtherVersionIsRefusedWithoutBackup) {
    ListSpec content = Grocery();
    content.version = L"1.6";
    std::wstring path = WriteList(L"Old.zvl", content);
    ListOpenRequest req;
    ui::Script s;
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    const auto& boxes = ui::MessageBoxes();
    CHECK_EQ(boxes.size(), 1u);
    if (!boxes.empty()) CheckBox(boxes[0], IDS_LIST_VERSION_BAD, IDS_ERROR_CAPTION, MB_OK, MB_ICONEXCLAMATION, ZV_HERE);
    CHECK(!FileExists(L"\\zvlisttests\\Old.BAK"));
}

TEST_CASE(Ui_List_ItemColourFromThePicker) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        SelectRow(d, 2);
        d.Command(IDM_ITEM_COLOR);
    });
    s.WaitFor(L"#32770", ResText(IDS_COLOR_TITLE).c_str());
    s.Step([&](ui::Dlg& d) { d.TapCenter(27); });  // palette colour FF6633
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(g_listWindow.rows[2]->backColor, (COLORREF)RGB(0xFF, 0x66, 0x33));
        d.Command(IDM_ITEM_COLOR);
    });
    s.WaitFor(L"#32770", ResText(IDS_COLOR_TITLE).c_str());
    s.Step([&](ui::Dlg& d) { d.Command(IDM_COLOR_CANCEL); });  // Cancel: the colour stays
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    ListSpec want = Grocery();
    want.items[2].backColor = RGB(0xFF, 0x66, 0x33);
    CHECK_BYTES(ReadFileBytes(path), ListBytes(want));
}

TEST_CASE(Ui_List_ListIconAndFitColumnsCountAsChanges) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    HWND listWindow = nullptr;
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        listWindow = d.hwnd;
        d.Command(IDM_LIST_ICON);
    });
    s.WaitUntil([&](ui::Dlg& d) { return d.hwnd != listWindow && d.Item(IconPicker::kIconListId); });
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Left); });  // confirm without choosing
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([&](ui::Dlg& d) { d.Back(); });  // the icon counts as a change
    s.Step([&](ui::Dlg& d) {
        d.Command(IDM_AUTOSIZE_COLUMNS);
    });
    s.Step([&](ui::Dlg& d) {
        HWND list = d.Item(kList);
        // Each column fits its widest text seen so far plus a margin.
        for (int i = 0; i < 4; ++i) {
            int measured = g_listWindow.doc.fields[(size_t)i].columnState;
            CHECK(measured >= ScaleX(5));
            CHECK_EQ((int)SendMessageW(list, LVM_GETCOLUMNWIDTH, i, 0), measured + ScaleX(16));
        }
        CHECK(g_listWindow.doc.fields[1].columnState > ScaleX(20));  // "apples", "Bread", "milk"
        d.Back();
    });
    s.Answer(IDNO).Answer(IDYES);
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    CHECK_EQ(ui::MessageBoxes().size(), 2u);
    CHECK_EQ((int)req.saved, 0);
}

TEST_CASE(Ui_List_ContextMenuOffersTheItemCommands) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        SelectRow(d, 0);
        POINT at = {20, 40};
        ClientToScreen(d.Item(kList), &at);
        PostMessageW(d.hwnd, WM_CONTEXTMENU, (WPARAM)d.Item(kList), MAKELPARAM(at.x, at.y));
    });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([&](ui::Dlg& d) {
        d.Key(VK_DOWN);  // Add Item...
        d.Key(VK_DOWN);  // Edit Item...
        d.Key(VK_DOWN);  // Delete Item
        d.Key(VK_RETURN);
    });
    s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen() && d.ListCount(kList) == 2; });
    s.Step([&](ui::Dlg& d) {
        CHECK(Column(d, 1) == Texts({L"Bread", L"apples"}));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
    ListSpec want = Grocery();
    want.items.erase(want.items.begin());
    CHECK_BYTES(ReadFileBytes(path), ListBytes(want));
}

TEST_CASE(Ui_List_MenuGraysItemCommandsWithoutASelection) {
    std::wstring path = WriteList(L"Grocery.zvl", Grocery());
    ListOpenRequest req;
    HMENU menu = nullptr;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        menu = d.SoftKeyMenu(ui::Right);
        d.SoftKey(ui::Right);
    });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([&](ui::Dlg& d) {
        // The focus timer left the selection mark on row 0.
        CHECK(!(GetMenuState(menu, IDM_EDIT_ITEM, MF_BYCOMMAND) & MF_GRAYED));
        CHECK(!(GetMenuState(menu, LISTWIN_POS_ROW_COLOR_POPUP, MF_BYPOSITION) & MF_GRAYED));
        d.Key(VK_ESCAPE);
    });
    s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen(); });
    s.Step([&](ui::Dlg& d) {
        LVITEMW none = {};
        none.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(d.Item(kList), LVM_SETITEMSTATE, (WPARAM)-1, (LPARAM)&none);
        SendMessageW(d.Item(kList), LVM_SETSELECTIONMARK, 0, -1);
    });
    s.Step([&](ui::Dlg& d) { d.SoftKey(ui::Right); });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([&](ui::Dlg& d) {
        CHECK(GetMenuState(menu, IDM_EDIT_ITEM, MF_BYCOMMAND) & MF_GRAYED);
        CHECK(GetMenuState(menu, IDM_DELETE_ITEM, MF_BYCOMMAND) & MF_GRAYED);
        CHECK(GetMenuState(menu, LISTWIN_POS_ROW_COLOR_POPUP, MF_BYPOSITION) & MF_GRAYED);
        CHECK(!(GetMenuState(menu, IDM_ADD_ITEM, MF_BYCOMMAND) & MF_GRAYED));
        d.Key(VK_ESCAPE);
    });
    s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen(); });
    s.Step([&](ui::Dlg& d) {
        d.Command(IDM_EDIT_ITEM);  // nothing happens without a selection
        d.Command(IDM_DELETE_ITEM);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kList), 3);
        d.Back();
    });
    CHECK_EQ((int)RUN_LIST(s, path, req), 1);
}

// The main window's import, as the user gives it: pick the text file, get a
// new list of the same name in the category.
TEST_CASE(Ui_List_ImportPicksAFileAndWritesTheList) {
    std::wstring category = TestFolder();
    std::wstring source = category + L"csv\\";
    CreateDirectoryW(source.c_str(), nullptr);
    Bytes csv;
    csv.b = {0xFF, 0xFE};
    csv.Wide(L"(" + ResText(IDS_TYPE_TEXT) + L")Item\t(" + ResText(IDS_TYPE_NUMBER) + L")Qty\r\nmilk\t2\t\r\ntea\t1\t",
             false);
    WriteFileBytes(source + L"Pantry.CSV", csv.b);
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
    ListSpec want;
    want.fields = {Field(L"Item", 3, 0), Field(L"Qty", 5, 0)};  // no owner: no width to share
    want.items = {{{Txt(L"milk"), Txt(L"2")}}, {{Txt(L"tea"), Txt(L"1")}}};
    CHECK_BYTES(ReadFileBytes(category + L"Pantry.zvl"), ListBytes(want));
    DeleteFileW((source + L"Pantry.CSV").c_str());
    RemoveDirectoryW(source.c_str());
}
