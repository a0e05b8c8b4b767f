#include "document/ValueText.h"

#include <cstdlib>
#include <string>

#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "document/DocStrings.h"

DateOrder dateOrderFromText(const wchar_t* idate) {
    if (idate && idate[0] == L'1') return DateOrder::DayMonthYear;
    if (idate && idate[0] == L'2') return DateOrder::YearMonthDay;
    return DateOrder::MonthDayYear;
}

DateOrder localeDateOrder(LCID locale) {
    wchar_t idate[5] = {};
    if (!GetLocaleInfoW(locale, LOCALE_IDATE, idate, 5)) idate[0] = 0;
    return dateOrderFromText(idate);
}

TextLayout listTextLayout() {
    TextLayout layout;
    layout.order = localeDateOrder(LOCALE_SYSTEM_DEFAULT);
    layout.slash = UseSlashDates != 0;
    return layout;
}

// "%.Nd": at least `digits` digits, zero-padded; the values are 16-bit
// unsigned, so never negative.
static wchar_t* PutNumber(wchar_t* out, unsigned value, int digits) {
    wchar_t reversed[12];
    int n = 0;
    do {
        reversed[n++] = wchar_t(L'0' + value % 10);
        value /= 10;
    } while (value);
    while (n < digits) reversed[n++] = L'0';
    while (n) *out++ = reversed[--n];
    return out;
}

static wchar_t* PutDate(wchar_t* out, const SYSTEMTIME& t, DateOrder order, wchar_t sep) {
    switch (order) {
    case DateOrder::DayMonthYear:
        out = PutNumber(out, t.wDay, 2);
        *out++ = sep;
        out = PutNumber(out, t.wMonth, 2);
        *out++ = sep;
        return PutNumber(out, t.wYear, 4);
    case DateOrder::YearMonthDay:
        out = PutNumber(out, t.wYear, 4);
        *out++ = sep;
        out = PutNumber(out, t.wMonth, 2);
        *out++ = sep;
        return PutNumber(out, t.wDay, 2);
    default:
        out = PutNumber(out, t.wMonth, 2);
        *out++ = sep;
        out = PutNumber(out, t.wDay, 2);
        *out++ = sep;
        return PutNumber(out, t.wYear, 4);
    }
}

static wchar_t* PutTime(wchar_t* out, const SYSTEMTIME& t) {
    out = PutNumber(out, t.wHour, 2);
    *out++ = L':';
    return PutNumber(out, t.wMinute, 2);
}

int formatDateText(const SYSTEMTIME& t, DateOrder order, bool slash, wchar_t* out) {
    wchar_t* end = PutDate(out, t, order, slash ? L'/' : L'.');
    *end = 0;
    return int(end - out);
}

int formatTimeText(const SYSTEMTIME& t, wchar_t* out) {
    wchar_t* end = PutTime(out, t);
    *end = 0;
    return int(end - out);
}

int formatDateTimeText(const SYSTEMTIME& t, DateOrder order, bool slash, wchar_t* out) {
    wchar_t* end = PutDate(out, t, order, slash ? L'/' : L'.');
    for (int i = 0; i < 4; ++i) *end++ = L' ';
    end = PutTime(end, t);
    *end = 0;
    return int(end - out);
}

// ---- cached resource texts ---------------------------------------------------

namespace {
struct TextCache {
    HINSTANCE module = nullptr;
    bool loaded = false;
    std::wstring typeNames[kFieldTypeCount];
    std::wstring choices[kFieldTypeCount][kSelectionChoiceCount];
} g_textCache;

TextCache& Texts() {
    if (!g_textCache.loaded || g_textCache.module != hLangModule) {
        g_textCache.module = hLangModule;
        g_textCache.loaded = true;
        for (int t = 0; t < kFieldTypeCount; ++t) {
            g_textCache.typeNames[t] = ResText(docstr::kFirstTypeName + t);
            for (int i = 0; i < kSelectionChoiceCount; ++i) {
                UINT id = choiceTextId(FieldType(t), i);
                g_textCache.choices[t][i] = id ? ResText(id) : std::wstring();
            }
        }
    }
    return g_textCache;
}
}  // namespace

void resetValueTextCache() { g_textCache.loaded = false; }

const wchar_t* cachedTypeName(FieldType type) {
    if (!IsKnownType(type)) return L"";
    return Texts().typeNames[int(type)].c_str();
}

const wchar_t* cachedChoiceText(FieldType type, int index) {
    if (!IsKnownType(type) || index < 0 || index >= choiceCount(type)) return L"";
    return Texts().choices[int(type)][index].c_str();
}

// ---- display texts ---------------------------------------------------------

void buildDisplayText(FieldValue& value, FieldType type, const TextLayout& layout) {
    wchar_t buffer[kTimeTextCapacity];
    switch (type) {
    case FieldType::Date:
        value.text.Assign(buffer, formatDateText(value.time, layout.order, layout.slash, buffer));
        break;
    case FieldType::Time:
        value.text.Assign(buffer, formatTimeText(value.time, buffer));
        break;
    case FieldType::DateTime:
        value.text.Assign(buffer, formatDateTimeText(value.time, layout.order, layout.slash, buffer));
        break;
    case FieldType::YesNo:
        // Any value of 1 or more is a yes.
        value.text = cachedChoiceText(type, value.choice >= 1 ? 1 : 0);
        break;
    case FieldType::Priority:
    case FieldType::Check:
    case FieldType::Selection:
        value.text = cachedChoiceText(type, value.choice);
        break;
    default:
        break;  // Text and Number are their own text; unknown types stay as they are
    }
}

void buildDisplayText(FieldValue& value, FieldType type) { buildDisplayText(value, type, listTextLayout()); }

const wchar_t* pickerFormat(FieldType type, DateOrder order, bool slash) {
    int o = order == DateOrder::DayMonthYear ? 1 : order == DateOrder::YearMonthDay ? 2 : 0;
    static const wchar_t* const dateDot[3] = {L"MM'.'dd'.'yyyy", L"dd'.'MM'.'yyyy", L"yyyy'.'MM'.'dd"};
    static const wchar_t* const dateSlash[3] = {L"MM'/'dd'/'yyyy", L"dd'/'MM'/'yyyy", L"yyyy'/'MM'/'dd"};
    static const wchar_t* const dateTime[3] = {L"MM'.'dd'.'yyyy   HH':'mm'", L"dd'.'MM'.'yyyy   HH':'mm'",
                                               L"yyyy'.'MM'.'dd   HH':'mm'"};
    switch (type) {
    case FieldType::Date: return slash ? dateSlash[o] : dateDot[o];
    case FieldType::Time: return L"HH':'mm'";
    case FieldType::DateTime: return dateTime[o];
    default: return nullptr;
    }
}

const wchar_t* pickerFormat(FieldType type) {
    return pickerFormat(type, localeDateOrder(LOCALE_USER_DEFAULT), UseSlashDates != 0);
}

// _wtol on a two- or four-character window of the text: leading blanks and
// a sign are allowed, then digits; 0 when there are none.
static int NumberAt(const wchar_t* text, size_t length, size_t from, size_t count) {
    if (from >= length) return 0;
    wchar_t part[8] = {};
    for (size_t i = 0; i < count && from + i < length; ++i) part[i] = text[from + i];
    return (int)_wtol(part);
}

SYSTEMTIME parseDateText(const wchar_t* text) {
    // Every locale order is read as month-day-year; the system keeps it so.
    (void)localeDateOrder(LOCALE_SYSTEM_DEFAULT);
    SYSTEMTIME t = {};
    if (!text) return t;
    size_t length = wcslen(text);
    t.wMonth = (WORD)NumberAt(text, length, 0, 2);
    t.wDay = (WORD)NumberAt(text, length, 3, 2);
    t.wYear = (WORD)NumberAt(text, length, 6, 4);
    return t;
}

int parseChoiceText(FieldType type, const wchar_t* text) {
    if (!text) text = L"";
    if (type == FieldType::Selection && text[0] == 0) return kEmptySelection;
    int result = 0;
    int count = choiceCount(type);
    for (int i = 0; i < count; ++i) {
        if (wcscmp(cachedChoiceText(type, i), text) == 0) result = i;
    }
    return result;
}
