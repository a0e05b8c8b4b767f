// The program's start: an installation made by the test, the main window and
// its soft keys, the single-instance rule, the category tree, files named on
// the command line and a broken installation.
#include <windows.h>

#include <string>

#include <commctrl.h>

#include "app/Startup.h"
#include "document/ListFile.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/TextEntry.h"
#include "mainview/CategoryTree.h"
#include "LangIds.h"
#include "templates/Templates.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"
#include "tests/ui/test_templates_support.h"

namespace {
const wchar_t kInstall[] = L"\\zvtest-install";
const wchar_t kLists[] = L"\\zvtest-lists";

using doctest::ReadBytes;
using doctest::WriteBytes;
bool Exists(const std::wstring& path) { return doctest::FileExists(path); }

// A fresh installation as the installer leaves it, with one sample list.
void Install(const wchar_t* languageModule) {
    std::wstring lists = kLists;
    uitest::Install(kInstall, lists, languageModule);
    CreateDirectoryW((lists + L"\\Personal").c_str(), nullptr);
    WriteBytes(lists + L"\\Personal\\Grocery - weekly.zvl_qvga", {});
}

HWND MainWindow() { return FindWindowW(L"ZorvelConsole", L"Zorvel"); }

HWND Tree() { return GetDlgItem(MainWindow(), kTreeControlId); }

// Every item in display order with its label, children's indented by two blanks.
std::vector<std::pair<std::wstring, HTREEITEM>> TreeItems() {
    std::vector<std::pair<std::wstring, HTREEITEM>> items;
    HWND tree = Tree();
    for (HTREEITEM item = TreeView_GetRoot(tree); item; item = TreeView_GetNextSibling(tree, item)) {
        for (HTREEITEM at = item; at; at = at == item ? TreeView_GetChild(tree, at) : TreeView_GetNextSibling(tree, at)) {
            wchar_t text[260] = L"";
            TVITEMW data = {TVIF_TEXT, at, 0, 0, text, 260, 0, 0, 0, 0};
            TreeView_GetItem(tree, &data);
            items.push_back({(at == item ? L"" : L"  ") + std::wstring(text), at});
        }
    }
    return items;
}

void Select(const std::wstring& label) {
    for (const auto& item : TreeItems()) {
        if (item.first == label || item.first == L"  " + label) {
            TreeView_SelectItem(Tree(), item.second);
            return;
        }
    }
    zvtest::Fail(ZV_HERE, "no tree item labelled as asked");
}

// A rename as the user does it: the command, the new name typed, Enter.
void Rename(ui::Script& s, const wchar_t* label, const wchar_t* typed) {
    s.Step([label](ui::Dlg& d) { Select(label); d.Command(IDM_RENAME); });
    s.Step([typed](ui::Dlg& d) { d.Type(typed); d.Enter(); });
}

int CheckedItems(const std::wstring& path) {
    ListDocument doc;
    ReadListOptions quiet;
    quiet.makeBackup = false;
    if (readListFile(path.c_str(), doc, quiet) != FileStatus::Ok) return -1;
    int n = 0;
    for (const ListItem& item : doc.items) n += item.values[0].choice != 0;
    return n;
}
}  // namespace

// The start with the menu's commands offered, the image modules and the
// sample copy that fits in place, and a second start that finds the first and
// ends at once. The tree shows the lists folder by the folder's rules, and
// renames, new categories and deletes change the disk as the user asked.
TEST_CASE(Ui_Main_StartAndTheTreeFollowingTheListsFolder) {
    uitest::ModulesScope keep;
    uitest::RemoveTree(kLists);  // left by an earlier run
    Install(L"LangEng.dll");
    std::wstring lists = kLists;
    for (const wchar_t* folder : {L"\\Work", L"\\Work\\Sub", L"\\\x00dc" L"ber"})  // Über
        CreateDirectoryW((lists + folder).c_str(), nullptr);
    for (const wchar_t* name : {L"\\Work\\a.zvl", L"\\Work\\b.ZVL", L"\\Work\\notes.txt", L"\\Work\\Sub\\c.zvl",
                                L"\\Work\\x.zvl.bak", L"\\Top.zvl", L"\\\x00dc" L"ber\\\x0396\x03ae\x03c4\x03b1.zvl"})
        WriteBytes(lists + name, {});
    // The installation's language module is the test program's: its texts, read before start-up swaps it in.
    const std::wstring newCategory = ResText(IDS_NEW_CATEGORY_NAME), noSelection = ResText(IDS_NO_SELECTION),
                       notEmpty = ResText(IDS_CATEGORY_NOT_EMPTY), error = ResText(IDS_ERROR_CAPTION);
    CreateDirectoryW((lists + L"\\" + newCategory).c_str(), nullptr);  // the default name is taken
    SetFileAttributesW((lists + L"\\Top.zvl").c_str(), FILE_ATTRIBUTE_READONLY);
    CHECK(InitInstance(hInstance, SW_SHOW, const_cast<LPWSTR>(L"")));
    if (!MainWindow()) return;
    CHECK(!InitInstance(hInstance, SW_SHOW, const_cast<LPWSTR>(L"")));
    CHECK(Exists(std::wstring(kInstall) + L"\\ZVLowDpiRes.dll"));
    CHECK(Exists(std::wstring(kInstall) + L"\\ZVHighDpiRes.dll"));
    CHECK(Exists(lists + L"\\Personal\\Grocery - weekly.zvl"));
    CHECK(!Exists(lists + L"\\Personal\\Grocery - weekly.zvl_qvga"));
    std::vector<std::wstring> shown;
    for (const auto& item : TreeItems()) shown.push_back(item.first);
    const std::wstring uber = L"\x00dc" L"ber", zeta = L"\x0396\x03ae\x03c4\x03b1", japanese = L"\x65e5\x672c \xd83d\xde00";
    CHECK(shown == std::vector<std::wstring>({L"", newCategory, L"Personal", L"  Grocery - weekly", L"Top", uber,
                                              L"  " + zeta, L"Work", L"  a", L"  b", L"  x"}));

    ui::Script s;
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ClientRect().right, 240);
        d.SoftKey(ui::Right);
    });
    s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
    s.Step([](ui::Dlg& d) {
        HMENU menu = d.SoftKeyMenu(ui::Right);
        for (UINT id : {IDM_EXIT, IDM_ABOUT, IDM_NEW_LIST, IDM_NEW_CATEGORY, IDM_LISTS_FOLDER, IDM_SETTINGS})
            CHECK(!(GetMenuState(menu, id, MF_BYCOMMAND) & MF_GRAYED));
        d.Back();
    });
    s.WaitUntil([](ui::Dlg& d) { return !d.MenuOpen(); });
    // New list with nothing selected says so.
    s.Step([](ui::Dlg& d) { TreeView_SelectItem(Tree(), nullptr); d.Command(IDM_NEW_LIST); });
    // Names in any script rename like any other.
    Rename(s, zeta.c_str(), japanese.c_str());
    s.Step([lists, uber, japanese](ui::Dlg&) { CHECK(Exists(lists + L"\\" + uber + L"\\" + japanese + L".zvl")); });
    // The Root item is never renamed: no edit opens.
    s.Step([](ui::Dlg& d) { Select(L""); d.Command(IDM_RENAME); });
    s.Step([](ui::Dlg&) { CHECK(TreeView_GetEditControl(Tree()) == nullptr); });
    // A typed name keeps the list's extension; a category takes its lists along.
    Rename(s, L"a", L"Weekly.txt");
    Rename(s, L"Work", L"Job");
    Rename(s, L"b", L"Renamed");
    s.Step([lists](ui::Dlg&) {
        CHECK(Exists(lists + L"\\Job\\Weekly.txt.zvl"));
        CHECK(Exists(lists + L"\\Job\\Renamed.zvl"));
        CHECK(!Exists(lists + L"\\Work"));
    });
    for (int i = 0; i < 2; ++i) {
        s.Step([](ui::Dlg& d) { d.Command(IDM_NEW_CATEGORY); });
        s.Step([](ui::Dlg& d) { d.Enter(); });
    }
    // A category holding another file loses its lists and stays.
    s.Step([](ui::Dlg& d) { Select(L"Job"); d.Command(IDM_DELETE); });
    s.Answer(IDOK);
    s.Step([](ui::Dlg& d) { Select(L"Top"); d.Command(IDM_DELETE_CTX); });
    s.Answer(IDOK);
    s.Step([](ui::Dlg& d) { d.Command(IDM_EXIT); });
    CHECK(!ui::RunWindow(s, MainWindow()));

    CHECK(!Exists(lists + L"\\Job\\Renamed.zvl"));  // deleted with the category's lists
    CHECK(Exists(lists + L"\\Job\\notes.txt"));
    CHECK(Exists(lists + L"\\" + newCategory + L" 1"));
    CHECK(Exists(lists + L"\\" + newCategory + L" 2"));
    CHECK(Exists(lists + L"\\Top.zvl"));  // read-only: refused
    const auto& boxes = ui::MessageBoxes();
    CHECK_EQ(boxes.size(), 5u);
    if (boxes.size() == 5) {
        CHECK_EQ(boxes[0].text, noSelection);
        CHECK_EQ(boxes[2].text, notEmpty);
        CHECK_EQ(boxes[4].text, error);
        CHECK_EQ(boxes[4].caption, error);
    }
    SetFileAttributesW((lists + L"\\Top.zvl").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_CASE(Ui_Main_MissingLanguageModule) {
    uitest::ModulesScope keep;
    Install(L"LangMissing.dll");
    ui::Script s;
    INT_PTR started = ui::RunModal(s, [] { return (INT_PTR)InitInstance(hInstance, SW_SHOW, const_cast<LPWSTR>(L"")); });
    CHECK_EQ(started, (INT_PTR)FALSE);
    CHECK(MainWindow() == nullptr);
    uitest::CheckBoxes({{L"Error loading system files Please re-install Zorvel", L"Error", MB_ICONEXCLAMATION}},
                       ZV_HERE);
}

// A list and a template named on the command line, the way a double-click
// hands them over: the list window or the template editor opens at once, the
// keyboard alone edits and saves the file, and the program ends with it.
TEST_CASE(Ui_Main_CommandLineFilesEditedAndSaved) {
    uitest::ModulesScope keep;
    Install(L"LangEng.dll");
    const std::wstring samples = uitest::BinFolder() + L"samples\\qvga\\";
    const std::wstring list = std::wstring(kLists) + L"\\Personal\\Grocery - weekly.zvl",
                       templ = std::wstring(kInstall) + L"\\Templates\\Shopping.zvt";
    CHECK(CopyFileW((samples + L"lists\\Personal\\Grocery - weekly.zvl").c_str(), list.c_str(), FALSE));
    CHECK(CopyFileW((samples + L"templates\\Shopping.zvt").c_str(), templ.c_str(), FALSE));
    const int checkedBefore = CheckedItems(list);
    CHECK(checkedBefore > 0);
    // The template as it should come back: one field more (the count's low
    // byte follows the 8-byte version), the new one last.
    std::vector<unsigned char> want = ReadBytes(templ);
    const int fields = want.size() > 8 ? want[8] : 0;
    CHECK(fields > 0);
    if (fields > 0) ++want[8];
    const doctest::ByteVec noteChunks = tmpltest::ChunkBytes({{L"Note", FieldType::Text}}, false).v;
    want.insert(want.end(), noteChunks.begin() + 16, noteChunks.end());  // without the view state chunk

    for (const std::wstring& path : {list, templ}) {
        ui::Script s;
        if (path == list) {
            s.WaitUntil([](ui::Dlg& d) { return d.MenuBar() != nullptr && d.hwnd != MainWindow(); });
            tmpltest::Keys(s, L"v#|!");  // Enter toggles the check of the focused row, then Save
        } else {
            s.WaitFor(L"#32770", L"Edit Template");
            s.Step([&](ui::Dlg& d) {
                CHECK_EQ(d.ListCount(kTemplateFieldListId), fields);
                d.SoftKey(ui::Right);
            });
            s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
            s.Step([](ui::Dlg& d) { d.Char(L'1'); });  // Add Field
            s.WaitFor(L"#32770", L"Field Edit");
            tmpltest::Keys(s, L">>>vNote!");  // a Text field
            s.WaitFor(L"#32770", L"Edit Template");
            tmpltest::Keys(s, L"!");  // Save
            s.Step([](ui::Dlg& d) {
                CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L"Shopping"));
                d.SoftKey(ui::Left);
            });
        }
        std::wstring commandLine = L"\"" + path + L"\"";
        UnquoteDesktopCommandLine(&commandLine[0]);
        INT_PTR started = ui::RunModal(s, [&] { return (INT_PTR)InitInstance(hInstance, SW_SHOW, &commandLine[0]); });
        CHECK_EQ(started, (INT_PTR)FALSE);  // the main window ended with the file's window
        CHECK(MainWindow() == nullptr);
        CHECK(ui::MessageBoxes().empty());
    }
    const int checkedAfter = CheckedItems(list);
    CHECK(checkedAfter == checkedBefore + 1 || checkedAfter == checkedBefore - 1);
    CHECK(Exists(std::wstring(kLists) + L"\\Personal\\Grocery - weekly.BAK"));
    CHECK_BYTES(ReadBytes(templ), want);
}
