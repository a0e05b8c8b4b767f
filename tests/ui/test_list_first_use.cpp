// The list window as a new user meets it at either density: rows hold their
// check boxes, Left and Right scroll a wide list, and submenus stay on the
// phone screen.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "listwindow/ListWindowState.h"
#include "platform/Platform.h"
#include "platform/ScreenScale.h"
#include "tests/framework/ZvTest.h"
#include "tests/ui/UiTestUtil.h"
#include "tests/ui/test_listwindow_support.h"

using namespace lwtest;

namespace {

constexpr int kList = kListViewControlId;

// The popup menus on the screen.
std::vector<HWND> OpenMenus() {
    std::vector<HWND> menus;
    for (HWND w = GetTopWindow(nullptr); w; w = GetWindow(w, GW_HWNDNEXT)) {
        wchar_t name[16];
        if (IsWindowVisible(w) && GetClassNameW(w, name, 16) && lstrcmpW(name, L"#32768") == 0) menus.push_back(w);
    }
    return menus;
}

}  // namespace

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
        s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
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
        s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen(); });
        s.Step([](ui::Dlg& d) { d.Back(); });
        CHECK_EQ((int)RunList(s, path, req), 1);
    }
}
