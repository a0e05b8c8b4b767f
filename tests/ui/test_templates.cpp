// The field editor and the template editor driven through their keys, soft
// keys and menus; templates written are checked byte for byte against the
// file layout.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/TextEntry.h"
#include "settings/IconPicker.h"
#include "templates/Templates.h"
#include "tests/framework/ZvTest.h"
#include "tests/ui/test_templates_support.h"

using namespace tmpltest;

namespace {

std::wstring ListText(ui::Dlg& d, int id, int at) {
    HWND list = d.Item(id);
    wchar_t text[256] = {};
    if (SendMessageW(list, LB_GETTEXTLEN, at, 0) < 256) SendMessageW(list, LB_GETTEXT, at, (LPARAM)text);
    return text;
}
int ListCount(ui::Dlg& d, int id) { return (int)SendMessageW(d.Item(id), LB_GETCOUNT, 0, 0); }
int ListSel(ui::Dlg& d, int id) { return (int)SendMessageW(d.Item(id), LB_GETCURSEL, 0, 0); }

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
        s.Step([&](ui::Dlg& d) { SelectListRow(d, kTemplateFieldListId, row.select); d.Command(row.command); });
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
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    s.Step([](ui::Dlg& d) { d.Type(L" 2"); d.SoftKey(ui::Left); });
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

// Files the editor refuses.
TEST_CASE(Ui_TemplateEditor_RefusedFiles) {
    std::wstring folder = TemplatesTestFolder();
    std::vector<unsigned char> old = TemplateBytes({{L"A", FieldType::Text}});
    old[2] = '6';  // "1.6"
    Write(folder + L"Old.zvt", old);
    Write(folder + L"Short.zvt", {'1', 0, '.'});
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
}
