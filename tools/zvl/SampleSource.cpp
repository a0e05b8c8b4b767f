#include "tools/zvl/SampleSource.h"

#include <cwctype>
#include <sstream>
#include <vector>

#include "tools/zvl/ZvlConsole.h"
#include "tools/zvl/ZvlDescribe.h"

namespace {

// The list window's four row highlights.
struct NamedColor {
    const wchar_t* name;
    COLORREF color;
};
const NamedColor kRowColors[] = {
    {L"blue", 0xDDB589}, {L"green", 0xB5DBB5}, {L"red", 0xC9CEFF}, {L"yellow", 0xB5FFFF}};

// Time values have no date of their own; the program's half-hour defaults
// come out of an OLE automation date on its day zero, 30 December 1899.
constexpr WORD kTimeOnlyYear = 1899, kTimeOnlyMonth = 12, kTimeOnlyDay = 30;

struct Failure {
    std::wstring text;
};

std::wstring Trim(const std::wstring& s) {
    size_t b = s.find_first_not_of(L" \t\r");
    if (b == std::wstring::npos) return std::wstring();
    size_t e = s.find_last_not_of(L" \t\r");
    return s.substr(b, e - b + 1);
}

std::wstring Lower(std::wstring s) {
    for (wchar_t& c : s) c = (wchar_t)towlower(c);
    return s;
}

std::vector<std::wstring> SplitCells(const std::wstring& line) {
    std::vector<std::wstring> cells(1);
    for (size_t i = 0; i < line.size(); ++i) {
        wchar_t c = line[i];
        if (c == L'\\' && i + 1 < line.size() && (line[i + 1] == L'|' || line[i + 1] == L'\\' || line[i + 1] == L'#')) {
            cells.back() += line[++i];
        } else if (c == L'|') {
            cells.emplace_back();
        } else {
            cells.back() += c;
        }
    }
    for (std::wstring& cell : cells) cell = Trim(cell);
    return cells;
}

[[noreturn]] void Fail(const std::wstring& text) { throw Failure{text}; }

bool ParseNumber(const std::wstring& text, size_t at, size_t digits, WORD& out) {
    if (at + digits > text.size()) return false;
    unsigned v = 0;
    for (size_t i = at; i < at + digits; ++i) {
        if (text[i] < L'0' || text[i] > L'9') return false;
        v = v * 10 + (text[i] - L'0');
    }
    out = (WORD)v;
    return true;
}

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
    static const int days[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : days[month - 1];
}

// Checks that the date exists and fills in the day of the week.
bool CompleteDate(SYSTEMTIME& t) {
    if (t.wYear < 1601 || t.wMonth < 1 || t.wMonth > 12 || t.wDay < 1 || t.wDay > DaysInMonth(t.wYear, t.wMonth))
        return false;
    FILETIME ft;
    if (!SystemTimeToFileTime(&t, &ft)) return false;
    SYSTEMTIME check;
    if (!FileTimeToSystemTime(&ft, &check)) return false;
    t.wDayOfWeek = check.wDayOfWeek;
    return true;
}

SYSTEMTIME ParseDate(const std::wstring& text) {
    SYSTEMTIME t = {};
    if (text.size() != 10 || text[4] != L'-' || text[7] != L'-' || !ParseNumber(text, 0, 4, t.wYear) ||
        !ParseNumber(text, 5, 2, t.wMonth) || !ParseNumber(text, 8, 2, t.wDay) || !CompleteDate(t))
        Fail(L"\"" + text + L"\" is not a date (YYYY-MM-DD)");
    return t;
}

void ParseClock(const std::wstring& text, SYSTEMTIME& t) {
    if (text.size() != 5 || text[2] != L':' || !ParseNumber(text, 0, 2, t.wHour) ||
        !ParseNumber(text, 3, 2, t.wMinute) || t.wHour > 23 || t.wMinute > 59)
        Fail(L"\"" + text + L"\" is not a time (HH:MM)");
}

SYSTEMTIME ParseTime(const std::wstring& text) {
    SYSTEMTIME t = {};
    t.wYear = kTimeOnlyYear;
    t.wMonth = kTimeOnlyMonth;
    t.wDay = kTimeOnlyDay;
    t.wDayOfWeek = 6;  // 30 December 1899 was a Saturday
    ParseClock(text, t);
    return t;
}

SYSTEMTIME ParseDateTime(const std::wstring& text) {
    size_t blank = text.find(L' ');
    if (blank == std::wstring::npos) Fail(L"\"" + text + L"\" is not a date and time (YYYY-MM-DD HH:MM)");
    SYSTEMTIME t = ParseDate(text.substr(0, blank));
    ParseClock(Trim(text.substr(blank + 1)), t);
    return t;
}

int ParseChoice(FieldType type, const std::wstring& text) {
    std::wstring t = Lower(text);
    switch (type) {
    case FieldType::Priority:
        if (t == L"normal" || t.empty()) return 0;
        if (t == L"high") return 1;
        if (t == L"low") return 2;
        Fail(L"\"" + text + L"\" is not a priority (high, normal, low)");
    case FieldType::YesNo:
        if (t == L"yes") return 1;
        if (t == L"no" || t.empty()) return 0;
        Fail(L"\"" + text + L"\" is not yes or no");
    case FieldType::Check:
        if (t == L"x" || t == L"yes") return 1;
        if (t.empty() || t == L"no" || t == L"-") return 0;
        Fail(L"\"" + text + L"\" is not a check mark (x or empty)");
    case FieldType::Selection: {
        // The selection's choices are progress steps 0% to 100% (choices 0
        // to 10), the empty choice 11, "on hold" 12 and "cancelled" 13;
        // "#N" names choice N directly.
        if (t.empty()) return kEmptySelection;
        if (t == L"on hold") return 12;
        if (t == L"cancelled") return 13;
        wchar_t* end = nullptr;
        if (t[0] == L'#') {
            long v = wcstol(t.c_str() + 1, &end, 10);
            if (!*end && end != t.c_str() + 1 && v >= 0 && v < kSelectionChoiceCount) return (int)v;
        } else {
            long v = wcstol(t.c_str(), &end, 10);
            if (end != t.c_str() && end[0] == L'%' && !end[1] && v >= 0 && v <= 100 && v % 10 == 0) return (int)v / 10;
        }
        Fail(L"\"" + text + L"\" is not a selection (0% to 100% in steps of 10, on hold, cancelled, #N or empty)");
    }
    default: return 0;
    }
}

void CheckNumber(const std::wstring& text) {
    size_t i = text.size() && text[0] == L'-' ? 1 : 0;
    for (; i < text.size(); ++i)
        if (!(iswdigit(text[i]) || text[i] == L'.')) Fail(L"\"" + text + L"\" is not a number");
}

FieldValue ParseValue(FieldType type, const std::wstring& text) {
    FieldValue v;
    v.storedType = type;
    switch (type) {
    case FieldType::Date: v.time = ParseDate(text); break;
    case FieldType::Time: v.time = ParseTime(text); break;
    case FieldType::DateTime: v.time = ParseDateTime(text); break;
    case FieldType::Priority:
    case FieldType::YesNo:
    case FieldType::Check:
    case FieldType::Selection: v.choice = ParseChoice(type, text); break;
    case FieldType::Number: CheckNumber(text); v.text = text.c_str(); break;
    case FieldType::Text: v.text = text.c_str(); break;
    }
    return v;
}

FieldType ParseType(const std::wstring& text) {
    for (int i = 0; i < kFieldTypeCount; ++i)
        if (_wcsicmp(text.c_str(), TypeCodeName(FieldType(i))) == 0) return FieldType(i);
    Fail(L"\"" + text + L"\" is not a field type (Date, Time, Priority, Text, YesNo, Number, Check, DateTime, Selection)");
}

int ParseDateMode(const std::wstring& text) {
    static const wchar_t* const modes[kDateDefaultModeCount] = {L"today", L"tomorrow", L"in 1 week", L"in 4 weeks",
                                                                L"in 1 year"};
    std::wstring t = Lower(text);
    if (t.empty()) return 0;
    for (int i = 0; i < kDateDefaultModeCount; ++i)
        if (t == modes[i]) return i;
    Fail(L"\"" + text + L"\" is not a date default (today, tomorrow, in 1 week, in 4 weeks, in 1 year)");
}

int ParseTimeMode(const std::wstring& text) {
    if (text.empty() || Lower(text) == L"now") return 0;
    SYSTEMTIME t = {};
    ParseClock(text, t);
    if (t.wMinute != 0 && t.wMinute != 30) Fail(L"a time default is now or a half hour (08:00, 08:30)");
    return t.wHour * 2 + (t.wMinute == 30 ? 1 : 0) + 1;
}

void ParseDefault(FieldDef& field, const std::wstring& text) {
    switch (field.type) {
    case FieldType::Text: field.SetDefaultText(text.c_str()); break;
    case FieldType::Number: CheckNumber(text); field.SetDefaultText(text.c_str()); break;
    case FieldType::Date:
        field.dateDefaultMode = ParseDateMode(text);
        field.SetDefaultText(dateDefaultModeText(field.dateDefaultMode).c_str());
        break;
    case FieldType::Time:
        field.timeDefaultMode = ParseTimeMode(text);
        field.SetDefaultText(timeDefaultModeListText(field.timeDefaultMode).c_str());
        break;
    case FieldType::DateTime: {
        size_t comma = text.find(L',');
        field.dateDefaultMode = ParseDateMode(Trim(text.substr(0, comma)));
        field.timeDefaultMode = comma == std::wstring::npos ? 0 : ParseTimeMode(Trim(text.substr(comma + 1)));
        break;
    }
    case FieldType::YesNo: {
        // The field editor lists "No" first and stores the chosen row
        // inverted (row 0, "No", as choice 1); a template made here reads
        // back in the editor exactly as if the user had picked the default.
        int choice = text.empty() ? 0 : ParseChoice(field.type, text);
        field.defaultChoice = choice ? 0 : 1;
        field.SetDefaultText(choiceText(field.type, choice).c_str());
        break;
    }
    case FieldType::Priority:
    case FieldType::Check:
    case FieldType::Selection:
        field.defaultChoice = text.empty() && field.type != FieldType::Selection ? 0 : ParseChoice(field.type, text);
        field.SetDefaultText(choiceText(field.type, field.defaultChoice).c_str());
        break;
    }
}

FieldDef ParseColumn(const std::wstring& line) {
    std::vector<std::wstring> cells = SplitCells(line);
    if (cells.size() < 2 || cells.size() > 4) Fail(L"a column is: name | type | default | width");
    FieldDef field;
    if (cells[0].size() >= (size_t)kFieldTextCapacity) Fail(L"the field name is longer than 249 characters");
    field.SetName(cells[0].c_str());
    field.type = ParseType(cells[1]);
    ParseDefault(field, cells.size() > 2 ? cells[2] : std::wstring());
    std::wstring width = cells.size() > 3 ? Lower(cells[3]) : std::wstring(L"auto");
    if (width != L"auto" && !width.empty()) {
        wchar_t* end = nullptr;
        long v = wcstol(width.c_str(), &end, 10);
        if (*end || v <= 0 || v > 10000) Fail(L"\"" + cells[3] + L"\" is not a width (pixels or auto)");
        field.columnWidth = (int32_t)v;
    }
    return field;
}

COLORREF ParseRowColor(const std::wstring& text) {
    std::wstring t = Lower(text);
    if (t.empty() || t == L"none") return kNoBackColor;
    for (const NamedColor& c : kRowColors)
        if (t == c.name) return c.color;
    if (t.size() > 2 && t[0] == L'0' && t[1] == L'x') {
        wchar_t* end = nullptr;
        unsigned long v = wcstoul(t.c_str() + 2, &end, 16);
        if (!*end && v <= 0xFFFFFF) return (COLORREF)v;
    }
    Fail(L"\"" + text + L"\" is not a row colour (blue, green, red, yellow, none or 0xBBGGRR)");
}

class Parser {
public:
    explicit Parser(SampleSource& source) : m_source(source) {}

    void Line(const std::wstring& raw) {
        std::wstring line = Trim(raw);
        if (line.empty() || line[0] == L'#') return;
        if (line == L"columns:") return Enter(Section::Columns);
        if (line == L"items:") return Enter(Section::Items);
        switch (m_section) {
        case Section::Settings: return Setting(line);
        case Section::Columns: return Column(line);
        case Section::Items: return Item(line);
        }
    }

    void Finish() {
        if (!m_kindSeen) Fail(L"the source does not say its kind (kind: list or kind: template)");
        if (m_source.doc.fields.empty()) Fail(L"the source has no columns");
        if (m_source.isTemplate && m_sawItems && !m_source.doc.items.empty()) Fail(L"a template has no items");
        if (!m_sortField.empty()) ResolveSort();
    }

private:
    enum class Section { Settings, Columns, Items };

    void Enter(Section section) {
        if (section == Section::Items && m_source.doc.fields.empty()) Fail(L"items: comes before columns:");
        if (section <= m_section) Fail(L"sections come once each, in the order columns:, items:");
        m_section = section;
        m_sawItems = section == Section::Items;
    }

    void Setting(const std::wstring& line) {
        size_t colon = line.find(L':');
        if (colon == std::wstring::npos) Fail(L"expected \"name: value\" (kind, icon, sort)");
        std::wstring key = Lower(Trim(line.substr(0, colon)));
        std::wstring value = Trim(line.substr(colon + 1));
        if (key == L"kind") {
            std::wstring kind = Lower(value);
            if (kind != L"list" && kind != L"template") Fail(L"kind is list or template");
            m_source.isTemplate = kind == L"template";
            m_kindSeen = true;
        } else if (key == L"icon") {
            m_source.icon = value;
        } else if (key == L"sort") {
            size_t comma = value.rfind(L',');
            if (comma == std::wstring::npos) Fail(L"sort is: field name, ascending or descending");
            m_sortField = Trim(value.substr(0, comma));
            std::wstring order = Lower(Trim(value.substr(comma + 1)));
            if (order != L"ascending" && order != L"descending") Fail(L"sort order is ascending or descending");
            m_sortAscending = order == L"ascending";
        } else {
            Fail(L"unknown setting \"" + key + L"\" (kind, icon, sort)");
        }
    }

    void Column(const std::wstring& line) {
        if ((int)m_source.doc.fields.size() >= kMaxFields) Fail(L"a list has at most 50 fields");
        m_source.doc.fields.push_back(ParseColumn(line));
    }

    void Item(const std::wstring& line) {
        std::vector<std::wstring> cells = SplitCells(line);
        ListDocument& doc = m_source.doc;
        if (!m_headerSeen) return Header(cells);
        size_t fieldCount = doc.fields.size();
        size_t expected = fieldCount + (m_colorColumn ? 1 : 0);
        if (cells.size() > expected)
            Fail(L"the row has " + std::to_wstring(cells.size()) + L" cells; the header names " +
                 std::to_wstring(expected));
        cells.resize(expected);
        ListItem item;
        item.fieldCount = (int32_t)fieldCount;
        item.ordinal = (int32_t)doc.items.size();
        item.serial = doc.nextSerial++;
        for (size_t i = 0; i < fieldCount; ++i) {
            try {
                item.values.push_back(ParseValue(doc.fields[i].type, cells[i]));
            } catch (const Failure& f) {
                Fail(std::wstring(fieldDisplayName(doc.fields[i]).c_str()) + L": " + f.text);
            }
        }
        if (m_colorColumn) item.backColor = ParseRowColor(cells[fieldCount]);
        doc.items.push_back(std::move(item));
    }

    void Header(std::vector<std::wstring>& cells) {
        m_headerSeen = true;
        if (!cells.empty() && Lower(cells.back()) == L"@color") {
            m_colorColumn = true;
            cells.pop_back();
        }
        const std::vector<FieldDef>& fields = m_source.doc.fields;
        bool same = cells.size() == fields.size();
        for (size_t i = 0; same && i < cells.size(); ++i) same = cells[i] == fields[i].name;
        if (!same) Fail(L"the first line of items: must name the columns in order (with an optional @color)");
    }

    void ResolveSort() {
        ListDocument& doc = m_source.doc;
        if (m_source.isTemplate) Fail(L"a template is not sorted");
        for (int i = 0; i < doc.fieldCount(); ++i) {
            if (m_sortField == doc.fields[i].name) {
                doc.sortColumn = i;
                // The stored flag means "ascending" for text-like columns and
                // "descending" for dates and numbers.
                doc.sortDescending = SortIsAscending(doc.fields[i].type, true) == m_sortAscending;
                return;
            }
        }
        Fail(L"sort names \"" + m_sortField + L"\", which is not a column");
    }

    SampleSource& m_source;
    Section m_section = Section::Settings;
    bool m_kindSeen = false;
    bool m_sawItems = false;
    bool m_headerSeen = false;
    bool m_colorColumn = false;
    std::wstring m_sortField;
    bool m_sortAscending = true;
};

}  // namespace

bool ParseSampleSource(const std::string& utf8, SampleSource& source, std::wstring& error) {
    std::string text = utf8;
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) text.erase(0, 3);
    std::wistringstream in(FromUtf8(text));
    Parser parser(source);
    std::wstring line;
    int number = 0;
    try {
        while (std::getline(in, line)) {
            ++number;
            parser.Line(line);
        }
        number = 0;
        parser.Finish();
    } catch (const Failure& f) {
        error = number ? L"line " + std::to_wstring(number) + L": " + f.text : f.text;
        return false;
    }
    return true;
}
