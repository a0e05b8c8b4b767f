// The template dialogs driven through their keys, soft keys and menus: the
// field editor, the template editor, the new list dialog and the templates
// manager; what they list, every refusal, and the templates and lists they
// write, checked byte for byte against the file layout.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/FileSelectDialog.h"
#include "dialogs/TextEntry.h"
#include "platform/ScreenScale.h"
#include "settings/IconPicker.h"
#include "templates/Templates.h"
#include "tests/app/RegistryTestUtil.h"
#include "tests/framework/ZvTest.h"
#include "tests/ui/UiTestUtil.h"
#include "tests/ui/test_templates_support.h"

using namespace tmpltest;

namespace {

std::wstring HalfHour(int index) {
    SYSTEMTIME t = doctest::MakeTime(2000, 1, 1, index / 2, index % 2 * 30);
    wchar_t text[64] = {};
    GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &t, nullptr, text, 64);
    return text;
}

INT_PTR RunField(ui::Script& s, FieldDef& field, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    return ui::RunModal(s, [&] { return (INT_PTR)editField(nullptr, field); }, file, line);
}

INT_PTR RunEditor(ui::Script& s, TemplateEditRequest& req, const char* file = __builtin_FILE(),
                  int line = __builtin_LINE()) {
    return ui::RunModal(s, [&] { return RunTemplateEditor(nullptr, req); }, file, line);
}

TemplateEditRequest OpenRequest(const std::wstring& folder, const std::wstring& name) {
    TemplateEditRequest req = {};
    req.mode = TemplateEditOpen;
    lstrcpyW(req.path, (folder + name + L".zvt").c_str());
    lstrcpyW(req.folder, folder.c_str());
    return req;
}

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

// Turning the type spinner with Right fills the default controls as each
// type asks: the entries, their order and the entry chosen first.
TEST_CASE(Ui_FieldEdit_DefaultsFollowTheType) {
    struct Row {
        FieldType type;
        std::vector<std::wstring> first;  // leading entries of the default list; empty: the text box
        int count, selected;
    } rows[] = {
        {FieldType::Date, {ResText(IDS_DATE_MODE_TODAY), ResText(IDS_DATE_MODE_TOMORROW)}, 5, 0},
        {FieldType::Time, {ResText(IDS_TIME_MODE_NOW), HalfHour(0), HalfHour(1)}, 49, 0},
        {FieldType::Priority,
         {ResText(IDS_PRIORITY_NORMAL), ResText(IDS_PRIORITY_HIGH), ResText(IDS_PRIORITY_LOW)}, 3, 1},
        {FieldType::Text, {}, 0, 0},
        {FieldType::YesNo, {ResText(IDS_NO), ResText(IDS_YES)}, 2, 0},
        {FieldType::Number, {}, 0, 0},
        {FieldType::Check, {ResText(IDS_CHECK_CLEAR), ResText(IDS_CHECK_SET)}, 2, 0},
        {FieldType::DateTime, {}, 0, 0},
        {FieldType::Selection, {ResText(IDS_SELECTION_BASE), ResText(IDS_SELECTION_BASE + 1)}, 14, 0},
    };
    FieldDef field;
    ui::Script s;
    for (const Row& row : rows) {
        s.Step([&](ui::Dlg& d) {
            CHECK_EQ(ListText(d, kFieldTypeListId, ListSel(d, kFieldTypeListId)), ResText(IDS_TYPE_BASE + (int)row.type));
            const bool text = row.type == FieldType::Text || row.type == FieldType::Number;
            const bool dateTime = row.type == FieldType::DateTime;
            CHECK_EQ(d.Visible(kFieldDefaultEditId), text);
            CHECK_EQ(d.Visible(kFieldDefaultListId), !text && !dateTime);
            CHECK_EQ(d.Visible(kFieldDateDefaultListId), dateTime);
            CHECK_EQ(d.Visible(kFieldTimeDefaultListId), dateTime);
            if (dateTime) {
                CHECK_EQ(ListCount(d, kFieldDateDefaultListId), 5);
                CHECK_EQ(ListCount(d, kFieldTimeDefaultListId), 49);
                CHECK_EQ(ListText(d, kFieldTimeDefaultListId, 48), HalfHour(47));
            } else if (!text) {
                CHECK_EQ(ListCount(d, kFieldDefaultListId), row.count);
                CHECK_EQ(ListSel(d, kFieldDefaultListId), row.selected);
                for (size_t i = 0; i < row.first.size(); ++i)
                    CHECK_EQ(ListText(d, kFieldDefaultListId, (int)i), row.first[i]);
            }
            d.Key(VK_RIGHT);
        });
    }
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(ListSel(d, kFieldTypeListId), 0);  // the spinner wraps
        d.SoftKey(ui::Right);
    });
    CHECK_EQ(RunField(s, field), 0);
    CHECK_EQ(field.name[0], L'\0');
}

// Saving stores each type's default as the field editor maps it, typed with
// keys alone. A bad number names the field and leaves the editor open, where
// Back erases a character.
TEST_CASE(Ui_FieldEdit_SavesTypeAndDefault) {
    const struct Row {
        const wchar_t* keys;  // from the type list, see Keys
        FieldType type;
        int choice, dateMode, timeMode;
        std::wstring text;
    } rows[] = {
        {L">>>>vPaid!", FieldType::YesNo, 1, 0, 0, ResText(IDS_NO)},
        {L">>>>vv>!", FieldType::YesNo, 0, 0, 0, ResText(IDS_YES)},
        {L">>!", FieldType::Priority, 1, 0, 0, ResText(IDS_PRIORITY_HIGH)},
        {L">vv>>>!", FieldType::Time, 0, 0, 3, HalfHour(2)},
        {L">>>>>vv-1e3!", FieldType::Number, 0, 0, 0, L"-1e3"},
        {L">>>>>>>vv>>v<!", FieldType::DateTime, 0, 2, 48, L""},  // the time list wraps to 23:30
        // Text with a default typed, then Check: the box goes, the check texts come.
        {L">>>vvx^^>>>!", FieldType::Check, 0, 0, 0, ResText(IDS_CHECK_CLEAR)},
        {L">>>>>>>>vv<#", FieldType::Selection, 13, 0, 0, ResText(IDS_SELECTION_13)},
        {L">>>>>vQtyv1a!|~|#", FieldType::Number, 0, 0, 0, L"1"},
    };
    for (const Row& row : rows) {
        FieldDef field;
        ui::Script s;
        Keys(s, row.keys);
        CHECK_EQ(RunField(s, field), 1);
        std::vector<uitest::BoxWant> boxes;
        if (wcschr(row.keys, L'~'))
            boxes.push_back({ResText(IDS_NUMBER_INVALID) + L" \"Qty\"", ResText(IDS_ERROR_CAPTION), MB_ICONEXCLAMATION});
        uitest::CheckBoxes(boxes, ZV_HERE);
        CHECK_EQ((int)field.type, (int)row.type);
        CHECK_EQ(field.defaultChoice, row.choice);
        CHECK_EQ(field.dateDefaultMode, row.dateMode);
        CHECK_EQ(field.timeDefaultMode, row.timeMode);
        CHECK_EQ(std::wstring(field.defaultText), row.text);
    }
}

// A new template made with keys alone: the icon picker, the soft-key menu,
// the field editor, the name prompt. The file is the layout's bytes, the
// icon's chunks first with the planes in the order red, green, blue, alpha.
TEST_CASE(Ui_TemplateEditor_NewTemplateWithKeysAlone) {
    // The picker's cache lives as long as the program: when no earlier test
    // filled it, one 16 x 16 icon of our own goes in.
    doctest::Bytes tga;
    tga.tgaHeader(2, 16, 16, 32, 0x28);
    for (int i = 0; i < 256; ++i) tga.u8(i).u8(90).u8(200).u8(255);
    std::wstring icons = ScratchFolder(L"Icons");
    Write(icons + L"dot.tga", tga.v);
    IconPicker::FillIconCache(icons.c_str());
    CHECK(IconPicker::CachedIconCount() > 0);
    if (IconPicker::CachedIconCount() == 0) return;

    std::wstring folder = TemplatesTestFolder();
    TemplateEditRequest req = {};
    lstrcpyW(req.folder, folder.c_str());
    ui::Script s;
    auto addField = [&](const wchar_t* keys) {
        s.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
        s.WaitUntil([](ui::Dlg& d) { return d.MenuOpen(); });
        s.Step([](ui::Dlg& d) { d.Char(L'1'); });
        s.WaitFor(L"#32770", L"Field Edit");
        Keys(s, keys);
        s.WaitFor(L"#32770", L"Edit Template");
    };
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kTemplateFieldListId), 0);
        d.Command(IDM_TEMPLATE_ICON);
    });
    s.WaitFor(L"#32770", ResText(IDS_ICON_PICKER_TITLE).c_str());
    s.Step([](ui::Dlg& d) { d.Key(VK_HOME); });
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    s.WaitFor(L"#32770", L"Edit Template");
    addField(L">>>>>>vDone!");    // a Check field
    addField(L">>>vItemvsocks#");  // a Text field with a default
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.ListCount(kTemplateFieldListId), 2);
        CHECK_EQ(d.ListText(kTemplateFieldListId, 1, 0), std::wstring(L"Item"));
        CHECK_EQ(d.ListText(kTemplateFieldListId, 1, 1), ResText(IDS_TYPE_TEXT));
        d.SoftKey(ui::Left);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L""));
        d.Type(L"Packing");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(RunEditor(s, req), 1);
    CHECK_EQ((int)req.saved, 1);
    CHECK_EQ(std::wstring(req.name), std::wstring(L"Packing"));
    const PlanarImage& icon = IconPicker::CachedIcon(0);
    doctest::Bytes want;
    want.templateHeader(2).chunk(1007, doctest::Bytes().u32((uint32_t)icon.width).u32((uint32_t)icon.height));
    for (const unsigned char* plane : {icon.red, icon.green, icon.blue, icon.alpha})
        want.chunk(1008, doctest::Bytes().raw(doctest::ByteVec(plane, plane + icon.PixelCount())));
    want.append(ChunkBytes({{L"Done", FieldType::Check}, {L"Item", FieldType::Text, L"socks"}}, false));
    CHECK_BYTES(ReadBytes(folder + L"Packing.zvt"), want.v);
}

// Moving and deleting rows; the first field up and the last down change
// nothing. Closing saves nothing.
TEST_CASE(Ui_TemplateEditor_MoveAndDeleteFields) {
    std::wstring folder = TemplatesTestFolder();
    std::vector<TField> abc = {{L"A", FieldType::Text}, {L"B", FieldType::Priority}, {L"C", FieldType::Date}};
    Write(folder + L"Shop.zvt", TemplateBytes(abc));
    struct Row {
        int select;
        UINT command;
        std::vector<std::wstring> names;
        int selectedAfter;  // -1: no selection
    } rows[] = {
        {0, IDM_FIELD_UP, {L"A", L"B", L"C"}, 0},
        {2, IDM_FIELD_DOWN, {L"A", L"B", L"C"}, 2},
        {2, IDM_FIELD_UP, {L"A", L"C", L"B"}, 1},
        {0, IDM_FIELD_DOWN, {L"C", L"A", L"B"}, -1},
        {1, IDM_DELETE_FIELD, {L"C", L"B"}, 1},
        {0, IDM_DELETE_ALL_FIELDS, {}, -1},
    };
    TemplateEditRequest req = OpenRequest(folder, L"Shop");
    ui::Script s;
    for (const Row& row : rows) {
        s.Step([&](ui::Dlg& d) {
            SelectListRow(d, kTemplateFieldListId, row.select);
            d.Command(row.command);
        });
        s.Step([&](ui::Dlg& d) {
            CHECK(Rows(d, kTemplateFieldListId) == row.names);
            CHECK_EQ(ListView_GetNextItem(d.Item(kTemplateFieldListId), -1, LVNI_SELECTED), row.selectedAfter);
        });
    }
    s.Step([](ui::Dlg& d) { d.Back(); });
    CHECK_EQ(RunEditor(s, req), 1);
    CHECK_EQ((int)req.saved, 0);
    CHECK_BYTES(ReadBytes(folder + L"Shop.zvt"), TemplateBytes(abc));
}

// Saving: an empty name and a name the file system refuses keep the editor
// open; a new name writes a new file and leaves the old one. A full template
// takes no 51st field.
TEST_CASE(Ui_TemplateEditor_SaveNamesFailuresAndTheFieldLimit) {
    std::wstring folder = TemplatesTestFolder();
    std::vector<TField> fields = {{L"Due", FieldType::DateTime, L"", 0, 2, 17},
                                  {L"Paid", FieldType::YesNo, ResText(IDS_NO), 1}};
    fields.resize(kMaxFields, {L"Note", FieldType::Text});
    std::vector<unsigned char> original = TemplateBytes(fields, /*withIcon=*/true);
    Write(folder + L"Bills.zvt", original);
    TemplateEditRequest req = OpenRequest(folder, L"Bills");
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.Command(IDM_ADD_FIELD); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(0), std::wstring(L"Edit Template"));  // no field editor came
        CHECK_EQ(d.ListCount(kTemplateFieldListId), kMaxFields);
    });
    for (const wchar_t* name : {L"", L"no such folder\\Bills"}) {
        s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
        s.Step([name](ui::Dlg& d) {
            CHECK_EQ(d.Text(kTextEntryEditId), std::wstring(L"Bills"));
            SetWindowTextW(d.Item(kTextEntryEditId), name);
            d.SoftKey(ui::Left);
        });
        s.WaitFor(L"#32770", L"Edit Template");
        s.Step([](ui::Dlg& d) { CHECK_EQ(d.ListCount(kTemplateFieldListId), kMaxFields); });
    }
    Keys(s, L"!| 2!");  // Save, the name with " 2" added
    CHECK_EQ(RunEditor(s, req), 1);
    // A failed write names its cause after the message.
    uitest::CheckBoxes({{ResText(IDS_TOO_MANY_FIELDS), ResText(IDS_ERROR_CAPTION), MB_ICONEXCLAMATION},
                        {ResText(IDS_TEMPLATE_NAME_EMPTY), ResText(IDS_ERROR_CAPTION), MB_ICONEXCLAMATION},
                        {ResText(IDS_TEMPLATE_CREATE_FAILED), ResText(IDS_ERROR_CAPTION), MB_ICONEXCLAMATION}},
                       ZV_HERE);
    CHECK_EQ(std::wstring(req.name), std::wstring(L"Bills 2"));
    CHECK_BYTES(ReadBytes(folder + L"Bills 2.zvt"), original);
    CHECK_BYTES(ReadBytes(folder + L"Bills.zvt"), original);
}

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
            for (int i = 0; i < d.ListCount(kTemplateListId); ++i) SelectListRow(d, kTemplateListId, i);
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
        CHECK(ui::MessageBoxes().empty());
        CHECK_EQ((int)req.created, save ? 1 : 0);
        CHECK_EQ(std::wstring(req.listName), name);
        CHECK_EQ(std::wstring(req.listPath), category + name + L".zvl");
        CHECK_EQ(Exists(category + name + L".zvl"), save);
        CHECK_EQ(Exists(category + name + L".BAK"), save);
        if (fresh) CHECK_BYTES(ReadBytes(folder + L"Quick.zvt"), TemplateBytes({due}));
        if (fresh) Write(folder + L"Shop.zvt", TemplateBytes(kShopFields, true));
    }
}

// The template editor refuses the files it cannot read, naming the cause.
// Every refusal of the new list dialog shows its message and leaves the
// dialog open for another try.
TEST_CASE(Ui_Templates_EditorAndNewListRefusals) {
    std::wstring folder = ShopAndGoals();
    std::vector<unsigned char> old = TemplateBytes({{L"A", FieldType::Text}});
    old[2] = '6';  // "1.6"
    Write(folder + L"Old.zvt", old);
    Write(folder + L"Short.zvt", {'1', 0, '.'});
    Write(folder + L"Gone.zvt", TemplateBytes({}));
    const struct {
        const wchar_t* name;
        UINT message;
    } refused[] = {{L"Old", IDS_TEMPLATE_VERSION_BAD}, {L"Short", IDS_TEMPLATE_DAMAGED},
                   {L"Missing", IDS_TEMPLATE_MISSING}};
    for (const auto& row : refused) {
        TemplateEditRequest req = OpenRequest(folder, row.name);
        ui::Script s;
        CHECK_EQ(RunEditor(s, req), 0);
        uitest::CheckBoxes({{ResText(row.message), ResText(IDS_ERROR_CAPTION), MB_ICONEXCLAMATION}}, ZV_HERE);
    }

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
