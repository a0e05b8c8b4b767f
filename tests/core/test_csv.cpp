// Tab-separated text export and import.
#include <string>

#include "LangIds.h"
#include "base/ResString.h"
#include "document/CsvText.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"

using namespace doctest;

namespace {

// UTF-16LE bytes of a text, as the export writes them.
Bytes Utf16(const std::wstring& s) { return Bytes().wchars(s); }

std::wstring TypeName(int type) { return ResText(IDS_TYPE_BASE + type); }

ListDocument SampleList() {
    ListDocument doc;
    doc.fields = {MakeField(L"Name", 3), MakeField(L"When", 0), MakeField(L"", 6)};
    for (const wchar_t* name : {L"abc", L"b\tc"}) {  // a TAB inside goes out as it is
        ListItem item;
        item.fieldCount = 3;
        item.values.resize(3);
        const std::wstring texts[] = {name, L"03/01/2007", ResText(8145)};
        for (int i = 0; i < 3; ++i) {
            item.values[i].storedType = doc.fields[i].type;
            item.values[i].text = texts[i].c_str();
        }
        doc.items.push_back(item);
    }
    return doc;
}

// The fields of a parsed table as "type name", split by "|".
std::wstring Fields(const CsvTable& table) {
    std::wstring out;
    for (const FieldDef& f : table.fields)
        out += (out.empty() ? L"" : L"|") + std::to_wstring((int)f.type) + L" " + (const wchar_t*)f.name;
    return out;
}

// The rows of a parsed table, cells split by "," and rows by "|".
std::wstring Rows(const CsvTable& table) {
    std::wstring out;
    for (size_t r = 0; r < table.rows.size(); ++r)
        for (size_t c = 0; c < table.rows[r].size(); ++c) out += (c ? L"," : r ? L"|" : L"") + table.rows[r][c];
    return out;
}

}  // namespace

// The mark, the header, then each row after CR LF with a TAB after every
// cell; an empty list is the mark and the header alone. Exported to a file,
// the bytes replace an older, longer file.
TEST_CASE(Csv_ExportLayout) {
    ListDocument doc = SampleList();
    const std::wstring check = ResText(8145);
    auto want = [](std::initializer_list<std::wstring> rows) {
        Bytes b;
        b.u8(0xFF).u8(0xFE);
        b.append(Utf16(L"(" + TypeName(3) + L")Name\t(" + TypeName(0) + L")When\t(" + TypeName(6) + L")"));
        for (const std::wstring& row : rows) b.append(Utf16(L"\r\n" + row));
        return b.v;
    };
    std::wstring dir = ScratchDir(L"export"), path = dir + L"\\out.CSV";
    WriteBytes(path, ByteVec(5000, 'x'));
    CsvResult done = exportCsvToFile(doc, path.c_str());
    CHECK(done == CsvStatus::Ok);
    CheckMessage(done.message, IDS_EXPORT_DONE_TEXT, IDS_EXPORT_DONE_CAPTION, MB_ICONEXCLAMATION, ZV_HERE);
    CHECK_BYTES(ReadBytes(path), want({L"abc\t03/01/2007\t" + check + L"\t", L"b\tc\t03/01/2007\t" + check + L"\t"}));
    CsvResult failed = exportCsvToFile(doc, (dir + L"\\no folder\\x.CSV").c_str());
    CHECK(failed == CsvStatus::CannotCreate);
    CheckMessage(failed.message, IDS_EXPORT_CREATE_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, ZV_HERE);
    // A value of an unknown stored type is left out of its row.
    doc.items.front().values[1].storedType = FieldType(31);
    CHECK_BYTES(buildCsvBytes(doc), want({L"abc\t" + check + L"\t", L"b\tc\t03/01/2007\t" + check + L"\t"}));
    doc.items.clear();
    CHECK_BYTES(buildCsvBytes(doc), want({}));
}

// Header: "(type)name" tokens; (Unknown) and no type give Text; "(" + name
// without ")" ends at the TAB with an empty name; a comma separates cells
// too. Rows: a trailing TAB ends the row, and an empty line is one empty cell.
TEST_CASE(Csv_HeaderAndRowTokens) {
    std::wstring text = L"(Unknown)Price\tPlain name\t(" + TypeName(0) + L")When\t(" + TypeName(8) + L"\t(" +
                        TypeName(5) + L")a,b\r\n1\t2\t3\t\r\nx,y\r\n\r\nlast\t";
    CsvTable table;
    parseCsvText(text.data(), text.size(), table);
    CHECK_EQ(Fields(table), L"3 Price|3 Plain name|0 When|8 |5 a|3 b");
    if (table.fields.size() == 6) {
        CHECK_EQ(std::wstring(table.fields[2].defaultText), ResText(IDS_DATE_MODE_TODAY));
        CHECK_EQ(table.fields[3].defaultText, L"");
    }
    CHECK_EQ(Rows(table), L"1,2,3|x,y||last");
    CHECK_EQ((int)table.rows.size(), 4);
    text = L"A\r\n";  // the header alone has no rows
    parseCsvText(text.data(), text.size(), table);
    CHECK_EQ((int)table.rows.size(), 0);
}

TEST_CASE(Csv_CellsConvertedByFieldType) {
    std::wstring text = L"(" + TypeName(0) + L")D\t(" + TypeName(8) + L")S\t(" + TypeName(4) + L")Y\t(" + TypeName(1) +
                        L")T\t(" + TypeName(7) + L")W\r\n12.25.2007\t\t" + ResText(IDS_YES) +
                        L"\t10:30\t03/01/2007    09:05\t\r\n25.12.2007\tnope\r\n";
    ListDocument doc;
    CHECK(csvTextToDocument(text.data(), text.size(), 240, doc));
    CHECK_EQ(doc.fieldCount(), 5);
    CHECK_EQ(doc.fields[0].columnWidth, 48);
    CHECK_EQ(doc.itemCount(), 2);
    if (doc.itemCount() != 2) return;
    auto ymd = [](const SYSTEMTIME& t) {
        return std::to_wstring(t.wYear) + L"-" + std::to_wstring(t.wMonth) + L"-" + std::to_wstring(t.wDay);
    };
    const ListItem& a = doc.items.front();
    CHECK_EQ(ymd(a.values[0].time), L"2007-12-25");
    CHECK_EQ(a.values[1].choice, 11);  // an empty Selection
    CHECK_EQ(a.values[2].choice, 1);
    // The time of day is not read back, not even the one export writes.
    CHECK_EQ(a.values[3].time.wHour, 0);
    CHECK(doc.fields[4].type == FieldType::DateTime);
    CHECK_EQ(ymd(a.values[4].time) + L" " + std::to_wstring(a.values[4].time.wHour), L"2007-3-1 0");
    CHECK_EQ(a.backColor, kNoBackColor);
    const ListItem& b = doc.items.back();
    CHECK_EQ(ymd(b.values[0].time), L"2007-25-12");
    CHECK_EQ(b.values[1].choice, 0);  // unknown text
    // Missing cells are empty: YesNo 0, Selection would be 11.
    CHECK_EQ(b.values[2].choice, 0);
    CHECK(b.values[3].storedType == FieldType::Time);
}

TEST_CASE(Csv_ImportWithoutMarkReadsBytes) {
    std::wstring path = ScratchDir(L"bytes") + L"\\plain.txt";
    WriteBytes(path, {'N', 'a', 'm', 'e', '\r', '\n', 'c', 'a', 'f', 0xE9, '\t', '\r', '\n'});
    std::wstring text;
    CHECK(readCsvFileText(path.c_str(), text));
    CHECK(text == std::wstring(L"Name\r\ncaf\x00e9\t\r\n"));
    WriteBytes(path, {0xFF, 0xFE, 'A', 0, 0x42, 0x26});
    CHECK(readCsvFileText(path.c_str(), text));
    CHECK(text == std::wstring(L"A\x2642"));
}

TEST_CASE(Csv_ImportWritesListAndAsksBeforeReplacing) {
    std::wstring dir = ScratchDir(L"import");
    std::wstring source = dir + L"\\Groceries.CSV";
    Bytes csv;
    csv.u8(0xFF).u8(0xFE).append(Utf16(L"(" + TypeName(3) + L")Item\t(" + TypeName(8) + L")Shop\r\nmilk\t\t"));
    WriteBytes(source, csv.v);
    std::vector<DocMessage> questions;
    bool replace = false;
    auto askReplace = [&](const DocMessage& question) {
        questions.push_back(question);
        return replace;
    };
    CeString listPath;
    CHECK(importCsvFile(source.c_str(), (dir + L"\\").c_str(), 241, askReplace, &listPath) == CsvStatus::Ok);
    std::wstring expectedPath = dir + L"\\Groceries.zvl";
    CHECK_EQ(std::wstring(listPath.c_str()), expectedPath);
    Bytes want;
    want.listHeader(2, 1).viewState(-1, 0);
    want.append(FieldChunks(L"Item", 3, 120, L"", 0, 0, 0)).append(FieldChunks(L"Shop", 8, 120, L"", 0, 0, 0));
    want.chunkText(3, L"milk").chunkU32(8, 11);
    CHECK_BYTES(ReadBytes(expectedPath), want.v);
    CHECK_EQ((int)questions.size(), 0);

    // The list exists: No keeps it, Yes replaces it.
    WriteBytes(expectedPath, Bytes().u8(7).v);
    CsvResult declined = importCsvFile(source.c_str(), dir.c_str(), 241, askReplace);
    CHECK(declined == CsvStatus::Declined);
    CHECK(declined.message.IsEmpty());
    CHECK_EQ((int)ReadBytes(expectedPath).size(), 1);
    CHECK_EQ((int)questions.size(), 1);
    if (questions.size() == 1) {
        std::wstring question = ResText(IDS_LIST_EXISTS_TEXT);
        size_t at = question.find(L"%s");
        if (at != std::wstring::npos) question.replace(at, 2, L"Groceries");
        CHECK_EQ(questions[0].Text(), question);
        CheckMessage(questions[0], IDS_LIST_EXISTS_TEXT, IDS_LIST_EXISTS_CAPTION, MB_YESNO | MB_ICONQUESTION, ZV_HERE);
    }
    replace = true;
    CHECK(importCsvFile(source.c_str(), dir.c_str(), 241, askReplace) == CsvStatus::Ok);
    CHECK_BYTES(ReadBytes(expectedPath), want.v);

    CsvResult missing = importCsvFile((dir + L"\\missing.CSV").c_str(), dir.c_str(), 240);
    CHECK(missing == CsvStatus::CannotOpen);
    CheckMessage(missing.message, IDS_IMPORT_OPEN_FAILED, IDS_ERROR_CAPTION, MB_OK, ZV_HERE);
    CsvResult unwritten = importCsvFile(source.c_str(), (dir + L"\\no such folder").c_str(), 240);
    CHECK(unwritten == CsvStatus::ListNotWritten);
    CheckMessage(unwritten.message, IDS_SAVE_FAILED, IDS_ERROR_CAPTION, MB_OK, ZV_HERE);
}
