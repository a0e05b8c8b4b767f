// The list window as a new user meets it: Back closes an open menu first,
// the caption shows the program's icon, rows hold their check boxes at every
// density, the item worked on stays selected, and Left and Right scroll a
// wide list; menus and their submenus stay on the phone screen.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "base/ResString.h"
#include "listwindow/ListWindowState.h"
#include "platform/Platform.h"
#include "platform/ScreenScale.h"
#include "tests/framework/ZvTest.h"
#include "tests/ui/UiTestUtil.h"
#include "tests/ui/test_listwindow_support.h"

using namespace lwtest;

namespace {

constexpr int kList = kListViewControlId;

ListContent Shopping() {
    ListContent content;
    content.fields = {Field(L"Done", 6, 30), Field(L"Item", 3, 90), Field(L"Qty", 5, 40)};
    content.items = {
        {{Choice(0), Txt(L"milk"), Txt(L"2")}},
        {{Choice(1), Txt(L"Bread"), Txt(L"10")}},
        {{Choice(0), Txt(L"apples"), Txt(L"1.5")}},
    };
    return content;
}

std::wstring WriteList(const ListContent& content) {
    std::wstring path = TestFolder() + L"First use.zvl";
    WriteBytes(path, ListBytes(content));
    return path;
}

// The selected row: selection mark, focus and the selected state agree.
int SelectedRow(ui::Dlg& d) {
    int mark = d.ListSelectionMark(kList);
    int selected = (int)SendMessageW(d.Item(kList), LVM_GETNEXTITEM, (WPARAM)-1, LVNI_SELECTED);
    CHECK_EQ(d.ListFocused(kList), mark);
    CHECK_EQ(selected, mark);
    return mark;
}

}  // namespace

// Back in a context menu or a soft-key menu closes that menu and nothing else.
TEST_CASE(Ui_FirstUse_BackClosesTheOpenMenuOnly) {
    std::wstring path = WriteList(Shopping());
    ListOpenRequest req;
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK(SendMessageW(d.hwnd, WM_GETICON, ICON_SMALL, 0) != 0);
        CHECK(SendMessageW(d.hwnd, WM_GETICON, ICON_BIG, 0) != 0);
        SelectRow(d, 0);
        POINT at = {20, 20};
        ClientToScreen(d.Item(kList), &at);
        PostMessageW(d.hwnd, WM_CONTEXTMENU, (WPARAM)d.Item(kList), MAKELPARAM(at.x, at.y));
    });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([](ui::Dlg& d) { d.Back(); });
    s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen(); });
    s.Step([](ui::Dlg& d) {
        CHECK(IsWindowVisible(d.hwnd));
        d.SoftKey(ui::Right);
    });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([](ui::Dlg& d) { d.Back(); });
    s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen(); });
    s.Step([](ui::Dlg& d) {
        CHECK(IsWindowVisible(d.hwnd));
        CHECK(ui::MessageBoxes().empty());
        d.Back();  // now Back leaves the list
    });
    CHECK_EQ((int)RunList(s, path, req, __FILE__, __LINE__), 1);
    CHECK(ui::MessageBoxes().empty());
    CHECK_EQ((int)req.saved, 0);
}

// A row is tall enough for a check box and a line of text at both densities.
TEST_CASE(Ui_FirstUse_RowsHoldTheirCheckBoxes) {
    for (int dpi : {96, 192}) {
        uitest::DensityScope density(dpi);
        std::wstring path = WriteList(Shopping());
        ListOpenRequest req;
        ui::Script s;
        s.Step([](ui::Dlg& d) {
            RECT row = {};
            row.left = LVIR_BOUNDS;
            SendMessageW(d.Item(kList), LVM_GETITEMRECT, 0, (LPARAM)&row);
            // The density's check bitmap (ScaleY(12)) and a margin.
            CHECK((int)(row.bottom - row.top) >= ScaleY(12) + ScaleY(2));
            d.Back();
        });
        CHECK_EQ((int)RunList(s, path, req, __FILE__, __LINE__), 1);
    }
}

// Add, Edit, a sort and Check all keep the item worked on selected.
TEST_CASE(Ui_FirstUse_TheItemWorkedOnStaysSelected) {
    ListContent content = Shopping();
    content.sortColumn = 1;
    content.sortFlag = 1;
    content.items = {content.items[2], content.items[1], content.items[0]};  // apples, Bread, milk
    std::wstring path = WriteList(content);
    ListOpenRequest req;
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.Command(IDM_ADD_ITEM); });
    s.WaitFor(L"#32770", ResText(IDS_ITEM_EDIT_TITLE).c_str());
    s.Step([](ui::Dlg& d) {
        d.SetFocusTo(401);
        d.Type(L"Butter");
    });
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([](ui::Dlg& d) {
        CHECK(Column(d, 1) == (std::vector<std::wstring>{L"apples", L"Bread", L"Butter", L"milk"}));
        CHECK_EQ(SelectedRow(d), 2);
        SelectRow(d, 0);
        d.Command(IDM_EDIT_ITEM);
    });
    s.WaitFor(L"#32770", ResText(IDS_ITEM_EDIT_TITLE).c_str());
    s.Step([](ui::Dlg& d) {
        d.SetFocusTo(401);
        SetWindowTextW(GetFocus(), L"yoghurt");
    });
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    s.WaitFor(L"#32770", L"Zorvel");
    s.Step([](ui::Dlg& d) {
        // apples became yoghurt: Bread, Butter, milk, yoghurt
        CHECK_EQ(d.ListText(kList, 3, 1), std::wstring(L"yoghurt"));
        CHECK_EQ(SelectedRow(d), 3);
        SelectRow(d, 0);                     // Bread
        d.Command(IDM_SORT_BASE + 1);        // the same column again: descending
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListText(kList, SelectedRow(d), 1), std::wstring(L"Bread"));
        d.Command(IDM_CHECK_ALL);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListText(kList, SelectedRow(d), 1), std::wstring(L"Bread"));
        d.Back();
    });
    s.Answer(IDYES);
    CHECK_EQ((int)RunList(s, path, req, __FILE__, __LINE__), 1);
}

// Right scrolls a list wider than the screen, Left scrolls back; a list that
// fits does not move.
TEST_CASE(Ui_FirstUse_LeftAndRightScrollAWideList) {
    ListContent content = Shopping();
    for (FieldContent& field : content.fields) field.width = 200;
    std::wstring path = WriteList(content);
    ListOpenRequest req;
    ui::Script s;
    auto originX = [](ui::Dlg& d) {
        return GetScrollPos(d.Item(kList), SB_HORZ);
    };
    s.Step([&](ui::Dlg& d) {
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
        CHECK_EQ(d.ListSelectionMark(kList), 0);  // the arrows moved no row
        d.Back();
    });
    CHECK_EQ((int)RunList(s, path, req, __FILE__, __LINE__), 1);
}

// A submenu of a soft-key menu opens on the phone screen, not beside it.
TEST_CASE(Ui_FirstUse_SubmenusOpenOnThePhoneScreen) {
    std::wstring path = WriteList(Shopping());
    ListOpenRequest req;
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([](ui::Dlg& d) {
        // The sort submenu's number: entries before it that are not separators.
        HMENU menu = d.SoftKeyMenu(ui::Right);
        int number = 0;
        for (int pos = 0; pos <= LISTWIN_POS_SORT_POPUP; ++pos)
            if (!(GetMenuState(menu, (UINT)pos, MF_BYPOSITION) & MF_SEPARATOR)) ++number;
        d.Char((wchar_t)(L'0' + number % 10));
    });
    s.WaitUntil([](ui::Dlg&) {
        int open = 0;
        for (HWND w = GetTopWindow(nullptr); w; w = GetWindow(w, GW_HWNDNEXT)) {
            wchar_t name[16];
            if (IsWindowVisible(w) && GetClassNameW(w, name, 16) && lstrcmpW(name, L"#32768") == 0) ++open;
        }
        return open == 2;
    });
    s.Step([](ui::Dlg&) {
        RECT phone;
        GetPhoneScreenRect(&phone);
        for (HWND w = GetTopWindow(nullptr); w; w = GetWindow(w, GW_HWNDNEXT)) {
            wchar_t name[16];
            if (!IsWindowVisible(w) || !GetClassNameW(w, name, 16) || lstrcmpW(name, L"#32768") != 0) continue;
            RECT r;
            GetWindowRect(w, &r);
            CHECK(r.left >= phone.left && r.right <= phone.right);
            CHECK(r.top >= phone.top && r.bottom <= phone.bottom);
        }
        EndMenu();
    });
    s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen(); });
    s.Step([](ui::Dlg& d) { d.Back(); });
    CHECK_EQ((int)RunList(s, path, req, __FILE__, __LINE__), 1);
}
