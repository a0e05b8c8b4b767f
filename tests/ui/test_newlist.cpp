// The new list dialog and the templates manager driven in-process: what
// they list, the lists they write (byte for byte), every refusal, and the
// manager's commands on the templates folder.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "platform/ScreenScale.h"
#include "base/ResString.h"
#include "dialogs/FileSelectDialog.h"
#include "dialogs/TextEntry.h"
#include "templates/Templates.h"
#include "tests/app/RegistryTestUtil.h"
#include "tests/framework/ZvTest.h"
#include "tests/ui/UiTestUtil.h"
#include "tests/ui/test_templates_support.h"

using namespace tmpltest;

namespace {

using Texts = std::vector<std::wstring>;

// Points the TemplatePath setting at a scratch folder (without its trailing
// "\", as a user may store it) for one test.
struct TemplatePathScope {
    explicit TemplatePathScope(const std::wstring& folder) {
        regtest::SetString(kProgramKey, L"TemplatePath", folder.substr(0, folder.size() - 1).c_str());
    }
    ~TemplatePathScope() { RegDeleteKeyValueW(HKEY_CURRENT_USER, kProgramKey, L"TemplatePath"); }
};

const std::vector<TField> kShopFields = {{L"Got", FieldType::Check}, {L"Item", FieldType::Text}};

// Shop (with an icon) and Goals (without) in a fresh templates folder.
std::wstring ShopAndGoals() {
    std::wstring folder = TemplatesTestFolder();
    Write(folder + L"Shop.zvt", TemplateBytes(kShopFields, true));
    Write(folder + L"Goals.zvt", TemplateBytes({{L"Goal", FieldType::Text}}));
    return folder;
}

int RowOf(ui::Dlg& d, const std::wstring& name) {
    Texts rows = Rows(d, kTemplateListId);
    return int(std::find(rows.begin(), rows.end(), name) - rows.begin());
}

NewListRequest Request(const std::wstring& category) {
    NewListRequest req = {};
    lstrcpyW(req.categoryFolder, category.c_str());
    return req;
}

INT_PTR RunNewList(ui::Script& s, NewListRequest& req, const char* file = __builtin_FILE(),
                   int line = __builtin_LINE()) {
    return ui::RunModal(s, [&] { return RunNewListDialog(nullptr, req); }, file, line);
}

INT_PTR RunManager(ui::Script& s, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    TemplatesManagerRequest req = {hLangModule, 1};
    return ui::RunModal(s, [&] { return RunTemplatesManager(nullptr, req); }, file, line);
}

// Chooses a template row (or none for an empty name) and answers the name prompt.
void ChooseAndName(ui::Script& s, const std::wstring& templateName, const std::wstring& listName) {
    s.Step([templateName](ui::Dlg& d) {
        if (!templateName.empty()) SelectListRow(d, kTemplateListId, RowOf(d, templateName));
        d.Enter();
    });
    s.Step([listName](ui::Dlg& d) {
        d.Type(listName.c_str());
        d.SoftKey(ui::Left);
    });
}

}  // namespace

// Only names whose extension starts with the template letters are listed,
// in any case; folders are not; a damaged template is listed and drawn
// with the default icon. Both dialogs list alike, and at 192 dpi the list
// fits the screen and its rows hold the large icons.
TEST_CASE(Ui_Templates_BothDialogsListTemplateFilesOnly) {
    std::wstring folder = ShopAndGoals();
    Write(folder + L"Upper.ZVT", TemplateBytes({}));
    Write(folder + L"notes.txt", {1, 2});
    Write(folder + L"a.b.zvt", TemplateBytes({}));
    Write(folder + L"Wide.zvtx", TemplateBytes({}));
    Write(folder + L"Broken.zvt", {'1', 0});
    CreateDirectoryW((folder + L"Sub.zvt").c_str(), nullptr);
    TemplatePathScope path(folder);
    uitest::DensityScope density(192);
    const Texts want = {L"Broken", L"Goals", L"Shop", L"Upper", L"Wide"};
    for (bool manager : {false, true}) {
        ui::Script s;
        s.Step([&](ui::Dlg& d) {
            Texts rows = Rows(d, kTemplateListId);
            std::sort(rows.begin(), rows.end());
            CHECK(rows == want);
            CHECK_EQ(d.FocusId(), kTemplateListId);
            uitest::ControlsFit(d.hwnd, {kTemplateListId}, ZV_HERE);
            RECT row = {LVIR_BOUNDS, 0, 0, 0};
            SendMessageW(d.Item(kTemplateListId), LVM_GETITEMRECT, 0, (LPARAM)&row);
            CHECK(row.bottom - row.top >= ScaleY(16));
            for (int row = 0; row < d.ListCount(kTemplateListId); ++row) SelectListRow(d, kTemplateListId, row);
        });
        s.Step([](ui::Dlg& d) {
            UpdateWindow(d.Item(kTemplateListId));  // every row drawn, the damaged one too
            d.Back();
        });
        NewListRequest req = Request(folder);
        CHECK_EQ(manager ? RunManager(s) : RunNewList(s, req), (INT_PTR)1);
        CHECK_EQ(ui::MessageBoxes().size(), 0u);
    }
}

// The list is the template's fields with no items, written before the list
// window opens; kept when saved there, gone when left unsaved. From an empty
// templates folder (no error) a new template is made first: the editor, then
// the name prompt, then the list.
TEST_CASE(Ui_NewList_WritesOpensAndKeepsOnlyASavedList) {
    std::wstring folder = TemplatesTestFolder();
    std::wstring category = ScratchFolder(L"Lists");
    TemplatePathScope path(folder);
    std::wstring doubled = category.substr(0, category.size() - 1) + L"\\\\";  // "...\Lists\\"
    // A name in any script: accents, Greek, CJK and an emoji.
    const std::wstring name = L"W\x00e9" L"ek \x03b1 \x9031 \xd83d\xde00";
    const TField due = {L"", FieldType::Date, ResText(IDS_DATE_MODE_TODAY)};
    for (int run : {0, 1, 2}) {  // a new template, then Shop saved and Shop left unsaved
        const bool fresh = run == 0, save = run != 2;
        for (const wchar_t* extension : {L".zvl", L".BAK"}) DeleteFileW((category + name + extension).c_str());
        const std::vector<unsigned char> want = fresh ? EmptyListBytes({due}) : EmptyListBytes(kShopFields, true);
        NewListRequest req = Request(doubled);
        ui::Script s;
        if (fresh) {
            s.Step([](ui::Dlg& d) {
                CHECK_EQ(d.ListCount(kTemplateListId), 0);
                d.Command(IDM_NEW_TEMPLATE_FOR_LIST);
            });
            s.WaitFor(L"#32770", L"Edit Template");
            s.Step([](ui::Dlg& d) { d.Command(IDM_ADD_FIELD); });
            s.WaitFor(L"#32770", L"Field Edit");
            Keys(s, L"!");  // a Date field, due today
            s.WaitFor(L"#32770", L"Edit Template");
            Keys(s, L"!|Quick!|" + name + L"!");  // saved as Quick, then the list's name
        } else {
            ChooseAndName(s, L"Shop", name);
        }
        s.WaitFor(L"#32770", L"Zorvel");
        s.Step([&](ui::Dlg& d) {
            CHECK_BYTES(ReadBytes(category + name + L".zvl"), want);
            if (save) d.SoftKey(ui::Left);
            else d.Back();
        });
        CHECK_EQ(RunNewList(s, req), (INT_PTR)1);
        CHECK_EQ((int)req.created, save ? 1 : 0);
        CHECK_EQ(std::wstring(req.listName), name);
        CHECK_EQ(std::wstring(req.listPath), category + name + L".zvl");
        CHECK_EQ(Exists(category + name + L".zvl"), save);
        CHECK_EQ(Exists(category + name + L".BAK"), save);
        if (fresh) CHECK_BYTES(ReadBytes(folder + L"Quick.zvt"), TemplateBytes({due}));
        if (fresh) Write(folder + L"Shop.zvt", TemplateBytes(kShopFields, true));
    }
}

// Every refusal shows its message and leaves the dialog open for another try.
TEST_CASE(Ui_NewList_RefusalsLeaveTheDialogOpen) {
    std::wstring folder = ShopAndGoals();
    std::vector<unsigned char> old = TemplateBytes({});
    old[2] = '6';
    Write(folder + L"Old.zvt", old);
    Write(folder + L"Gone.zvt", TemplateBytes({}));
    std::wstring category = ScratchFolder(L"Lists");
    const std::vector<unsigned char> kept = {7, 7, 7};
    Write(category + L"Kept.zvl", kept);
    TemplatePathScope path(folder);
    enum ListFile { None, Empty, Untouched };
    struct Row {
        std::wstring category, templateName, listName;
        UINT message;
        ListFile after;
    } rows[] = {
        {category, L"Shop", L"", IDS_LIST_NAME_EMPTY, None},
        {category, L"", L"Plan", IDS_NO_TEMPLATE_SELECTED, None},
        {category, L"Gone", L"Plan", IDS_TEMPLATE_OPEN_FAILED, Empty},
        {category, L"Old", L"Plan", IDS_TEMPLATE_VERSION_BAD, Empty},
        {L"\\zvtemplatetests\\NoSuchCategory\\", L"Shop", L"Plan", IDS_LIST_CREATE_FAILED, None},
        {category, L"Shop", L"Kept", IDS_LIST_EXISTS_TEXT, Untouched},  // answered No
    };
    for (const Row& row : rows) {
        DeleteFileW((category + L"Plan.zvl").c_str());
        NewListRequest req = Request(row.category);
        ui::Script s;
        s.Step([&](ui::Dlg&) {
            if (row.templateName == L"Gone") DeleteFileW((folder + L"Gone.zvt").c_str());  // listed, then gone
        });
        ChooseAndName(s, row.templateName, row.listName);
        if (row.after == Untouched) s.Answer(IDNO);
        s.Step([&](ui::Dlg& d) {
            CHECK(d.ListCount(kTemplateListId) > 0);  // still the new list dialog
            d.Back();
        });
        CHECK_EQ(RunNewList(s, req), (INT_PTR)1);
        CHECK_EQ((int)req.created, 0);
        wchar_t question[512];
        wsprintfW(question, ResText(IDS_LIST_EXISTS_TEXT).c_str(), L"Kept");
        if (row.after == Untouched)
            uitest::CheckBoxes({{question, ResText(IDS_LIST_EXISTS_CAPTION), MB_YESNO | MB_ICONQUESTION}}, ZV_HERE);
        else uitest::CheckBoxes({{ResText(row.message), ResText(IDS_ERROR_CAPTION), MB_ICONEXCLAMATION}}, ZV_HERE);
        CHECK_BYTES(ReadBytes(category + L"Kept.zvl"), kept);
        CHECK_EQ(Exists(category + L"Plan.zvl"), row.after == Empty);
        if (row.after == Empty) CHECK_EQ(ReadBytes(category + L"Plan.zvl").size(), (size_t)0);
    }
}

// The manager's commands. Edit and Delete need a selected row. Saving under
// the same name leaves the rows (and the selection) as they were; a new name
// refreshes the list, where both names now stand. Delete asks with the name
// in quotes: No keeps the file, Yes removes it. Another folder, chosen in the
// folder dialog, is listed at once and stored.
TEST_CASE(Ui_TemplatesManager_Commands) {
    std::wstring folder = ShopAndGoals();
    CreateDirectoryW((folder + L"Other").c_str(), nullptr);
    Write(folder + L"Other\\Far.zvt", TemplateBytes({}));
    TemplatePathScope path(folder);
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        d.Command(IDM_EDIT_TEMPLATE);
        d.Command(IDM_DELETE_TEMPLATE_CTX);
    });
    for (const wchar_t* name : {L"Shop", L"Shop 2"}) {
        s.Step([](ui::Dlg& d) {
            SelectListRow(d, kTemplateListId, RowOf(d, L"Shop"));
            d.Command(IDM_EDIT_TEMPLATE);
        });
        s.WaitFor(L"#32770", L"Edit Template");
        s.Step([](ui::Dlg& d) {
            CHECK_EQ(d.ListCount(kTemplateFieldListId), 2);
            d.SoftKey(ui::Left);
        });
        s.Step([name](ui::Dlg& d) {
            SetWindowTextW(d.Item(kTextEntryEditId), name);
            d.SoftKey(ui::Left);
        });
        s.WaitFor(L"#32770", L"Templates");
        s.Step([name](ui::Dlg& d) {
            const bool renamed = std::wstring(name) != L"Shop";
            CHECK_EQ(d.ListCount(kTemplateListId), renamed ? 3 : 2);
            CHECK_EQ(d.ListSelectionMark(kTemplateListId) >= 0, !renamed);
        });
    }
    s.Step([&](ui::Dlg& d) {
        CHECK_BYTES(ReadBytes(folder + L"Shop 2.zvt"), TemplateBytes(kShopFields, true));
        CHECK_BYTES(ReadBytes(folder + L"Shop.zvt"), TemplateBytes(kShopFields, true));
        SelectListRow(d, kTemplateListId, RowOf(d, L"Shop"));
        d.Command(IDM_DELETE_TEMPLATE);
    });
    s.Answer(IDOK).Answer(IDOK).Answer(IDNO).Answer(IDYES);  // boxes are answered in order
    s.Step([&](ui::Dlg& d) {
        CHECK(Exists(folder + L"Shop.zvt"));
        d.Command(IDM_DELETE_TEMPLATE);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(!Exists(folder + L"Shop.zvt"));
        CHECK(Rows(d, kTemplateListId) == Texts({L"Goals", L"Shop 2"}));
        CHECK_EQ(d.FocusId(), kTemplateListId);
        d.Command(IDM_TEMPLATES_FOLDER);
    });
    s.WaitFor(L"#32770", ResText(IDS_TEMPLATES_FOLDER_TITLE).c_str());
    s.Step([](ui::Dlg& d) {
        SelectListRow(d, kFileSelectList, 0);
        d.SetFocusTo(kFileSelectList);
        d.Enter();  // into Other, the only folder
    });
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    s.WaitFor(L"#32770", L"Templates");
    s.Step([](ui::Dlg& d) {
        CHECK(Rows(d, kTemplateListId) == Texts({L"Far"}));
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunManager(s), (INT_PTR)1);
    const uitest::BoxWant none = {ResText(IDS_NO_TEMPLATE_SELECTED), ResText(IDS_ERROR_CAPTION), MB_ICONEXCLAMATION},
                          del = {ResText(IDS_DELETE_TEMPLATE_TEXT) + L" \"Shop\"", ResText(IDS_DELETE_TEMPLATE_CAPTION),
                                 MB_YESNO | MB_ICONINFORMATION};
    uitest::CheckBoxes({none, none, del, del}, ZV_HERE);
    CHECK_EQ(regtest::GetString(kProgramKey, L"TemplatePath"), folder + L"Other\\");
}
