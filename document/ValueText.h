// Display texts of cell values, the date-time picker formats of the item
// editor, and the parsing of text back into dates and choices (text import).
//
// Dates are fixed-width numbers, never month names; times are 24-hour. The
// layout depends on the locale's date order and on UseSlashDates ("/" or ".").
// The file reader asks the system default locale, the item editor the user
// default locale; they may differ on purpose.
#pragma once
#include <windows.h>

#include "document/ListDocument.h"

// LOCALE_IDATE: "0" month-day-year, "1" day-month-year, "2" year-month-day;
// anything else is treated as month-day-year.
enum class DateOrder { MonthDayYear = 0, DayMonthYear = 1, YearMonthDay = 2 };

// Date order from the first character of a LOCALE_IDATE text.
DateOrder dateOrderFromText(const wchar_t* idate);
// Date order of a locale (LOCALE_SYSTEM_DEFAULT, LOCALE_USER_DEFAULT).
DateOrder localeDateOrder(LCID locale);

// Everything a display text depends on besides the value.
struct TextLayout {
    DateOrder order = DateOrder::MonthDayYear;
    bool slash = true;
};
// The layout of texts made by the file reader: system default locale's
// order, separator from UseSlashDates. Ask once per file, not per cell.
TextLayout listTextLayout();

// Longest display text of a time type (a date-and-time with 5-digit year).
constexpr int kTimeTextCapacity = 32;
// "%.2d.%.2d.%.4d" and friends by order and separator; returns the length.
// `out` holds at least kTimeTextCapacity characters.
int formatDateText(const SYSTEMTIME& t, DateOrder order, bool slash, wchar_t* out);
// "%.2d:%.2d" with hour and minute.
int formatTimeText(const SYSTEMTIME& t, wchar_t* out);
// The date layout, four blanks, then the time.
int formatDateTimeText(const SYSTEMTIME& t, DateOrder order, bool slash, wchar_t* out);

// Rebuilds value.text from the typed member by `type`: dates and times from
// `time`, choices from `choice` (YesNo: 1 or more -> 8089, less -> 8090).
// Text and Number keep their text; a type outside 0..8 leaves it as it is.
void buildDisplayText(FieldValue& value, FieldType type, const TextLayout& layout);
// The same with listTextLayout() (one locale query).
void buildDisplayText(FieldValue& value, FieldType type);

// The DTM_SETFORMATW format of the item editor's date-time picker for a
// Date, Time or DateTime field (nullptr for other types). The DateTime and
// Time formats end with an unmatched quote on purpose; DateTime always
// uses "." and three blanks.
const wchar_t* pickerFormat(FieldType type, DateOrder order, bool slash);
// The same for the user default locale and UseSlashDates.
const wchar_t* pickerFormat(FieldType type);

// Reads "MM?dd?yyyy": characters 0-1 month, 3-4 day, 6-9 year, each as a
// decimal number (leading digits, 0 when none); separators are not looked
// at. Every other member is 0. A day-month-year text comes out with day and
// month exchanged, and any time of day is dropped: that is the behaviour.
SYSTEMTIME parseDateText(const wchar_t* text);
// The index whose choice text equals `text` exactly (case-sensitive); the
// last match wins; no match gives 0. An empty text in a Selection field
// gives 11 without comparing.
int parseChoiceText(FieldType type, const wchar_t* text);

// Forgets the cached choice and type-name texts (after the language module
// changes). Texts are cached per module handle, so this is rarely needed.
void resetValueTextCache();
// Cached resource texts (loaded once per language module); never null.
const wchar_t* cachedChoiceText(FieldType type, int index);
const wchar_t* cachedTypeName(FieldType type);
