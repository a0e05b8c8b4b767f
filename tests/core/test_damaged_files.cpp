// A whole file told from a damaged one: every cut of a list, what each
// kind of bad file is called, the backup kept from damaged files, and text
// files read by their byte-order marks.
#include <windows.h>

#include <string>

#include "LangIds.h"
#include "document/CsvText.h"
#include "document/ListFile.h"
#include "tests/core/test_doc_util.h"

using namespace doctest;

namespace {

// Two fields (a text and a check), three items; the offsets where the
// header, the fields and each item end.
struct Layout {
    Bytes file;
    size_t headerEnd, fieldsEnd;
    size_t itemEnd[3];
};

Layout ThreeItems() {
    Layout l;
    l.file.listHeader(2, 3);
    l.headerEnd = l.file.v.size();
    l.file.viewState(-1, 0);
    l.file.append(FieldChunks(L"What", 3, 80, L"", 0, 0, 0)).append(FieldChunks(L"Done", 6, 20, L"", 0, 0, 0));
    l.fieldsEnd = l.file.v.size();
    const wchar_t* texts[] = {L"bread", L"milk", L"eggs"};
    for (int i = 0; i < 3; ++i) {
        if (i == 1) l.file.chunkU32(120, 0xB5FFFF);
        l.file.chunkText(3, texts[i]).chunkU32(6, (uint32_t)(i % 2));
        l.itemEnd[i] = l.file.v.size();
    }
    return l;
}

}  // namespace

TEST_CASE(Damage_EveryCutOfAListIsNamed) {
    Layout l = ThreeItems();
    const size_t full = l.file.v.size();
    for (size_t cut = 0; cut <= full; ++cut) {
        ByteVec bytes(l.file.v.begin(), l.file.v.begin() + (long)cut);
        ListDocument doc;
        ListReadReport report;
        FileStatus got = parseListBytes(bytes.data(), bytes.size(), doc, nullptr, &report);
        FileStatus want = cut == 0 ? FileStatus::Empty
                          : cut < l.fieldsEnd ? FileStatus::Damaged
                          : cut < full ? FileStatus::PartlyRead
                                       : FileStatus::Ok;
        CHECK_EQ((int)got, (int)want);
        // Only whole items are kept.
        int whole = 0;
        for (size_t end : l.itemEnd) whole += cut >= end ? 1 : 0;
        CHECK_EQ(doc.itemCount(), got == FileStatus::Damaged || got == FileStatus::Empty ? 0 : whole);
        if (got == FileStatus::PartlyRead) {
            CHECK_EQ(report.itemsRead, (uint32_t)whole);
            CHECK_EQ(report.itemsPromised, 3u);
        }
    }
}

TEST_CASE(Damage_EachKindHasItsOwnMessage) {
    std::wstring dir = ScratchDir(L"damagekinds");
    Layout l = ThreeItems();
    ByteVec cutItems(l.file.v.begin(), l.file.v.begin() + (long)l.itemEnd[1] + 3);
    Bytes otherVersion, notAList, badCount;
    otherVersion.wstr(L"1.6").i32(0).i32(0);
    notAList.wchars(L"PK\x0003\x0004 zip");
    badCount.listHeader(51, 0).viewState(-1, 0);
    struct Case {
        const wchar_t* name;
        ByteVec bytes;
        FileStatus status;
        UINT text;
        const wchar_t* argument;
    } cases[] = {
        {L"empty.zvl", ByteVec(), FileStatus::Empty, IDS_LIST_EMPTY, nullptr},
        {L"old.zvl", otherVersion.v, FileStatus::BadVersion, IDS_LIST_VERSION_BAD, nullptr},
        {L"zip.zvl", notAList.v, FileStatus::Damaged, IDS_LIST_DAMAGED, nullptr},
        {L"count.zvl", badCount.v, FileStatus::BadFieldCount, IDS_LIST_DAMAGED, nullptr},
        {L"header.zvl", ByteVec(l.file.v.begin(), l.file.v.begin() + 12), FileStatus::Damaged, IDS_LIST_DAMAGED,
         nullptr},
        {L"items.zvl", cutItems, FileStatus::PartlyRead, IDS_LIST_PARTLY_READ, L"2 of 3"},
    };
    for (const Case& c : cases) {
        WriteBytes(dir + L"\\" + c.name, c.bytes);
        ListDocument doc;
        ListFileResult r = readListFile((dir + L"\\" + c.name).c_str(), doc);
        CHECK_EQ((int)r.code, (int)c.status);
        CHECK_EQ(r.message.textId, c.text);
        CHECK(r.message.argument.has_value() == (c.argument != nullptr));
        if (c.argument) CHECK_EQ(*r.message.argument, std::wstring(c.argument));
    }
    ListDocument doc;
    ListFileResult missing = readListFile((dir + L"\\none.zvl").c_str(), doc);
    CHECK(missing == FileStatus::Missing);
    CHECK_EQ(missing.message.textId, (UINT)IDS_LIST_MISSING);
    // None of them made a backup.
    for (const wchar_t* name : {L"empty", L"old", L"zip", L"count", L"header", L"items", L"none"})
        CHECK(!FileExists(dir + L"\\" + name + L".BAK"));
}

TEST_CASE(Damage_ADamagedFileNeverReplacesAGoodBackup) {
    std::wstring dir = ScratchDir(L"damagebak");
    std::wstring path = dir + L"\\Shop.zvl";
    Layout l = ThreeItems();
    WriteBytes(path, l.file.v);
    ListDocument doc;
    CHECK(readListFile(path.c_str(), doc) == FileStatus::Ok);
    CHECK_BYTES(ReadBytes(dir + L"\\Shop.BAK"), l.file.v);
    // The list is then damaged (a cut write by another program, a bad disk).
    for (size_t cut : {size_t(0), l.headerEnd, l.fieldsEnd + 5, l.itemEnd[2] - 1}) {
        WriteBytes(path, ByteVec(l.file.v.begin(), l.file.v.begin() + (long)cut));
        CHECK(readListFile(path.c_str(), doc) != FileStatus::Ok);
        CHECK_BYTES(ReadBytes(dir + L"\\Shop.BAK"), l.file.v);
    }
}

TEST_CASE(Damage_TemplatesLikewise) {
    std::wstring dir = ScratchDir(L"damagetpl");
    Bytes whole;
    whole.templateHeader(2).viewState(-1, 0);
    whole.append(FieldChunks(L"What", 3, 80, L"", 0, 0, 0));
    size_t firstEnd = whole.v.size();
    whole.append(FieldChunks(L"When", 0, 40, L"", 0, 0, 0));
    WriteBytes(dir + L"\\cut.zvt", ByteVec(whole.v.begin(), whole.v.begin() + (long)firstEnd + 10));
    WriteBytes(dir + L"\\empty.zvt", ByteVec());
    TemplateFieldList list;
    PlanarImage icon;
    DocMessage m;
    CHECK(readTemplateFile((dir + L"\\cut.zvt").c_str(), list, icon, nullptr, &m) == FileStatus::PartlyRead);
    CHECK_EQ(list.count, 1);
    CHECK_EQ(m.textId, (UINT)IDS_TEMPLATE_PARTLY_READ);
    CHECK_EQ(*m.argument, std::wstring(L"1 of 2"));
    CHECK(readTemplateFile((dir + L"\\empty.zvt").c_str(), list, icon, nullptr, &m) == FileStatus::Empty);
    CHECK_EQ(m.textId, (UINT)IDS_TEMPLATE_EMPTY);
    // No list is made from part of a template.
    CHECK(makeListFromTemplate((dir + L"\\cut.zvt").c_str(), (dir + L"\\L.zvl").c_str(), &m) == FileStatus::Damaged);
    CHECK_EQ(m.textId, (UINT)IDS_TEMPLATE_DAMAGED);
    CHECK(!FileExists(dir + L"\\L.zvl"));
}

TEST_CASE(Damage_TextReadByItsByteOrderMark) {
    // "Café" and a Greek word, each way a text file can say its encoding.
    const std::wstring want = L"(Text)Caf\x00e9\r\n\x03b1\x03b2\t";
    Bytes le, be, utf8, plain;
    le.u8(0xFF).u8(0xFE).wchars(want);
    be.u8(0xFE).u8(0xFF);
    for (wchar_t c : want) be.u8(c >> 8).u8(c & 0xFF);
    utf8.u8(0xEF).u8(0xBB).u8(0xBF);
    for (unsigned char c : std::string("(Text)Caf\xC3\xA9\r\n\xCE\xB1\xCE\xB2\t")) utf8.u8(c);
    plain.raw({'(', 'T', 'e', 'x', 't', ')', 'C', 'a', 'f', 0xE9});
    std::wstring dir = ScratchDir(L"damagebom");
    struct Case {
        const ByteVec& bytes;
        std::wstring text;
    } cases[] = {{le.v, want}, {be.v, want}, {utf8.v, want}, {plain.v, L"(Text)Caf\x00e9"}};
    for (const Case& c : cases) {
        WriteBytes(dir + L"\\t.CSV", c.bytes);
        std::wstring text;
        CHECK(readCsvFileText((dir + L"\\t.CSV").c_str(), text));
        CHECK_EQ(text, c.text);
    }
}

TEST_CASE(Damage_AFloodOfEmptyRowsIsNotImported) {
    // 70,000 empty rows of 50 fields in 280 KB of text (within the row and
    // cell caps) would take well over ten times that as items: refused, as a
    // list file of that size would be.
    std::wstring flood = L"(Text)A";
    for (int i = 1; i < 50; ++i) flood += L"\t(Text)A";
    flood += L"\r\n";
    for (int i = 0; i < 70000; ++i) flood += L"\r\n";
    ListDocument doc;
    CHECK(!csvTextToDocument(flood.data(), flood.size(), 240, doc));
    CHECK_EQ(doc.itemCount(), 0);
    std::wstring normal = L"(Text)A\r\nmilk\r\nbread\r\n";
    CHECK(csvTextToDocument(normal.data(), normal.size(), 240, doc));
    CHECK_EQ(doc.itemCount(), 2);
}
