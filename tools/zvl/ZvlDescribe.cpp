#include "tools/zvl/ZvlDescribe.h"

#include <algorithm>

#include "document/ListFile.h"
#include "tools/zvl/ZvlCommands.h"
#include "tools/zvl/ZvlConsole.h"
#include "tools/zvl/ZvlFiles.h"

const wchar_t* TypeCodeName(FieldType type) {
    static const wchar_t* const names[kFieldTypeCount] = {L"Date",   L"Time",   L"Priority", L"Text",     L"YesNo",
                                                          L"Number", L"Check", L"DateTime", L"Selection"};
    return IsKnownType(type) ? names[int(type)] : L"Unknown";
}

std::wstring DefaultDescription(const FieldDef& field) {
    switch (field.type) {
    case FieldType::Text:
    case FieldType::Number: return field.defaultText;
    case FieldType::YesNo:
        // The field editor keeps the chosen entry's text; its stored choice
        // is inverted, so the text is what the user picked.
        if (field.defaultText[0]) return field.defaultText;
        return choiceText(field.type, field.defaultChoice).c_str();
    case FieldType::Priority:
    case FieldType::Check:
    case FieldType::Selection: return choiceText(field.type, field.defaultChoice).c_str();
    case FieldType::Date: return dateDefaultModeText(field.dateDefaultMode).c_str();
    case FieldType::Time: return timeDefaultModeListText(field.timeDefaultMode).c_str();
    case FieldType::DateTime:
        return std::wstring(dateDefaultModeText(field.dateDefaultMode).c_str()) + L", " +
               timeDefaultModeListText(field.timeDefaultMode).c_str();
    }
    return std::wstring();
}

bool SortIsAscending(FieldType type, bool flag) {
    bool numeric = type == FieldType::Date || type == FieldType::Time || type == FieldType::DateTime ||
                   type == FieldType::Number || type == FieldType::Check;
    return numeric ? !flag : flag;
}

std::wstring OneLineCell(const wchar_t* text) {
    std::wstring s = text ? text : L"";
    for (wchar_t& c : s)
        if (c == L'\t' || c == L'\r' || c == L'\n') c = L' ';
    return s;
}

namespace {

std::wstring Padded(const std::wstring& text, size_t width) {
    return text.size() >= width ? text : text + std::wstring(width - text.size(), L' ');
}

std::wstring SortDescription(const ListDocument& doc) {
    if (doc.sortColumn < 0) return L"none";
    if (doc.sortColumn >= doc.fieldCount())
        return L"field " + std::to_wstring(doc.sortColumn + 1) + L" (not in this file)";
    const FieldDef& field = doc.fields[doc.sortColumn];
    bool ascending = SortIsAscending(field.type, doc.sortDescending);
    return std::wstring(fieldDisplayName(field).c_str()) + L" (field " + std::to_wstring(doc.sortColumn + 1) + L"), " +
           (ascending ? L"ascending" : L"descending") + L" (flag " + (doc.sortDescending ? L"1" : L"0") + L")";
}

void PrintFieldTable(const ListDocument& doc) {
    struct Row { std::wstring number, name, type, def, width; };
    std::vector<Row> rows;
    rows.push_back({L"#", L"Name", L"Type", L"Default", L"Width"});
    for (int i = 0; i < doc.fieldCount(); ++i) {
        const FieldDef& f = doc.fields[i];
        std::wstring name = f.name[0] ? std::wstring(f.name) : L"(" + std::wstring(fieldTypeName(f.type).c_str()) + L")";
        std::wstring def = DefaultDescription(f);
        rows.push_back({std::to_wstring(i + 1), OneLineCell(name.c_str()), fieldTypeName(f.type).c_str(),
                        def.empty() ? L"-" : OneLineCell(def.c_str()),
                        f.columnWidth > 0 ? std::to_wstring(f.columnWidth) : L"auto"});
    }
    size_t w[4] = {};
    for (const Row& r : rows) {
        w[0] = std::max(w[0], r.number.size());
        w[1] = std::max(w[1], r.name.size());
        w[2] = std::max(w[2], r.type.size());
        w[3] = std::max(w[3], r.def.size());
    }
    std::wstring out;
    for (const Row& r : rows) {
        std::wstring line = L"  " + std::wstring(w[0] - r.number.size(), L' ') + r.number + L"  " + Padded(r.name, w[1]) +
                            L"  " + Padded(r.type, w[2]) + L"  " + Padded(r.def, w[3]) + L"  " + r.width;
        out += line + L"\n";
    }
    Out(out);
}

}  // namespace

int RunInfo(const std::wstring& path) {
    LoadedFile file;
    if (!LoadFile(path, file)) return 1;
    const ListDocument& doc = file.doc;
    std::wstring out;
    out += L"File:     " + path + L"\n";
    out += std::wstring(L"Kind:     ") + (file.kind == FileKind::List ? L"list" : L"template") + L"\n";
    out += std::wstring(L"Version:  ") + kFileVersion + L"\n";
    out += L"Fields:   " + std::to_wstring(doc.fieldCount()) + L"\n";
    Out(out);
    if (doc.fieldCount() > 0) PrintFieldTable(doc);
    out.clear();
    if (file.kind == FileKind::List) out += L"Items:    " + std::to_wstring(doc.itemCount()) + L"\n";
    out += L"Icon:     " +
           (doc.icon.IsEmpty() ? std::wstring(L"none")
                               : std::to_wstring(doc.icon.width) + L" x " + std::to_wstring(doc.icon.height)) +
           L"\n";
    out += L"Sort:     " + SortDescription(doc) + L"\n";
    Out(out);
    return 0;
}
