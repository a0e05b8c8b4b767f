#include "document/CsvText.h"

#include <cstdio>
#include <cwchar>

#include "document/DocStrings.h"
#include "document/ListFile.h"
#include "document/ListFileIo.h"
#include "document/ListParse.h"
#include "document/SafeWrite.h"
#include "document/ValueText.h"

// ---- export ----------------------------------------------------------------

namespace {
void PutChars(std::vector<unsigned char>& out, const wchar_t* text, size_t n) {
    for (size_t i = 0; i < n; ++i) {
        out.push_back((unsigned char)(text[i] & 0xFF));
        out.push_back((unsigned char)(text[i] >> 8));
    }
}
void PutText(std::vector<unsigned char>& out, const wchar_t* text) { PutChars(out, text, wcslen(text)); }
}  // namespace

std::vector<unsigned char> buildCsvBytes(const ListDocument& doc) {
    std::vector<unsigned char> out;
    out.reserve(64 + doc.items.size() * size_t(doc.fieldCount()) * 24);
    out.push_back(0xFF);
    out.push_back(0xFE);
    for (int i = 0; i < doc.fieldCount(); ++i) {
        const FieldDef& field = doc.fields[size_t(i)];
        if (i > 0) PutText(out, L"\t");
        PutText(out, L"(");
        PutText(out, cachedTypeName(field.type));
        PutText(out, L")");
        PutChars(out, field.name, wcsnlen(field.name, kFieldTextCapacity - 1));
    }
    // The line break comes before each row; every value is followed by TAB.
    for (const ListItem& item : doc.items) {
        PutText(out, L"\r\n");
        for (const FieldValue& value : item.values) {
            if (!IsKnownType(value.storedType)) continue;
            PutChars(out, value.text.c_str(), size_t(value.text.Length()));
            PutText(out, L"\t");
        }
    }
    return out;
}

CsvResult exportCsvToFile(const ListDocument& doc, const wchar_t* path) {
    // The old file is replaced only once the new one is complete.
    std::vector<unsigned char> bytes = buildCsvBytes(doc);
    SafeWriteResult written = writeFileSafely(path, bytes.data(), bytes.size());
    if (!written.ok) {
        DocMessage message{docstr::kExportNotCreated, docstr::kErrorCaption, MB_ICONEXCLAMATION, {}};
        message.causeId = writeCauseTextId(written.cause);
        return {CsvStatus::CannotCreate, message};
    }
    return {CsvStatus::Ok, {docstr::kExportDone, docstr::kExportDoneCaption, MB_ICONEXCLAMATION, {}}};
}

// ---- import: parsing -----------------------------------------------------------

namespace {

inline bool IsCellEnd(wchar_t c) { return c == L'\t' || c == L',' || c == L'\r' || c == L'\n'; }
inline bool IsLineEnd(wchar_t c) { return c == L'\r' || c == L'\n'; }

struct Cursor {
    const wchar_t* text;
    size_t length;
    size_t pos = 0;
    bool AtEnd() const { return pos >= length; }
    wchar_t Peek() const { return pos < length ? text[pos] : 0; }
    // A CR LF pair counts as one line break.
    void SkipLineBreak() {
        if (Peek() == L'\r') {
            ++pos;
            if (Peek() == L'\n') ++pos;
        } else if (Peek() == L'\n') {
            ++pos;
        }
    }
    size_t TokenEnd(bool stopAtParen) const {
        size_t end = pos;
        while (end < length && !IsCellEnd(text[end]) && !(stopAtParen && text[end] == L')')) ++end;
        return end;
    }
};

// The header row: "(" type name ")" field name per cell.
void ParseHeader(Cursor& in, std::vector<FieldDef>& fields) {
    if (in.AtEnd()) return;
    const std::wstring dateDefault = dateDefaultModeText(0).c_str();
    for (;;) {
        FieldDef field;
        field.type = FieldType::Text;
        if (in.Peek() == L'(') {
            ++in.pos;
            size_t end = in.TokenEnd(true);
            std::wstring token(in.text + in.pos, end - in.pos);
            for (int t = 0; t < kFieldTypeCount; ++t)
                if (token == cachedTypeName(FieldType(t))) field.type = FieldType(t);
            in.pos = end;
            if (in.Peek() == L')') ++in.pos;
        }
        size_t end = in.TokenEnd(false);
        field.SetName(in.text + in.pos, int(end - in.pos < 1000 ? end - in.pos : 1000));
        in.pos = end;
        if (field.type == FieldType::Date) field.SetDefaultText(dateDefault.c_str());
        if (fields.size() < size_t(kMaxFields)) fields.push_back(field);
        if (in.AtEnd()) return;
        wchar_t c = in.text[in.pos];
        if (IsLineEnd(c)) break;
        ++in.pos;  // TAB or ","
        // A TAB at the end of the line ends the row rather than starting a cell.
        if (in.AtEnd()) return;
        if (c == L'\t' && IsLineEnd(in.Peek())) break;
    }
    in.SkipLineBreak();
}

// One row of cells; false at the end of the text.
bool ParseRow(Cursor& in, std::vector<std::pair<const wchar_t*, size_t>>& cells) {
    cells.clear();
    if (in.AtEnd()) return false;
    for (;;) {
        size_t end = in.TokenEnd(false);
        cells.emplace_back(in.text + in.pos, end - in.pos);
        in.pos = end;
        if (in.AtEnd()) return true;
        wchar_t c = in.text[in.pos];
        if (IsLineEnd(c)) {
            in.SkipLineBreak();
            return true;
        }
        ++in.pos;  // TAB or ","
        if (in.AtEnd()) return true;
        // The trailing TAB of an exported row ends its last cell.
        if (c == L'\t' && IsLineEnd(in.Peek())) {
            in.SkipLineBreak();
            return true;
        }
    }
}

// Sets one cell from its text by the field's type.
void ConvertCell(FieldValue& value, FieldType type, const wchar_t* text, size_t length, const TextLayout& layout) {
    value.storedType = type;
    wchar_t cell[CellText::kCapacity];
    size_t n = length < size_t(CellText::kMaxLength) ? length : size_t(CellText::kMaxLength);
    std::wmemcpy(cell, text, n);
    cell[n] = 0;
    if (IsTimeType(type)) {
        value.time = parseDateText(cell);
        buildDisplayText(value, type, layout);
    } else if (IsChoiceType(type)) {
        value.choice = parseChoiceText(type, cell);
        buildDisplayText(value, type, layout);
    } else {
        value.text.Assign(cell, (int)n);
    }
}

}  // namespace

void parseCsvText(const wchar_t* text, size_t length, CsvTable& table) {
    table.fields.clear();
    table.rows.clear();
    Cursor in{text, text ? length : 0};
    ParseHeader(in, table.fields);
    std::vector<std::pair<const wchar_t*, size_t>> cells;
    while (table.rows.size() < kMaxImportRows && ParseRow(in, cells)) {
        table.rows.emplace_back();
        for (auto& cell : cells) table.rows.back().emplace_back(cell.first, cell.second);
    }
}

bool csvTextToDocument(const wchar_t* text, size_t length, int clientWidth, ListDocument& doc) {
    doc.Clear();
    Cursor in{text, text ? length : 0};
    ParseHeader(in, doc.fields);
    const int fieldCount = doc.fieldCount();
    for (FieldDef& field : doc.fields) field.columnWidth = fieldCount ? clientWidth / fieldCount : 0;
    const TextLayout layout = listTextLayout();
    std::vector<std::pair<const wchar_t*, size_t>> cells;
    size_t cellBudget = kMaxImportCells;
    // Memory stays within what the list reader allows for a file of this
    // size: a flood of empty rows is refused before its items are made.
    const size_t budget = listparse::ItemMemoryBudget(length * sizeof(wchar_t));
    const size_t recordCost = listparse::ItemRecordCost(fieldCount);
    size_t rows = 0;
    for (size_t i = 0; i < length; ++i) rows += text[i] == L'\n';
    if (rows > budget / recordCost) return false;
    while (ParseRow(in, cells)) {
        size_t cost = fieldCount ? size_t(fieldCount) : 1;
        if (doc.items.size() >= kMaxImportRows || cellBudget < cost) {
            doc.Clear();
            return false;
        }
        cellBudget -= cost;
        doc.items.emplace_back();
        ListItem& item = doc.items.back();
        item.fieldCount = fieldCount;
        item.ordinal = (int32_t)(doc.items.size() - 1);
        item.serial = doc.nextSerial++;
        item.backColor = kNoBackColor;
        item.values.resize(size_t(fieldCount));
        for (int i = 0; i < fieldCount; ++i) {
            const bool present = size_t(i) < cells.size();
            ConvertCell(item.values[size_t(i)], doc.fields[size_t(i)].type, present ? cells[size_t(i)].first : L"",
                        present ? cells[size_t(i)].second : 0, layout);
        }
    }
    return true;
}

bool readCsvFileText(const wchar_t* path, std::wstring& text) {
    text.clear();
    std::vector<unsigned char> bytes;
    if (ReadWholeFile(path, bytes) != FileStatus::Ok) return false;
    const bool littleEndian = bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    const bool bigEndian = bytes.size() >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF;
    if (littleEndian || bigEndian) {
        size_t units = (bytes.size() - 2) / 2;
        const int low = littleEndian ? 2 : 3, high = littleEndian ? 3 : 2;
        text.resize(units);
        for (size_t i = 0; i < units; ++i) text[i] = wchar_t(bytes[low + 2 * i] | (bytes[high + 2 * i] << 8));
    } else if (bytes.size() >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF) {
        // A file that says it is UTF-8 is read as UTF-8 (bad sequences
        // become U+FFFD), not byte by byte.
        int n = bytes.size() > 3 ? MultiByteToWideChar(CP_UTF8, 0, (const char*)bytes.data() + 3,
                                                       (int)(bytes.size() - 3), nullptr, 0)
                                 : 0;
        text.resize(size_t(n));
        if (n) MultiByteToWideChar(CP_UTF8, 0, (const char*)bytes.data() + 3, (int)(bytes.size() - 3), &text[0], n);
    } else {
        // Without the mark every byte is one character.
        text.resize(bytes.size());
        for (size_t i = 0; i < bytes.size(); ++i) text[i] = wchar_t(bytes[i]);
    }
    return true;
}

// ---- import: the new list ----------------------------------------------------------

static std::wstring BaseNameWithoutExtension(const wchar_t* path) {
    std::wstring p = path ? path : L"";
    size_t slash = p.find_last_of(L"\\/");
    std::wstring name = slash == std::wstring::npos ? p : p.substr(slash + 1);
    size_t dot = name.find_last_of(L'.');
    return dot == std::wstring::npos ? name : name.substr(0, dot);
}

CeString importListPath(const wchar_t* textPath, const wchar_t* categoryPath) {
    std::wstring path = categoryPath ? categoryPath : L"";
    path += L"\\";
    path += BaseNameWithoutExtension(textPath);
    path += L".zvl";
    return normalizePath(path.c_str());
}

CsvResult importCsvFile(const wchar_t* textPath, const wchar_t* categoryPath, int clientWidth,
                        const ReplaceQuestion& askReplace, CeString* listPathOut) {
    std::wstring text;
    ListDocument doc;
    if (!readCsvFileText(textPath, text) || !csvTextToDocument(text.data(), text.size(), clientWidth, doc))
        return {CsvStatus::CannotOpen, {docstr::kImportNotOpened, docstr::kErrorCaption, MB_OK, {}}};
    text.clear();
    text.shrink_to_fit();
    CeString listPath = importListPath(textPath, categoryPath);
    if (listPathOut) *listPathOut = listPath;
    if (FILE* existing = _wfopen(listPath.c_str(), L"r")) {
        fclose(existing);
        DocMessage question{docstr::kListExists, docstr::kListExistsCaption, MB_YESNO | MB_ICONQUESTION,
                            BaseNameWithoutExtension(textPath)};
        if (!askReplace || !askReplace(question)) return {CsvStatus::Declined, {}};
    }
    WriteListOptions options;
    options.chunkByFieldType = true;
    ListFileResult written = writeListFile(listPath.c_str(), doc, options);
    if (written != FileStatus::Ok) {
        // The import's own failures are plain boxes.
        written.message.style = MB_OK;
        return {CsvStatus::ListNotWritten, written.message};
    }
    return {CsvStatus::Ok, {}};
}
