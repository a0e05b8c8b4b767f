// The list window driven in-process: opening, sorting, checking, colouring,
// saving and leaving, with saved files checked byte for byte.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "app/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "listwindow/ListSort.h"
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
    ListSpec spec;
    spec.fields = {Field(L"Done", 6, 30), Field(L"Item", 3, 90), Field(L"Qty", 5, 40), Field(L"Got", 6, 30)};
    spec.items = {
        {{Choice(0), Txt(L"milk"), Txt(L"2"), Choice(0)}},
        {{Choice(1), Txt(L"Bread"), Txt(L"10"), Choice(0)}},
        {{Choice(0), Txt(L"apples"), Txt(L"1.5"), Choice(1)}},
    };
    return spec;
}

std::wstring WriteList(const std::wstring& name, const ListSpec& spec) {
    std::wstring path = TestFolder() + name;
    WriteFileBytes(path, ListBytes(spec));
    return path;
}

#define RUN_LIST(s, path, req) RunList(s, path, req, __FILE__, __LINE__)

}  // namespace

TEST_CASE(Ui_List_OpensCheckListWithMenusAndBackup) {
    ListSpec spec = Grocery();
    spec.fields[3].name = L"";  // an empty name: " " in the header, its type's name in the menu
    std::wstring path = WriteList(L"Grocery - weekly.zvl", spec);
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
