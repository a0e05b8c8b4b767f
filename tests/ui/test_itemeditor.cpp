// The item edit dialog driven in-process with its keys, soft keys and taps.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/Handles.h"
#include "base/ResString.h"
#include "document/ValueText.h"
#include "listwindow/ItemEditor.h"
#include "listwindow/ItemEditorRows.h"
#include "listwindow/PickerFace.h"
#include "settings/AppSettings.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"
#include "tests/harness/UiHarness.h"
#include "tests/ui/UiTestUtil.h"

namespace {

FieldDef Field(const wchar_t* name, FieldType type, const wchar_t* defaultText = L"", int defaultChoice = 0) {
    FieldDef f;
    f.SetName(name);
    f.type = type;
    f.SetDefaultText(defaultText);
    f.defaultChoice = defaultChoice;
    return f;
}

using doctest::MakeTime;

// One field of every type, in type order, and a tenth with an empty name.
std::vector<FieldDef> EveryType() {
    return {Field(L"Due", FieldType::Date),           Field(L"At", FieldType::Time),
            Field(L"Level", FieldType::Priority, L"", 2), Field(L"Note", FieldType::Text, L"milk"),
            Field(L"Done", FieldType::YesNo),         Field(L"Amount", FieldType::Number, L"12"),
            Field(L"Tick", FieldType::Check),         Field(L"When", FieldType::DateTime),
            Field(L"Progress", FieldType::Selection), Field(L"", FieldType::Text)};
}

struct Run {
    std::vector<FieldDef> fields;
    ListItem item;
    ItemEditRequest req;

    // A new item, made on 1 March 2007 at 9:05.
    explicit Run(std::vector<FieldDef> f) : fields(std::move(f)) {
        initNewItem(item, fields.data(), (int)fields.size(), MakeTime(2007, 3, 1, 9, 5));
        // The list colours as the program starts with them (the system's).
        g_appSettings.ListViewBack.value = DefaultColor;
        g_appSettings.ListViewText.value = DefaultColor;
    }
    int Go(ui::Script& s, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
        req = {fields.data(), (int)fields.size(), &item, 0};
        return (int)ui::RunModal(s, [&] { return (INT_PTR)RunItemEditor(nullptr, req); }, file, line);
    }
};

std::wstring ClassOf(HWND hwnd) {
    wchar_t cls[64] = {};
    GetClassNameW(hwnd, cls, 64);
    return cls;
}

using Texts = std::vector<std::wstring>;

Texts ListTexts(HWND list) {
    Texts out;
    int n = (int)SendMessageW(list, LB_GETCOUNT, 0, 0);
    for (int i = 0; i < n; ++i) {
        wchar_t text[300] = {};
        SendMessageW(list, LB_GETTEXT, i, (LPARAM)text);
        out.push_back(text);
    }
    return out;
}

Texts ChoiceTexts(FieldType type) {
    Texts out;
    for (int i = 0; i < choiceCount(type); ++i) out.push_back(choiceText(type, i).c_str());
    return out;
}

// Keys go to the control focused when a step runs, so every key that moves
// the focus gets a step of its own.
void PressSteps(ui::Script& s, UINT vk, int times) {
    for (int i = 0; i < times; ++i) s.Step([vk](ui::Dlg& d) { d.Key(vk); });
}

// Waits until the focus is back on control `id` after a message box. Under
// Wine on a bare X server the closing box now and then leaves the desktop in
// front: the dialog is then brought back as a tap on it would, and must still
// put the focus on the field it chose.
std::function<bool(ui::Dlg&)> FocusBackOn(int id) {
    return [id](ui::Dlg& d) {
        if (!GetActiveWindow()) SetForegroundWindow(d.hwnd);
        return d.FocusId() == id;
    };
}

int Selected(HWND list) { return (int)SendMessageW(list, LB_GETCURSEL, 0, 0); }

// True when the control lies wholly inside its dialog's client area.
bool InView(ui::Dlg& d, int id) {
    RECT rc, client = d.ClientRect(0);
    GetWindowRect(d.Item(id), &rc);
    MapWindowPoints(nullptr, d.hwnd, (POINT*)&rc, 2);
    return rc.top >= client.top && rc.bottom <= client.bottom;
}

void CheckValueUnchanged(const FieldValue& got, const FieldValue& want, const char* file, int line) {
    CHECK_EQ_AT(std::wstring(got.text.c_str()), std::wstring(want.text.c_str()), file, line);
    CHECK_EQ_AT(got.choice, want.choice, file, line);
    CHECK_EQ_AT((int)got.storedType, (int)want.storedType, file, line);
    CHECK_AT(memcmp(&got.time, &want.time, sizeof(SYSTEMTIME)) == 0, file, line);
}

// A 32-bit picture to draw or copy into, read back pixel by pixel.
struct Picture {
    MemoryDC dc{nullptr};
    BitmapHandle bitmap;
    Picture(int width, int height) : bitmap(CreateBitmap(width, height, 1, 32, nullptr)) { SelectObject(dc, bitmap); }
    // The first and last rows with a dark pixel left of `right` ({-1, -1}: none).
    std::pair<int, int> InkRows(int right, int height) const {
        std::pair<int, int> rows = {-1, -1};
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < right; ++x) {
                const COLORREF p = GetPixel(dc, x, y);
                if (GetRValue(p) + GetGValue(p) + GetBValue(p) < 3 * 128) rows = {rows.first < 0 ? y : rows.first, y};
            }
        return rows;
    }
};

// A picker as it is on the screen: its drop-down button (from the first
// column near the right edge that is not background over the middle half of
// the box) is the density's width, and its text lies where DrawText centres
// the same text in the same font in the box. Both are compared with the
// picker's own pixels, so no host font can move one against the other.
void CheckPickerFace(HWND picker, const char* file, int line) {
    RedrawWindow(picker, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    RECT rc;
    GetClientRect(picker, &rc);
    Picture shown(rc.right, rc.bottom), centred(rc.right, rc.bottom);
    HDC screen = GetDC(picker);
    BitBlt(shown.dc, 0, 0, rc.right, rc.bottom, screen, 0, 0, SRCCOPY);
    ReleaseDC(picker, screen);

    const COLORREF back = GetPixel(shown.dc, 1, 1);
    const int want = ScaleX(kPickerButtonWidth);
    int buttonLeft = rc.right;
    for (int x = std::max(0, (int)rc.right - 2 * want); x < rc.right && buttonLeft == rc.right; ++x) {
        bool border = true;
        for (int y = rc.bottom / 4; y < rc.bottom * 3 / 4 && border; ++y) border = GetPixel(shown.dc, x, y) != back;
        if (border) buttonLeft = x;
    }
    if (rc.right - buttonLeft < want - 1)
        zvtest::Fail(file, line, "picker button " + std::to_string(rc.right - buttonLeft) + " pixels wide, want " +
                                     std::to_string(want));

    wchar_t text[64] = {};
    GetWindowTextW(picker, text, 64);
    PatBlt(centred.dc, 0, 0, rc.right, rc.bottom, WHITENESS);  // black text on white, as a new DC draws
    SelectedObject font(centred.dc, (HGDIOBJ)SendMessageW(picker, WM_GETFONT, 0, 0));
    DrawTextW(centred.dc, text, -1, &rc, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    const auto got = shown.InkRows(buttonLeft, rc.bottom), wanted = centred.InkRows(rc.right, rc.bottom);
    if (got.first < 0 || std::abs(got.first - wanted.first) > 1 || std::abs(got.second - wanted.second) > 1)
        zvtest::Fail(file, line, "picker text on rows " + std::to_string(got.first) + "-" + std::to_string(got.second) +
                                     ", centred on " + std::to_string(wanted.first) + "-" +
                                     std::to_string(wanted.second));
}

}  // namespace

// At 192 dpi, where a size left unscaled shows: the form fits and the pickers
// keep their face. Cancel, and Back outside an edit box, leave the item as it
// was. Every type gets its editor, labelled with its name (an unnamed field:
// its type's name), showing a new item's values and its fields' default texts.
TEST_CASE(Ui_ItemEd_EachTypeGetsItsEditor) {
    uitest::DensityScope density(192);
    Run run(EveryType());
    run.item.values[9].text = L"own";  // a value with text keeps it
    run.item.values[4].choice = 1;     // Yes first, No second: the entry at position `choice`
    run.item.values[6].choice = 7;     // out of range: starts at the first entry
    const ListItem before = run.item;
    ui::Script cancel;
    cancel.Step([&](ui::Dlg& d) {
        uitest::ControlsFit(d.hwnd, {kItemLabelFirstId, kItemEditorFirstId, kItemLabelFirstId + 3,
                                     kItemEditorFirstId + 3, kItemEditorFirstId + 9}, ZV_HERE);
        CHECK_EQ((int)uitest::FontOf(d.Item(kItemEditorFirstId)).lfHeight, -ScaleY(12));
        CheckPickerFace(d.Item(kItemEditorFirstId + 1), ZV_HERE);
    });
    PressSteps(cancel, VK_DOWN, 2);
    PressSteps(cancel, VK_RIGHT, 1);
    PressSteps(cancel, VK_DOWN, 1);
    cancel.Step([](ui::Dlg& d) { d.Type(L" more"); });
    cancel.Step([](ui::Dlg& d) { d.SoftKey(ui::Right); });
    ui::Script back;
    PressSteps(back, VK_DOWN, 2);
    back.Step([](ui::Dlg& d) { d.Back(); });
    for (ui::Script* script : {&cancel, &back}) {
        CHECK_EQ(run.Go(*script), 0);
        for (int i = 0; i < 10; ++i) CheckValueUnchanged(run.item.values[i], before.values[i], ZV_HERE);
    }

    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        const wchar_t* editorClass[] = {L"SysDateTimePick32", L"SysDateTimePick32", L"ListBox", L"Edit", L"ListBox",
                                        L"Edit",              L"ListBox",           L"SysDateTimePick32", L"ListBox",
                                        L"Edit"};
        for (int i = 0; i < 10; ++i) {
            CHECK_EQ(ClassOf(d.Item(kItemEditorFirstId + i)), std::wstring(editorClass[i]));
            if (editorClass[i][0] != L'S')  // edits and lists have an up-down control with the editor as buddy
                CHECK_EQ((HWND)SendMessageW(d.Item(kItemUpDownFirstId + i), UDM_GETBUDDY, 0, 0),
                         d.Item(kItemEditorFirstId + i));
        }
        CHECK_EQ(d.Text(kItemLabelFirstId + 0), std::wstring(L"Due :"));
        CHECK_EQ(d.Text(kItemLabelFirstId + 8), std::wstring(L"Progress :"));
        CHECK_EQ(d.Text(kItemLabelFirstId + 9), ResText(IDS_TYPE_TEXT) + L" :");  // no name: the type's name
        CHECK(ListTexts(d.Item(kItemEditorFirstId + 2)) == ChoiceTexts(FieldType::Priority));
        CHECK(ListTexts(d.Item(kItemEditorFirstId + 4)) == Texts({ResText(IDS_YES), ResText(IDS_NO)}));
        CHECK(ListTexts(d.Item(kItemEditorFirstId + 6)) == ChoiceTexts(FieldType::Check));
        CHECK(ListTexts(d.Item(kItemEditorFirstId + 8)) == ChoiceTexts(FieldType::Selection));
        CHECK_EQ(Selected(d.Item(kItemEditorFirstId + 2)), 2);
        CHECK_EQ(Selected(d.Item(kItemEditorFirstId + 4)), 1);
        CHECK_EQ(Selected(d.Item(kItemEditorFirstId + 6)), 0);
        CHECK_EQ(d.Text(kItemEditorFirstId + 3), std::wstring(L"milk"));
        CHECK_EQ(d.Text(kItemEditorFirstId + 5), std::wstring(L"12"));
        CHECK_EQ(d.Text(kItemEditorFirstId + 9), std::wstring(L"own"));
        // The picker layouts (month-day-year here): "/" for dates, "." and three blanks for date and time.
        CHECK_EQ(d.Text(kItemEditorFirstId + 0), std::wstring(L"03/01/2007"));
        CHECK_EQ(d.Text(kItemEditorFirstId + 1), std::wstring(L"09:05"));
        CHECK_EQ(d.Text(kItemEditorFirstId + 7), std::wstring(L"03.01.2007   09:05"));
        CHECK_EQ(d.FocusId(), kItemEditorFirstId);
        // A new moment as the user picks it in the pickers.
        SYSTEMTIME t = MakeTime(2008, 12, 24, 18, 30);
        for (int i : {0, 1, 7}) SendMessageW(d.Item(kItemEditorFirstId + i), DTM_SETSYSTEMTIME, GDT_VALID, (LPARAM)&t);
        d.SetFocusTo(kItemEditorFirstId + 3);
    });
    s.Step([](ui::Dlg& d) { d.Enter(); });  // Enter in an edit box confirms like Done
    CHECK_EQ(run.Go(s), 1);
    const FieldValue* v = run.item.values.data();
    for (int i = 0; i < 10; ++i) CHECK_EQ((int)v[i].storedType, (int)run.fields[i].type);
    CHECK_EQ(std::wstring(v[3].text.c_str()) + L"," + v[5].text.c_str() + L"," + v[9].text.c_str(), L"milk,12,own");
    CHECK_EQ(v[3].choice, 0);  // every editor is asked for its list index
    CHECK_EQ(v[2].choice, 2);
    CHECK_EQ(std::wstring(v[2].text.c_str()), std::wstring(choiceText(FieldType::Priority, 2).c_str()));
    CHECK_EQ(v[4].choice, 1);
    CHECK_EQ(std::wstring(v[4].text.c_str()), ResText(IDS_NO));
    CHECK_EQ(v[6].choice, 0);
    CHECK_EQ(v[0].time.wYear * 10000 + v[0].time.wMonth * 100 + v[0].time.wDay, 20081224);
    CHECK_EQ(v[1].time.wHour * 100 + v[1].time.wMinute, 1830);
    // Date and time values keep the texts shown when the dialog opened...
    CHECK_EQ(std::wstring(v[0].text.c_str()), std::wstring(L"03/01/2007"));
    CHECK_EQ(std::wstring(v[7].text.c_str()), std::wstring(L"03.01.2007   09:05"));

    // ...until the caller rebuilds them with the list layouts (their formats
    // are checked with the date texts).
    const int oldSlash = UseSlashDates;
    for (int slash : {1, 0}) {
        UseSlashDates = slash;
        RebuildItemTimeTexts(run.fields.data(), (int)run.fields.size(), run.item);
        wchar_t want[kTimeTextCapacity];
        formatDateText(v[0].time, listTextLayout().order, slash != 0, want);
        CHECK_EQ(std::wstring(v[0].text.c_str()), std::wstring(want));
        CHECK_EQ(std::wstring(v[1].text.c_str()), std::wstring(L"18:30"));
        CHECK_EQ(std::wstring(v[7].text.c_str()).find(want), (size_t)0);
    }
    UseSlashDates = oldSlash;
}

TEST_CASE(Ui_ItemEd_NumberCheck) {
    // The rule itself: digits and "."; a leading "-" lets anything through.
    const struct {
        const wchar_t* text;
        bool accepted;
    } kRule[] = {{L"", true}, {L"12.5", true}, {L"-abc", true}, {L"-", true},
                 {L"1a", false}, {L"1-", false}, {L" 1", false}};
    for (const auto& row : kRule)
        if ((bool)IsAcceptedNumberText(row.text) != row.accepted)
            zvtest::Fail(ZV_HERE, "IsAcceptedNumberText(" + zvtest::Show(row.text) + ") should be " +
                                      zvtest::Show(row.accepted));

    Run run({Field(L"Note", FieldType::Text), Field(L"Amount", FieldType::Number), Field(L"", FieldType::Number)});
    ui::Script s;
    s.Step([](ui::Dlg& d) {
        d.Type(L"x");
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) { d.Type(L"1a"); });
    s.Step([](ui::Dlg& d) { d.Key(VK_UP); });  // leave the bad field: the check must bring the focus back
    s.Step([](ui::Dlg& d) { d.SoftKey(ui::Left); });
    s.WaitUntil(FocusBackOn(kItemEditorFirstId + 1));  // still open, on the bad field
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(ui::MessageBoxes().size(), 1u);
        SetWindowTextW(d.Item(kItemEditorFirstId + 1), L"-abc");
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) {
        d.Type(L"2x");  // the unnamed number field is named by its type
        d.SoftKey(ui::Left);
    });
    s.WaitUntil(FocusBackOn(kItemEditorFirstId + 2));
    s.Step([](ui::Dlg& d) {
        SetWindowTextW(d.Item(kItemEditorFirstId + 2), L"3.5");
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(run.Go(s), 1);
    const std::wstring invalid = ResText(IDS_NUMBER_INVALID), error = ResText(IDS_ERROR_CAPTION);
    uitest::CheckBoxes({{invalid + L" \"Amount\"", error, MB_ICONEXCLAMATION},
                        {invalid + L" \"" + ResText(IDS_TYPE_NUMBER) + L"\"", error, MB_ICONEXCLAMATION}},
                       ZV_HERE);
    CHECK_EQ(std::wstring(run.item.values[0].text.c_str()), std::wstring(L"x"));
    CHECK_EQ(std::wstring(run.item.values[1].text.c_str()), std::wstring(L"-abc"));
    CHECK_EQ(std::wstring(run.item.values[2].text.c_str()), std::wstring(L"3.5"));
}

TEST_CASE(Ui_ItemEd_AllEmptyGivesZero) {
    // The empty selection (choice 11) has no text either.
    Run run({Field(L"Note", FieldType::Text), Field(L"Qty", FieldType::Number),
             Field(L"Progress", FieldType::Selection, L"", kEmptySelection)});
    run.item.values[0].text = L"gone";
    const ListItem before = run.item;
    ui::Script s;
    s.Step([](ui::Dlg& d) { SetWindowTextW(d.Item(kItemEditorFirstId), L""); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(Selected(d.Item(kItemEditorFirstId + 2)), kEmptySelection);
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(run.Go(s), 0);
    CHECK_EQ(run.req.result, 0);
    for (int i = 0; i < 3; ++i) CheckValueUnchanged(run.item.values[i], before.values[i], ZV_HERE);
}

// A picker takes typed parts, Up and Down change the part edited, Right moves
// to the next part and the Action key ends the editing. Then Up and Down move
// between rows and stop at the ends; Left and Right turn a list, wrapping
// (each move: the key, then the focused row and the level shown). Then taps:
// on a label, an up-down arrow and an editor.
TEST_CASE(Ui_ItemEd_KeysAndTapsMoveBetweenRowsAndChangeValues) {
    Run run({Field(L"Due", FieldType::Date), Field(L"Level", FieldType::Priority), Field(L"Note", FieldType::Text),
             Field(L"Tick", FieldType::Check), Field(L"At", FieldType::Time)});
    ui::Script s;
    s.Step([](ui::Dlg& d) { d.Type(L"12"); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kItemEditorFirstId), std::wstring(L"12/01/2007"));
        d.Key(VK_RIGHT);
    });
    s.Step([](ui::Dlg& d) { d.Type(L"23"); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kItemEditorFirstId), std::wstring(L"12/23/2007"));
        d.Key(VK_UP);
        d.Key(VK_UP);
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kItemEditorFirstId), std::wstring(L"12/24/2007"));
        d.Enter();  // ends the editing, not the dialog
    });
    const struct {
        UINT key;
        int row, level;
    } kMoves[] = {{VK_UP, 0, 0},   {VK_DOWN, 1, 0}, {VK_LEFT, 1, 2}, {VK_RIGHT, 1, 0},
                  {VK_RIGHT, 1, 1}, {VK_DOWN, 2, 1}, {VK_DOWN, 3, 1}, {VK_DOWN, 4, 1},
                  {VK_DOWN, 4, 1}, {VK_UP, 3, 1},   {VK_UP, 2, 1}};
    for (size_t i = 0; i < sizeof kMoves / sizeof kMoves[0]; ++i) {
        const auto m = kMoves[i];
        s.Step([m](ui::Dlg& d) { d.Key(m.key); });
        s.Step([m, i](ui::Dlg& d) {
            const std::string at = "move " + std::to_string(i) + ": ";
            CHECK_EQ(at + "row " + std::to_string(d.FocusId() - kItemEditorFirstId),
                     at + "row " + std::to_string(m.row));
            CHECK_EQ(at + "level " + std::to_string(Selected(d.Item(kItemEditorFirstId + 1))),
                     at + "level " + std::to_string(m.level));
        });
    }
    s.Step([](ui::Dlg& d) { d.Type(L"ab"); });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kItemEditorFirstId + 2), std::wstring(L"ab"));
        d.Back();  // Back erases in an edit box
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.Text(kItemEditorFirstId + 2), std::wstring(L"a"));
        d.TapCenter(kItemLabelFirstId + 1);  // a tap on a label goes to its editor
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), kItemEditorFirstId + 1);
        RECT rc = d.ClientRect(kItemUpDownFirstId + 1);
        d.Tap(kItemUpDownFirstId + 1, rc.right - 3, rc.bottom / 2);  // the right arrow turns the list
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(Selected(d.Item(kItemEditorFirstId + 1)), 2);
        d.TapCenter(kItemEditorFirstId + 2);
    });
    s.Step([](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), kItemEditorFirstId + 2);
        d.Key(VK_DOWN);
    });
    s.Step([](ui::Dlg& d) { d.Key(VK_DOWN); });
    s.Step([](ui::Dlg& d) {
        d.Type(L"18");  // the hour of the time picker
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(run.Go(s), 1);
    const FieldValue* v = run.item.values.data();
    CHECK_EQ(v[0].time.wMonth * 100 + v[0].time.wDay, 1224);
    CHECK_EQ(v[1].choice, 2);
    CHECK_EQ(std::wstring(v[2].text.c_str()), std::wstring(L"a"));
    CHECK_EQ(v[4].time.wHour * 100 + v[4].time.wMinute, 1805);
}

TEST_CASE(Ui_ItemEd_FiftyFieldsScrollToTheLast) {
    std::vector<FieldDef> fields;
    for (int i = 0; i < kMaxFields; ++i) {
        fields.push_back(Field((L"F" + std::to_wstring(i + 1)).c_str(), i % 2 ? FieldType::Priority : FieldType::Text));
    }
    fields[kMaxFields - 1].type = FieldType::Text;
    Run run(fields);
    const int last = kItemEditorFirstId + kMaxFields - 1;
    ui::Script s;
    s.Step([&](ui::Dlg& d) {
        CHECK(GetWindowLongW(d.hwnd, GWL_STYLE) & WS_VSCROLL);
        CHECK(InView(d, kItemEditorFirstId));
        CHECK(!InView(d, last));
        // The soft-key bar spans the scroll bar too.
        RECT bar;
        GetWindowRect(d.MenuBar(), &bar);
        CHECK_EQ((int)(bar.right - bar.left), (int)d.ClientRect().right + GetSystemMetrics(SM_CXVSCROLL));
    });
    PressSteps(s, VK_DOWN, kMaxFields - 1);
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), last);
        CHECK(InView(d, last));
        CHECK(InView(d, kItemLabelFirstId + kMaxFields - 1));
        CHECK(!InView(d, kItemEditorFirstId));
        d.Type(L"end");
    });
    PressSteps(s, VK_UP, 14);
    s.Step([&](ui::Dlg& d) {
        CHECK_EQ(d.FocusId(), last - 14);
        CHECK(InView(d, last - 14));
        SendMessageW(d.hwnd, WM_VSCROLL, SB_TOP, 0);  // the scroll bar moves the rows too
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(InView(d, kItemEditorFirstId));
        CHECK(!InView(d, last));
        // The wheel over a one-entry list scrolls the form, not the list.
        SendMessageW(d.Item(kItemEditorFirstId + 1), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    });
    s.Step([&](ui::Dlg& d) {
        CHECK(!InView(d, kItemEditorFirstId));
        CHECK_EQ(Selected(d.Item(kItemEditorFirstId + 1)), 0);
        CHECK_EQ((int)SendMessageW(d.Item(kItemEditorFirstId + 1), LB_GETTOPINDEX, 0, 0), 0);
        d.SoftKey(ui::Left);
    });
    CHECK_EQ(run.Go(s), 1);
    CHECK_EQ((int)run.item.values.size(), kMaxFields);
    CHECK_EQ(std::wstring(run.item.values[kMaxFields - 1].text.c_str()), std::wstring(L"end"));
}
