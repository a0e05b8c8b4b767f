// Display texts, picker formats, parsing, choice texts and new-item defaults.
#include <string>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "document/ListDocument.h"
#include "document/ValueText.h"
#include "tests/framework/ZvTest.h"

static SYSTEMTIME Time(int y, int mo, int d, int h = 0, int mi = 0) {
    SYSTEMTIME t = {};
    t.wYear = (WORD)y;
    t.wMonth = (WORD)mo;
    t.wDay = (WORD)d;
    t.wHour = (WORD)h;
    t.wMinute = (WORD)mi;
    return t;
}

static std::wstring DateText(const SYSTEMTIME& t, DateOrder order, bool slash) {
    wchar_t out[kTimeTextCapacity];
    formatDateText(t, order, slash, out);
    return out;
}

static std::wstring DateTimeText(const SYSTEMTIME& t, DateOrder order, bool slash) {
    wchar_t out[kTimeTextCapacity];
    formatDateTimeText(t, order, slash, out);
    return out;
}

TEST_CASE(Doc_DateLayoutsInEveryOrder) {
    SYSTEMTIME march1 = Time(2007, 3, 1);
    CHECK_EQ(DateText(march1, DateOrder::MonthDayYear, true), L"03/01/2007");
    CHECK_EQ(DateText(march1, DateOrder::MonthDayYear, false), L"03.01.2007");
    CHECK_EQ(DateText(march1, DateOrder::DayMonthYear, true), L"01/03/2007");
    CHECK_EQ(DateText(march1, DateOrder::DayMonthYear, false), L"01.03.2007");
    CHECK_EQ(DateText(march1, DateOrder::YearMonthDay, true), L"2007/03/01");
    CHECK_EQ(DateText(march1, DateOrder::YearMonthDay, false), L"2007.03.01");
    // "%.4d" pads short years and lets long ones grow.
    CHECK_EQ(DateText(Time(7, 1, 2), DateOrder::MonthDayYear, true), L"01/02/0007");
    CHECK_EQ(DateText(Time(12345, 12, 31), DateOrder::YearMonthDay, false), L"12345.12.31");
}

TEST_CASE(Doc_DateTimeHasFourBlanksAndPaddedTime) {
    SYSTEMTIME t = Time(2007, 3, 1, 9, 5);
    CHECK_EQ(DateTimeText(t, DateOrder::MonthDayYear, true), L"03/01/2007    09:05");
    CHECK_EQ(DateTimeText(t, DateOrder::DayMonthYear, false), L"01.03.2007    09:05");
    CHECK_EQ(DateTimeText(t, DateOrder::YearMonthDay, true), L"2007/03/01    09:05");
    wchar_t out[kTimeTextCapacity];
    formatTimeText(Time(2007, 3, 1, 23, 0), out);
    CHECK_EQ(std::wstring(out), L"23:00");
}

TEST_CASE(Doc_DateOrderFromLocaleText) {
    CHECK(dateOrderFromText(L"0") == DateOrder::MonthDayYear);
    CHECK(dateOrderFromText(L"1") == DateOrder::DayMonthYear);
    CHECK(dateOrderFromText(L"2") == DateOrder::YearMonthDay);
    CHECK(dateOrderFromText(L"7") == DateOrder::MonthDayYear);
    CHECK(dateOrderFromText(L"") == DateOrder::MonthDayYear);
    CHECK(dateOrderFromText(nullptr) == DateOrder::MonthDayYear);
    // The test runner pins the locale: en_US reads month-day-year, and
    // ZV_LOCALE overrides it; check the query agrees with the locale's text.
    wchar_t idate[5] = {};
    GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDATE, idate, 5);
    CHECK(localeDateOrder(LOCALE_SYSTEM_DEFAULT) == dateOrderFromText(idate));
}

TEST_CASE(Doc_PickerFormatsQuotedExactly) {
    CHECK_EQ(pickerFormat(FieldType::Date, DateOrder::MonthDayYear, false), L"MM'.'dd'.'yyyy");
    CHECK_EQ(pickerFormat(FieldType::Date, DateOrder::DayMonthYear, false), L"dd'.'MM'.'yyyy");
    CHECK_EQ(pickerFormat(FieldType::Date, DateOrder::YearMonthDay, false), L"yyyy'.'MM'.'dd");
    CHECK_EQ(pickerFormat(FieldType::Date, DateOrder::MonthDayYear, true), L"MM'/'dd'/'yyyy");
    CHECK_EQ(pickerFormat(FieldType::Date, DateOrder::DayMonthYear, true), L"dd'/'MM'/'yyyy");
    CHECK_EQ(pickerFormat(FieldType::Date, DateOrder::YearMonthDay, true), L"yyyy'/'MM'/'dd");
    for (bool slash : {false, true}) {
        CHECK_EQ(pickerFormat(FieldType::Time, DateOrder::DayMonthYear, slash), L"HH':'mm'");
        // Date and time: always ".", three blanks, unmatched closing quote.
        CHECK_EQ(pickerFormat(FieldType::DateTime, DateOrder::MonthDayYear, slash), L"MM'.'dd'.'yyyy   HH':'mm'");
        CHECK_EQ(pickerFormat(FieldType::DateTime, DateOrder::DayMonthYear, slash), L"dd'.'MM'.'yyyy   HH':'mm'");
        CHECK_EQ(pickerFormat(FieldType::DateTime, DateOrder::YearMonthDay, slash), L"yyyy'.'MM'.'dd   HH':'mm'");
    }
    CHECK(pickerFormat(FieldType::Text, DateOrder::MonthDayYear, true) == nullptr);
}

TEST_CASE(Doc_ParseDateReadsMonthDayYearAlways) {
    SYSTEMTIME t = parseDateText(L"12.25.2007");
    CHECK_EQ(t.wYear, 2007);
    CHECK_EQ(t.wMonth, 12);
    CHECK_EQ(t.wDay, 25);
    t = parseDateText(L"25.12.2007");
    CHECK_EQ(t.wMonth, 25);
    CHECK_EQ(t.wDay, 12);
    // Separators are not looked at; the time of day is dropped.
    t = parseDateText(L"03x01y2007    09:05");
    CHECK_EQ(t.wMonth, 3);
    CHECK_EQ(t.wDay, 1);
    CHECK_EQ(t.wYear, 2007);
    CHECK_EQ(t.wHour, 0);
    CHECK_EQ(t.wMinute, 0);
    CHECK_EQ(t.wSecond, 0);
    t = parseDateText(L"");
    CHECK_EQ(t.wYear + t.wMonth + t.wDay, 0);
    t = parseDateText(L"ab.cd.efgh");
    CHECK_EQ(t.wYear + t.wMonth + t.wDay, 0);
    t = parseDateText(L"4");  // short text: only the month is there
    CHECK_EQ(t.wMonth, 4);
    CHECK_EQ(t.wDay, 0);
}

TEST_CASE(Doc_ChoiceTextsByTable) {
    CHECK_EQ(choiceTextId(FieldType::Priority, 0), (UINT)IDS_PRIORITY_NORMAL);
    CHECK_EQ(choiceTextId(FieldType::Priority, 1), (UINT)IDS_PRIORITY_HIGH);
    CHECK_EQ(choiceTextId(FieldType::Priority, 2), (UINT)IDS_PRIORITY_LOW);
    CHECK_EQ(choiceTextId(FieldType::YesNo, 1), (UINT)IDS_YES);
    CHECK_EQ(choiceTextId(FieldType::YesNo, 0), (UINT)IDS_NO);
    CHECK_EQ(choiceTextId(FieldType::Check, 0), 8144u);
    CHECK_EQ(choiceTextId(FieldType::Check, 1), 8145u);
    CHECK_EQ(choiceTextId(FieldType::Selection, 0), 8124u);
    CHECK_EQ(choiceTextId(FieldType::Selection, 10), 8134u);
    CHECK_EQ(choiceTextId(FieldType::Selection, 11), 8187u);
    CHECK_EQ(choiceTextId(FieldType::Selection, 13), 8189u);
    CHECK_EQ(choiceTextId(FieldType::Selection, 14), 0u);
    CHECK_EQ(choiceTextId(FieldType::Priority, 3), 0u);
    CHECK_EQ(choiceTextId(FieldType::Text, 0), 0u);
    CHECK_EQ(std::wstring(choiceText(FieldType::Priority, 0).c_str()), ResText(IDS_PRIORITY_NORMAL));
    CHECK(choiceText(FieldType::Selection, -1).IsEmpty());
    CHECK_EQ(std::wstring(fieldTypeName(FieldType::Number).c_str()), ResText(IDS_TYPE_NUMBER));
    CHECK(fieldTypeName(FieldType(9)).IsEmpty());
    CHECK(fieldTypeName(FieldType(-1)).IsEmpty());
    CHECK_EQ(std::wstring(dateDefaultModeText(4).c_str()), ResText(IDS_DATE_MODE_NEXT_YEAR));
    CHECK(dateDefaultModeText(5).IsEmpty());
    CHECK_EQ(std::wstring(timeDefaultModeText(0).c_str()), ResText(IDS_TIME_MODE_NOW));
    CHECK(timeDefaultModeText(1).IsEmpty());
    CHECK(!timeDefaultModeListText(3).IsEmpty());
    CHECK(timeDefaultModeListText(49).IsEmpty());
    // The texts really come from the language module.
    CHECK(!ResText(IDS_YES).empty());
}

TEST_CASE(Doc_DisplayTextOfChoices) {
    FieldValue v;
    v.choice = 5;
    buildDisplayText(v, FieldType::YesNo);
    CHECK_EQ(std::wstring(v.text.c_str()), ResText(IDS_YES));
    v.choice = -3;
    buildDisplayText(v, FieldType::YesNo);
    CHECK_EQ(std::wstring(v.text.c_str()), ResText(IDS_NO));
    v.choice = 0;
    buildDisplayText(v, FieldType::Priority);
    CHECK_EQ(std::wstring(v.text.c_str()), ResText(IDS_PRIORITY_NORMAL));
    v.choice = 99;  // outside the table: empty
    buildDisplayText(v, FieldType::Selection);
    CHECK(v.text.IsEmpty());
    v.text = L"kept";
    buildDisplayText(v, FieldType::Number);
    CHECK_EQ(v.text.c_str(), L"kept");
    buildDisplayText(v, FieldType(12));
    CHECK_EQ(v.text.c_str(), L"kept");
    v.time = Time(2007, 3, 1, 9, 5);
    TextLayout dmy;
    dmy.order = DateOrder::DayMonthYear;
    dmy.slash = true;
    buildDisplayText(v, FieldType::Date, dmy);
    CHECK_EQ(v.text.c_str(), L"01/03/2007");
    buildDisplayText(v, FieldType::Time, dmy);
    CHECK_EQ(v.text.c_str(), L"09:05");
}

TEST_CASE(Doc_ParseChoice) {
    CHECK_EQ(parseChoiceText(FieldType::Selection, L""), 11);
    CHECK_EQ(parseChoiceText(FieldType::Selection, L"no such text"), 0);
    CHECK_EQ(parseChoiceText(FieldType::YesNo, ResText(IDS_YES).c_str()), 1);
    CHECK_EQ(parseChoiceText(FieldType::YesNo, ResText(IDS_NO).c_str()), 0);
    CHECK_EQ(parseChoiceText(FieldType::Priority, ResText(IDS_PRIORITY_LOW).c_str()), 2);
    CHECK_EQ(parseChoiceText(FieldType::Priority, ResText(IDS_PRIORITY_HIGH).c_str()), 1);
    CHECK_EQ(parseChoiceText(FieldType::Check, ResText(8145).c_str()), 1);
    CHECK_EQ(parseChoiceText(FieldType::Selection, ResText(8126).c_str()), 2);
    // Exact comparison: case matters.
    std::wstring yes = ResText(IDS_YES);
    for (wchar_t& c : yes) c = (wchar_t)towupper(c);
    if (yes != ResText(IDS_YES)) CHECK_EQ(parseChoiceText(FieldType::YesNo, yes.c_str()), 0);
}

TEST_CASE(Doc_ColumnAlignment) {
    for (int t = 0; t < kFieldTypeCount; ++t) {
        bool centred = t == 2 || t == 5 || t == 6 || t == 8;
        CHECK_EQ(isCentredColumn(FieldType(t)), centred);
        CHECK_EQ(columnFormat(FieldType(t)), centred ? 2 : 0);
    }
}

TEST_CASE(Doc_NewItemTimeFromHalfHours) {
    SYSTEMTIME now = Time(2007, 3, 1, 14, 47);
    SYSTEMTIME t = newItemTime(0, now);
    CHECK_EQ(t.wHour, 14);
    CHECK_EQ(t.wMinute, 47);
    t = newItemTime(1, now);
    CHECK_EQ(t.wHour, 0);
    CHECK_EQ(t.wMinute, 0);
    t = newItemTime(4, now);
    CHECK_EQ(t.wHour, 1);
    CHECK_EQ(t.wMinute, 30);
    t = newItemTime(19, now);
    CHECK_EQ(t.wHour, 9);
    CHECK_EQ(t.wMinute, 0);
    t = newItemTime(48, now);
    CHECK_EQ(t.wHour, 23);
    CHECK_EQ(t.wMinute, 30);
}

TEST_CASE(Doc_NewItemDateModes) {
    SYSTEMTIME now = Time(2007, 2, 28, 10, 15);
    SYSTEMTIME d = newItemDate(0, now);
    CHECK_EQ(d.wMonth, 2);
    CHECK_EQ(d.wDay, 28);
    d = newItemDate(1, now);
    CHECK_EQ(d.wMonth, 3);
    CHECK_EQ(d.wDay, 1);
    CHECK_EQ(d.wHour, 10);
    d = newItemDate(2, now);
    CHECK_EQ(d.wDay, 7);
    d = newItemDate(3, now);
    CHECK_EQ(d.wMonth, 3);
    CHECK_EQ(d.wDay, 28);
    d = newItemDate(77, now);
    CHECK_EQ(d.wDay, 28);
    // The year moves alone: 29 February stays, even in a common year.
    d = newItemDate(4, Time(2008, 2, 29));
    CHECK_EQ(d.wYear, 2009);
    CHECK_EQ(d.wMonth, 2);
    CHECK_EQ(d.wDay, 29);
}

TEST_CASE(Doc_NewItemDefaults) {
    FieldDef fields[4];
    fields[0].type = FieldType::DateTime;
    fields[0].dateDefaultMode = 1;
    fields[0].timeDefaultMode = 4;
    fields[1].type = FieldType::Selection;
    fields[1].defaultChoice = 3;
    fields[2].type = FieldType::Text;
    fields[2].SetDefaultText(L"x");
    fields[3].type = FieldType::Date;
    fields[3].dateDefaultMode = 2;
    ListItem item;
    item.backColor = 5;
    initNewItem(item, fields, 4, Time(2007, 12, 31, 18, 20));
    CHECK_EQ(item.backColor, kNoBackColor);
    CHECK_EQ(item.fieldCount, 4);
    CHECK_EQ((int)item.values.size(), 4);
    const SYSTEMTIME& dt = item.values[0].time;
    CHECK_EQ(dt.wYear, 2008);
    CHECK_EQ(dt.wMonth, 1);
    CHECK_EQ(dt.wDay, 1);
    CHECK_EQ(dt.wHour, 1);
    CHECK_EQ(dt.wMinute, 30);
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
    CHECK(sizeof(CellText) <= 44);
    CHECK(sizeof(FieldValue) <= 68);
    FieldDef f;
    f.SetName(longText.c_str());
    CHECK_EQ((int)wcslen(f.name), 249);
    FieldDef unnamed;
    unnamed.type = FieldType::Check;
    CHECK_EQ(std::wstring(fieldDisplayName(unnamed).c_str()), ResText(IDS_TYPE_CHECK));
}
