// zvl show: the list as its window shows it, as text lines or as JSON.
#include <cstdio>
#include <cwchar>

#include "document/ListFile.h"
#include "tools/zvl/ZvlCommands.h"
#include "tools/zvl/ZvlConsole.h"
#include "tools/zvl/ZvlDescribe.h"
#include "tools/zvl/ZvlFiles.h"

namespace {

std::wstring TitleLine(const ListDocument& doc) {
    std::wstring line;
    for (int i = 0; i < doc.fieldCount(); ++i) {
        if (i) line += L'\t';
        line += OneLineCell(fieldDisplayName(doc.fields[i]).c_str());
    }
    return line;
}

std::wstring ItemLine(const ListItem& item) {
    std::wstring line;
    for (size_t i = 0; i < item.values.size(); ++i) {
        if (i) line += L'\t';
        line += OneLineCell(item.values[i].text.c_str());
    }
    return line;
}

// ---- JSON ------------------------------------------------------------------

std::wstring Quoted(const wchar_t* text) {
    std::wstring out = L"\"";
    for (const wchar_t* p = text; p && *p; ++p) {
        wchar_t c = *p;
        switch (c) {
        case L'"': out += L"\\\""; break;
        case L'\\': out += L"\\\\"; break;
        case L'\n': out += L"\\n"; break;
        case L'\r': out += L"\\r"; break;
        case L'\t': out += L"\\t"; break;
        default:
            if (c < 0x20) {
                wchar_t buf[8];
                swprintf(buf, 8, L"\\u%04x", (unsigned)c);
                out += buf;
            } else {
                out += c;
            }
        }
    }
    return out + L"\"";
}
std::wstring Quoted(const std::wstring& text) { return Quoted(text.c_str()); }

std::wstring DateValue(const SYSTEMTIME& t) {
    wchar_t buf[32];
    swprintf(buf, 32, L"\"%04u-%02u-%02u\"", t.wYear, t.wMonth, t.wDay);
    return buf;
}

std::wstring TimeValue(const SYSTEMTIME& t) {
    wchar_t buf[32];
    swprintf(buf, 32, L"\"%02u:%02u\"", t.wHour, t.wMinute);
    return buf;
}

std::wstring DateTimeValue(const SYSTEMTIME& t) {
    wchar_t buf[48];
    swprintf(buf, 48, L"\"%04u-%02u-%02uT%02u:%02u\"", t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute);
    return buf;
}

std::wstring TypedValue(const FieldValue& v) {
    switch (v.storedType) {
    case FieldType::Date: return DateValue(v.time);
    case FieldType::Time: return TimeValue(v.time);
    case FieldType::DateTime: return DateTimeValue(v.time);
    case FieldType::Priority:
    case FieldType::YesNo:
    case FieldType::Check:
    case FieldType::Selection: return Quoted(choiceText(v.storedType, v.choice).c_str());
    // A number keeps its text as typed: "6.20" read back as a JSON number
    // would lose its trailing zero.
    case FieldType::Text:
    case FieldType::Number: return Quoted(v.text.c_str());
    }
    return L"null";
}

std::wstring ColorValue(COLORREF color) {
    if (color == kNoBackColor) return L"null";
    wchar_t buf[16];
    swprintf(buf, 16, L"\"#%02X%02X%02X\"", GetRValue(color), GetGValue(color), GetBValue(color));
    return buf;
}

// Choices and default modes by name, each with its stored code beside it.
std::wstring FieldJson(const FieldDef& f) {
    bool dated = f.type == FieldType::Date || f.type == FieldType::DateTime;
    bool timed = f.type == FieldType::Time || f.type == FieldType::DateTime;
    std::wstring s = L"    {\"name\": " + Quoted(f.name) + L", \"title\": " + Quoted(fieldDisplayName(f).c_str()) +
                     L", \"type\": " + Quoted(TypeCodeName(f.type)) + L", \"typeId\": " + std::to_wstring(int(f.type)) +
                     L", \"typeName\": " + Quoted(fieldTypeName(f.type).c_str()) + L",\n     \"width\": " +
                     std::to_wstring(f.columnWidth) + L", \"default\": " + Quoted(DefaultDescription(f)) +
                     L", \"defaultText\": " + Quoted(f.defaultText) + L",\n     \"defaultChoice\": " +
                     (IsChoiceType(f.type) ? Quoted(choiceText(f.type, f.defaultChoice).c_str()) : L"null") +
                     L", \"defaultChoiceId\": " + std::to_wstring(f.defaultChoice) + L", \"dateDefaultMode\": " +
                     (dated ? Quoted(dateDefaultModeText(f.dateDefaultMode).c_str()) : L"null") +
                     L", \"dateDefaultModeId\": " + std::to_wstring(f.dateDefaultMode) + L", \"timeDefaultMode\": " +
                     (timed ? Quoted(timeDefaultModeListText(f.timeDefaultMode).c_str()) : L"null") +
                     L", \"timeDefaultModeId\": " + std::to_wstring(f.timeDefaultMode) + L"}";
    return s;
}

std::wstring ItemJson(const ListDocument& doc, const ListItem& item) {
    std::wstring s = L"    {\"backColor\": " + ColorValue(item.backColor) + L", \"cells\": [";
    for (size_t i = 0; i < item.values.size(); ++i) {
        const FieldValue& v = item.values[i];
        s += i ? L",\n      " : L"\n      ";
        s += L"{\"text\": " + Quoted(v.text.c_str()) + L", \"value\": " + TypedValue(v);
        if (IsChoiceType(v.storedType)) s += L", \"choice\": " + std::to_wstring(v.choice);
        bool sameType = (int)i < doc.fieldCount() && doc.fields[i].type == v.storedType;
        if (!sameType) s += L", \"storedType\": " + std::to_wstring(int(v.storedType));
        s += L"}";
    }
    return s + L"]}";
}

std::wstring DocumentJson(const LoadedFile& file) {
    const ListDocument& doc = file.doc;
    std::wstring s = L"{\n  \"file\": " + Quoted(file.path) + L",\n  \"kind\": " +
                     (file.kind == FileKind::List ? L"\"list\"" : L"\"template\"") + L",\n  \"version\": " +
                     Quoted(kFileVersion) + L",\n  \"icon\": ";
    s += doc.icon.IsEmpty() ? L"null"
                            : L"{\"width\": " + std::to_wstring(doc.icon.width) + L", \"height\": " +
                                  std::to_wstring(doc.icon.height) + L"}";
    s += L",\n  \"sort\": ";
    if (doc.sortColumn < 0) {
        s += L"null";
    } else {
        bool known = doc.sortColumn < doc.fieldCount();
        bool ascending = known && SortIsAscending(doc.fields[doc.sortColumn].type, doc.sortDescending);
        s += L"{\"column\": " + std::to_wstring(doc.sortColumn) + L", \"field\": " +
             (known ? Quoted(fieldDisplayName(doc.fields[doc.sortColumn]).c_str()) : std::wstring(L"null")) +
             L", \"flag\": " + (doc.sortDescending ? L"1" : L"0") + L", \"order\": " +
             (known ? (ascending ? L"\"ascending\"" : L"\"descending\"") : L"null") + L"}";
    }
    s += L",\n  \"fields\": [";
    for (int i = 0; i < doc.fieldCount(); ++i) s += (i ? L",\n" : L"\n") + FieldJson(doc.fields[i]);
    s += doc.fieldCount() ? L"\n  ],\n  \"items\": [" : L"],\n  \"items\": [";
    bool first = true;
    for (const ListItem& item : doc.items) {
        s += (first ? L"\n" : L",\n") + ItemJson(doc, item);
        first = false;
    }
    s += first ? L"]\n}\n" : L"\n  ]\n}\n";
    return s;
}

}  // namespace

int RunShow(const std::wstring& path, bool json) {
    LoadedFile file;
    if (!LoadFile(path, file)) return 1;
    if (json) {
        OutUtf8(ToUtf8(DocumentJson(file)));
        return 0;
    }
    std::wstring out = TitleLine(file.doc) + L"\n";
    for (const ListItem& item : file.doc.items) out += ItemLine(item) + L"\n";
    Out(out);
    return 0;
}
