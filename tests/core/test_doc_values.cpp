// Display texts, picker formats, parsing, choice texts and new-item defaults.
#include <string>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "document/ListDocument.h"
#include "document/ValueText.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"

using doctest::MakeTime;

// "year-month-day" and "hour:minute", so that a failing row shows itself.
static std::wstring YMD(const SYSTEMTIME& t) {
    return std::to_wstring(t.wYear) + L"-" + std::to_wstring(t.wMonth) + L"-" + std::to_wstring(t.wDay);
}
static std::wstring HM(const SYSTEMTIME& t) { return std::to_wstring(t.wHour) + L":" + std::to_wstring(t.wMinute); }

// 1 March 2007 (and 9:05) in every order and separator; "%.4d" pads short
// years and lets long ones grow.
TEST_CASE(Doc_DateLayoutsInEveryOrder) {
    const DateOrder MDY = DateOrder::MonthDayYear, DMY = DateOrder::DayMonthYear, YMD = DateOrder::YearMonthDay;
    const struct {
        SYSTEMTIME t;
        DateOrder order;
        bool slash;
        const wchar_t *date, *dateTime;
    } kRows[] = {
        {MakeTime(2007, 3, 1, 9, 5), MDY, true, L"03/01/2007", L"03/01/2007    09:05"},
        {MakeTime(2007, 3, 1, 9, 5), MDY, false, L"03.01.2007", L"03.01.2007    09:05"},
        {MakeTime(2007, 3, 1, 9, 5), DMY, true, L"01/03/2007", L"01/03/2007    09:05"},
        {MakeTime(2007, 3, 1, 9, 5), DMY, false, L"01.03.2007", L"01.03.2007    09:05"},
        {MakeTime(2007, 3, 1, 9, 5), YMD, true, L"2007/03/01", L"2007/03/01    09:05"},
        {MakeTime(2007, 3, 1, 9, 5), YMD, false, L"2007.03.01", L"2007.03.01    09:05"},
        {MakeTime(7, 1, 2, 23, 0), MDY, true, L"01/02/0007", L"01/02/0007    23:00"},
        {MakeTime(12345, 12, 31), YMD, false, L"12345.12.31", L"12345.12.31    00:00"},
    };
    for (const auto& row : kRows) {
        wchar_t date[kTimeTextCapacity], dateTime[kTimeTextCapacity];
        formatDateText(row.t, row.order, row.slash, date);
        formatDateTimeText(row.t, row.order, row.slash, dateTime);
        CHECK_EQ(std::wstring(date), std::wstring(row.date));
        CHECK_EQ(std::wstring(dateTime), std::wstring(row.dateTime));
    }
    wchar_t out[kTimeTextCapacity];
    formatTimeText(MakeTime(2007, 3, 1, 23, 0), out);
    CHECK_EQ(std::wstring(out), L"23:00");
}

TEST_CASE(Doc_DateOrderFromLocaleText) {
    const struct {
        const wchar_t* text;
        DateOrder order;
    } kRows[] = {{L"0", DateOrder::MonthDayYear}, {L"1", DateOrder::DayMonthYear}, {L"2", DateOrder::YearMonthDay},
                 {L"7", DateOrder::MonthDayYear}, {L"", DateOrder::MonthDayYear},  {nullptr, DateOrder::MonthDayYear}};
    for (const auto& row : kRows) CHECK_EQ((int)dateOrderFromText(row.text), (int)row.order);
    // The test runner pins the locale: en_US reads month-day-year, and
    // ZV_LOCALE overrides it; check the query agrees with the locale's text.
    wchar_t idate[5] = {};
    GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDATE, idate, 5);
    CHECK(localeDateOrder(LOCALE_SYSTEM_DEFAULT) == dateOrderFromText(idate));
}

TEST_CASE(Doc_PickerFormatsQuotedExactly) {
    // Per order: the date with "." and "/", and the date and time (always
    // ".", three blanks, unmatched closing quote).
    const struct {
        DateOrder order;
        const wchar_t *dot, *slash, *dateTime;
    } kRows[] = {
        {DateOrder::MonthDayYear, L"MM'.'dd'.'yyyy", L"MM'/'dd'/'yyyy", L"MM'.'dd'.'yyyy   HH':'mm'"},
        {DateOrder::DayMonthYear, L"dd'.'MM'.'yyyy", L"dd'/'MM'/'yyyy", L"dd'.'MM'.'yyyy   HH':'mm'"},
        {DateOrder::YearMonthDay, L"yyyy'.'MM'.'dd", L"yyyy'/'MM'/'dd", L"yyyy'.'MM'.'dd   HH':'mm'"},
    };
    for (const auto& row : kRows) {
        CHECK_EQ(pickerFormat(FieldType::Date, row.order, false), row.dot);
        CHECK_EQ(pickerFormat(FieldType::Date, row.order, true), row.slash);
        for (bool slash : {false, true}) {
            CHECK_EQ(pickerFormat(FieldType::DateTime, row.order, slash), row.dateTime);
            CHECK_EQ(pickerFormat(FieldType::Time, row.order, slash), L"HH':'mm'");
        }
    }
    CHECK(pickerFormat(FieldType::Text, DateOrder::MonthDayYear, true) == nullptr);
}

// Month, day, year whatever the layout: 12.25.2007 is 25 December, 25.12.2007
// has month 25. Separators are not looked at; the time of day is dropped.
TEST_CASE(Doc_ParseDateReadsMonthDayYearAlways) {
    const struct {
        const wchar_t* text;
        int year, month, day;
    } kRows[] = {{L"12.25.2007", 2007, 12, 25}, {L"25.12.2007", 2007, 25, 12}, {L"03x01y2007    09:05", 2007, 3, 1},
                 {L"", 0, 0, 0}, {L"ab.cd.efgh", 0, 0, 0}, {L"4", 0, 4, 0}};  // short text: only the month
    for (const auto& row : kRows) {
        SYSTEMTIME t = parseDateText(row.text);
        CHECK_EQ(YMD(t) + L" from " + row.text, YMD(MakeTime(row.year, row.month, row.day)) + L" from " + row.text);
        CHECK_EQ(t.wHour + t.wMinute + t.wSecond, 0);
    }
}

// Choices by their type's table (YesNo: any non-zero is yes, so 5 reads as
// yes; outside the table: empty, never a neighbouring text); texts kept for
// numbers and unknown types; dates in the layout given.
TEST_CASE(Doc_DisplayTextOfChoices) {
    TextLayout dmy;
    dmy.order = DateOrder::DayMonthYear;
    dmy.slash = true;
    const struct {
        FieldType type;
        int choice;
        std::wstring want;
    } kRows[] = {{FieldType::YesNo, 5, ResText(IDS_YES)},
                 {FieldType::YesNo, -3, ResText(IDS_NO)},
                 {FieldType::Priority, 0, ResText(IDS_PRIORITY_NORMAL)},
                 {FieldType::Priority, 3, L""},
                 {FieldType::Selection, 13, ResText(IDS_SELECTION_13)},
                 {FieldType::Selection, 14, L""},
                 {FieldType::Selection, 99, L""},
                 {FieldType::Number, 0, L"kept"},
                 {FieldType(12), 0, L"kept"},
                 {FieldType::Date, 0, L"01/03/2007"},
                 {FieldType::Time, 0, L"09:05"}};
    for (const auto& row : kRows) {
        FieldValue v;
        v.choice = row.choice;
        v.text = L"kept";
        v.time = MakeTime(2007, 3, 1, 9, 5);
        buildDisplayText(v, row.type, dmy);
        CHECK_EQ(std::to_wstring((int)row.type) + L": " + v.text.c_str(),
                 std::to_wstring((int)row.type) + L": " + row.want);
    }
    CHECK(choiceText(FieldType::Selection, -1).IsEmpty());
    CHECK(fieldTypeName(FieldType(9)).IsEmpty());
    CHECK(fieldTypeName(FieldType(-1)).IsEmpty());
    CHECK(dateDefaultModeText(5).IsEmpty());
    CHECK(timeDefaultModeText(1).IsEmpty());
    CHECK(timeDefaultModeListText(49).IsEmpty());
}

// An empty Selection is 11; unknown text is 0; the comparison is exact.
TEST_CASE(Doc_ParseChoice) {
    const struct {
        FieldType type;
        std::wstring text;
        int choice;
    } kRows[] = {{FieldType::Selection, L"", 11},
                 {FieldType::Selection, L"no such text", 0},
                 {FieldType::YesNo, ResText(IDS_YES), 1},
                 {FieldType::YesNo, ResText(IDS_NO), 0},
                 {FieldType::Priority, ResText(IDS_PRIORITY_LOW), 2},
                 {FieldType::Priority, ResText(IDS_PRIORITY_HIGH), 1},
                 {FieldType::Check, ResText(8145), 1},
                 {FieldType::Selection, ResText(8126), 2}};
    for (const auto& row : kRows)
        CHECK_EQ(row.text + L" -> " + std::to_wstring(parseChoiceText(row.type, row.text.c_str())),
                 row.text + L" -> " + std::to_wstring(row.choice));
    std::wstring yes = ResText(IDS_YES);
    for (wchar_t& c : yes) c = (wchar_t)towupper(c);
    if (yes != ResText(IDS_YES)) CHECK_EQ(parseChoiceText(FieldType::YesNo, yes.c_str()), 0);
}

// Time mode 0 is now, then half hours from midnight; date modes move from
// today, and the year moves alone (29 February stays, even in a common year).
TEST_CASE(Doc_NewItemTimeAndDateModes) {
    const SYSTEMTIME now = MakeTime(2007, 3, 1, 14, 47), feb28 = MakeTime(2007, 2, 28, 10, 15);
    const struct {
        int mode;
        const wchar_t* time;
    } kTimes[] = {{0, L"14:47"}, {1, L"0:0"}, {4, L"1:30"}, {19, L"9:0"}, {48, L"23:30"}};
    // Each result named by its mode, so that a failing row shows itself.
    auto mode = [](int m, const std::wstring& s) { return std::to_wstring(m) + L": " + s; };
    for (const auto& row : kTimes) CHECK_EQ(mode(row.mode, HM(newItemTime(row.mode, now))), mode(row.mode, row.time));
    const struct {
        int mode;
        SYSTEMTIME from;
        const wchar_t* date;
    } kDates[] = {{0, feb28, L"2007-2-28 10:15"}, {1, feb28, L"2007-3-1 10:15"},   {2, feb28, L"2007-3-7 10:15"},
                  {3, feb28, L"2007-3-28 10:15"}, {77, feb28, L"2007-2-28 10:15"},
                  {4, MakeTime(2008, 2, 29), L"2009-2-29 0:0"}};
    for (const auto& row : kDates) {
        SYSTEMTIME d = newItemDate(row.mode, row.from);
        CHECK_EQ(mode(row.mode, YMD(d) + L" " + HM(d)), mode(row.mode, row.date));
    }
}

TEST_CASE(Doc_NewItemDefaults) {
    FieldDef fields[4] = {doctest::MakeField(L"", 7, L"", 0, 0, 1, 4), doctest::MakeField(L"", 8, L"", 3),
                          doctest::MakeField(L"", 3, L"x"), doctest::MakeField(L"", 0, L"", 0, 0, 2)};
    ListItem item;
    item.backColor = 5;
    initNewItem(item, fields, 4, MakeTime(2007, 12, 31, 18, 20));
    CHECK_EQ(item.backColor, kNoBackColor);
    CHECK_EQ((int)item.values.size(), 4);
    CHECK_EQ(YMD(item.values[0].time) + L" " + HM(item.values[0].time), L"2008-1-1 1:30");
    CHECK(item.values[1].storedType == FieldType::Selection);
    CHECK_EQ(item.values[1].choice, 3);
    CHECK(item.values[2].text.IsEmpty());  // the item editor fills default texts
    CHECK_EQ(item.values[3].time.wDay, 7);
    ListDocument doc;
    doc.fields.assign(fields, fields + 4);
    ListItem a = newListItem(doc), b = newListItem(doc);
    CHECK(b.serial == a.serial + 1);
}

TEST_CASE(Doc_CellTextCapacityAndCopies) {
    std::wstring longText(400, L'a');
    CellText t(longText.c_str());
    CHECK_EQ(t.Length(), 257);
    CellText shortText(L"short");
    CellText copy = t;
    CHECK_EQ(copy.Length(), 257);
    CHECK(copy.c_str() != t.c_str());
    CellText moved = std::move(copy);
    CHECK_EQ(moved.Length(), 257);
    CHECK(copy.IsEmpty());
    moved = shortText;
    CHECK_EQ(moved.c_str(), L"short");
    moved = moved;  // self-assignment keeps the text
    CHECK_EQ(moved.c_str(), L"short");
    t.Assign(L"ab\0cd", 5);  // stops at an embedded NUL
    CHECK_EQ(t.Length(), 2);
    t.Assign(t.c_str() + 1, 1);  // from its own characters
    CHECK_EQ(t.c_str(), L"b");
    FieldDef f;
    f.SetName(longText.c_str());
    CHECK_EQ((int)wcslen(f.name), 249);
    FieldDef unnamed;
    unnamed.type = FieldType::Check;
    CHECK_EQ(std::wstring(fieldDisplayName(unnamed).c_str()), ResText(IDS_TYPE_CHECK));
}
