// List and template files byte for byte and read back; a whole file told
// from a damaged one (every cut of a list, what each kind of bad file is
// called, the backup kept from damaged files); text files read by their
// byte-order marks.
#include <string>

#include "LangIds.h"
#include "base/ResString.h"
#include "document/CsvText.h"
#include "document/ListFile.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"

using namespace doctest;

namespace {

// Two fields (a text and a check), three items (the second coloured); the
// offsets where the fields and each item end.
struct Layout {
    Bytes file;
    size_t fieldsEnd, itemEnd[3];
};

Layout ThreeItems() {
    Layout l;
    l.file.listHeader(2, 3).viewState(-1, 0);
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

ByteVec Head(const ByteVec& bytes, size_t count) { return ByteVec(bytes.begin(), bytes.begin() + (long)count); }

// A bad file, what reading it gives and the text of its message.
struct BadFile {
    const wchar_t* name;
    ByteVec bytes;
    FileStatus status;
    UINT text;
};

}  // namespace

TEST_CASE(Doc_WriteListBytesFollowLayout) {
    ListDocument doc;
    // The default-chunk rules: YesNo, Check (its default text is not
    // written), Text (nor its default choice) and an unnamed Date.
    doc.fields = {MakeField(L"Paid", 4, L"yes?", 1, 60), MakeField(L"Done", 6, L"ignored", 1, 30),
                  MakeField(L"Note", 3, L"n/a", 7, 90), MakeField(L"", 0, L"", 0, 50, 2, 5)};
    ListItem a;
    a.fieldCount = 4;
    a.values = {{{}, FieldType::YesNo, 1}, {{}, FieldType::Check, 0}, {L"milk", FieldType::Text},
                {{}, FieldType::Date, 0, MakeTime(2007, 3, 1)}};
    ListItem b = a;
    b.backColor = 0xB5DBB5;
    b.values[2].text = L"";
    b.values[3] = {{}, FieldType::DateTime, 0, MakeTime(2008, 12, 24, 9, 5)};  // the stored type chooses the chunk
    doc.items = {a, b};
    doc.sortColumn = 2;
    doc.sortDescending = true;
    Bytes want;
    // No icon: the view state follows the header directly.
    want.listHeader(4, 2).viewState(2, 1);
    want.append(FieldChunks(L"Paid", 4, 60, L"yes?", 1, 0, 0)).append(FieldChunks(L"Done", 6, 30, L"", 1, 0, 0));
    want.append(FieldChunks(L"Note", 3, 90, L"n/a", 0, 0, 0)).append(FieldChunks(L"", 0, 50, L"", 0, 2, 5));
    // The first item has no colour: it starts with its first value.
    want.chunkU32(4, 1).chunkU32(6, 0).chunkText(3, L"milk").chunk(0, Bytes().systemTime(2007, 3, 0, 1, 0, 0, 0, 0));
    want.chunkU32(120, 0xB5DBB5).chunkU32(4, 1).chunkU32(6, 0).chunkText(3, L"");
    want.chunk(7, Bytes().systemTime(2008, 12, 0, 24, 9, 5, 0, 0));
    std::wstring path = ScratchDir(L"write") + L"\\Shop.zvl";
    CHECK(writeListFile(path.c_str(), doc) == FileStatus::Ok);
    CHECK_BYTES(ReadBytes(path), want.v);
}

TEST_CASE(Doc_UnknownStoredTypeKeepsItsPlace) {
    ListDocument doc;
    doc.fields = {MakeField(L"A", 3), MakeField(L"B", 5)};
    ListItem item;
    item.fieldCount = 2;
    item.values = {{L"lost", FieldType(42)}, {L"-1.5", FieldType::Number}};
    doc.items = {item};
    Bytes head;
    head.listHeader(2, 1).viewState(-1, 0);
    head.append(FieldChunks(L"A", 3, 0, L"", 0, 0, 0)).append(FieldChunks(L"B", 5, 0, L"", 0, 0, 0));
    ByteWriter byStored, byField;
    buildListBytes(doc, byStored);
    CHECK_BYTES(byStored.bytes, Bytes(head).chunk0(42).chunkText(5, L"-1.5").v);
    // Text import chooses the chunk by the field's type instead.
    buildListBytes(doc, byField, true);
    CHECK_BYTES(byField.bytes, Bytes(head).chunkText(3, L"lost").chunkText(5, L"-1.5").v);
}

TEST_CASE(Doc_ReadListBuildsTexts) {
    Bytes head, iconAndView, body;
    head.listHeader(9, 3);
    iconAndView.chunk(1007, Bytes().i32(1).i32(1));
    for (int p = 1; p <= 4; ++p) iconAndView.chunk(1008, Bytes().u8(10 * p));
    iconAndView.viewState(4, 1);
    const wchar_t* names[9] = {L"D", L"T", L"P", L"X", L"Y", L"N", L"C", L"DT", L"S"};
    // Fields and three items (the second coloured): the part written back as read.
    for (int t = 0; t < 9; ++t) body.append(FieldChunks(names[t], t, 20 + t, L"", 0, 0, 0));
    for (int i = 0; i < 3; ++i) {
        if (i == 1) body.chunkU32(120, 0xC9CEFF);
        body.chunk(0, Bytes().systemTime(2007, 3, 4, 1, 0, 0, 0, 0));
        body.chunk(1, Bytes().systemTime(1899, 12, 6, 30, 9, 5, 0, 0));
        body.chunkU32(2, i % 3).chunkText(3, L"text").chunkU32(4, 5).chunkText(5, L"3.25").chunkU32(6, 1);
        body.chunk(7, Bytes().systemTime(2007, 3, 4, 1, 9, 5, 0, 0)).chunkU32(8, 11);
    }
    // An unknown list-wide chunk is skipped.
    const ByteVec file = Bytes(head).chunk(777, Bytes().u32(1).u32(2)).append(iconAndView).append(body).v;
    ListDocument doc;
    TextLayout layout;  // month-day-year with "/"
    CHECK(parseListBytes(file.data(), file.size(), doc, &layout) == FileStatus::Ok);
    CHECK_EQ((int)doc.icon.alpha[0], 40);
    const std::wstring texts[9] = {L"03/01/2007", L"09:05", ResText(IDS_PRIORITY_NORMAL), L"text", ResText(IDS_YES),
                                   L"3.25", ResText(8145), L"03/01/2007    09:05", ResText(8187)};
    for (int t = 0; t < 9; ++t) CHECK_EQ(std::wstring(doc.items.front().values[t].text.c_str()), texts[t]);
    CHECK_EQ(std::wstring(std::next(doc.items.begin())->values[2].text.c_str()), ResText(IDS_PRIORITY_HIGH));
    int ordinal = 0;
    for (const ListItem& item : doc.items) CHECK_EQ(item.ordinal, ordinal++);

    // Written back unchanged, byte for byte, less the unknown chunk.
    const ByteVec expected = Bytes(head).append(iconAndView).append(body).v;
    ByteWriter again;
    buildListBytes(doc, again);
    CHECK_BYTES(again.bytes, expected);

    // The one-call-per-chunk reader gives the same document.
    std::wstring path = ScratchDir(L"readboth") + L"\\All.zvl";
    WriteBytes(path, file);
    ListDocument slow;
    CHECK(readListFileUnbuffered(path.c_str(), slow) == FileStatus::Ok);
    ByteWriter slowBytes;
    buildListBytes(slow, slowBytes);
    CHECK_BYTES(slowBytes.bytes, expected);
}

TEST_CASE(Doc_FiftyFieldsRead) {
    Bytes fifty;
    fifty.listHeader(50, 1).viewState(-1, 0);
    for (int i = 0; i < 50; ++i) fifty.append(FieldChunks(L"f" + std::to_wstring(i), 5, 0, L"", 0, 0, 0));
    for (int i = 0; i < 50; ++i) fifty.chunkText(5, std::to_wstring(i));
    ListDocument doc;
    CHECK(parseListBytes(fifty.v.data(), fifty.v.size(), doc) == FileStatus::Ok);
    CHECK_EQ((int)doc.items.front().values.size(), 50);
    CHECK_EQ(doc.items.front().values[49].text.c_str(), L"49");
}

TEST_CASE(Doc_DamagedPayloadsCutAndSkipped) {
    Bytes file;
    file.listHeader(2, 0x7FFFFFFF).viewState(-1, 0);
    file.chunk0(4321).chunkText(1004, std::wstring(300, L'n')).chunk(9999, Bytes().u32(1).u32(2).u32(3));
    file.chunk(1002, Bytes().u32(3).u32(0xDEAD)).chunk0(1234);  // type payload longer than 4: cut
    file.append(FieldChunks(L"B", 1, 0, L"", 0, 0, 0));
    file.chunkText(3, std::wstring(600, L't')).chunk(1, Bytes().systemTime(2000, 1, 0, 1, 7, 30, 0, 0).u32(77));
    file.chunk(55, Bytes().u32(5)).chunk(1, Bytes().u16(2001));  // unknown value tag; short time
    ListDocument doc;
    CHECK(parseListBytes(file.v.data(), file.v.size(), doc) == FileStatus::PartlyRead);
    CHECK_EQ((int)wcslen(doc.fields[0].name), 249);
    CHECK(doc.fields[0].type == FieldType::Text);
    // The huge item count stops with the data: two items were there.
    CHECK_EQ(doc.itemCount(), 2);
    const ListItem& first = doc.items.front();
    CHECK_EQ(first.values[0].text.Length(), 257);
    CHECK_EQ(first.values[1].text.c_str(), L"07:30");
    const ListItem& second = doc.items.back();
    CHECK_EQ((int)second.values[0].storedType, 55);
    CHECK(second.values[0].text.IsEmpty());
    CHECK_EQ(second.values[1].time.wYear, 2001);
    CHECK_EQ(second.values[1].time.wMonth, 0);

    // An icon whose planes are larger than the file is dropped, not allocated.
    Bytes icon;
    icon.listHeader(0, 0).chunk(1007, Bytes().i32(4000).i32(4000)).chunk(1008, Bytes().u8(1)).viewState(3, 0);
    icon.chunk0(4321);
    CHECK(parseListBytes(icon.v.data(), icon.v.size(), doc) == FileStatus::Ok);
    CHECK(doc.icon.IsEmpty());
}

TEST_CASE(Doc_TemplateFilesAndNewList) {
    const std::wstring dir = ScratchDir(L"template"), path = dir + L"\\Trip.zvt";
    TemplateFieldList list;
    list.Add(MakeField(L"What", 3, L"?", 0, 120));
    list.Add(MakeField(L"When", 7, L"", 0, 0, 1, 19));
    unsigned char r[4] = {1, 2, 3, 4}, g[4] = {5, 6, 7, 8}, b[4] = {9, 10, 11, 12}, a[4] = {255, 0, 128, 7};
    PlanarImage icon;
    CHECK_EQ(SetPlanes(icon, r, g, b, a, 0, 2), 0);
    CHECK_EQ(SetPlanes(icon, r, g, b, a, 2, 2), 1);
    CHECK(writeTemplateFile(path.c_str(), list, icon) == FileStatus::Ok);
    // The icon's size and its planes in the order red, green, blue, alpha.
    Bytes chunks;
    chunks.chunk(1007, Bytes().i32(2).i32(2));
    chunks.chunk(1008, Bytes().u8(1).u8(2).u8(3).u8(4)).chunk(1008, Bytes().u8(5).u8(6).u8(7).u8(8));
    chunks.chunk(1008, Bytes().u8(9).u8(10).u8(11).u8(12)).chunk(1008, Bytes().u8(255).u8(0).u8(128).u8(7));
    chunks.viewState(-1, 0);
    chunks.append(FieldChunks(L"What", 3, 120, L"?", 0, 0, 0)).append(FieldChunks(L"When", 7, 0, L"", 0, 1, 19));
    CHECK_BYTES(ReadBytes(path), Bytes().templateHeader(2).append(chunks).v);

    // A new list, the template read back: 16-byte header with no items,
    // then the same chunks.
    CHECK(makeListFromTemplate(path.c_str(), (dir + L"\\\\Trip.zvl").c_str()) == FileStatus::Ok);
    CHECK_BYTES(ReadBytes(dir + L"\\Trip.zvl"), Bytes().listHeader(2, 0).append(chunks).v);

    // The template editor's list holds 50 fields at most; the first field
    // moves to the last place, and a deleted one leaves no gap.
    TemplateFieldList full;
    for (int i = 0; i < 50; ++i) CHECK(full.Add(MakeField(std::to_wstring(i).c_str(), 3)));
    CHECK(!full.Add(MakeField(L"g", 3)));
    CHECK(full.Swap(0, 49));
    full.Remove(0);
    CHECK_EQ(full.count, 49);
    CHECK_EQ(std::wstring(full.fields[0].name), L"1");
    CHECK_EQ(std::wstring(full.fields[48].name), L"0");
}

// Every cut of a list is named and keeps only whole items; the backup of
// the whole list made by the last good read is never replaced by a cut one.
TEST_CASE(Damage_EveryCutOfAListIsNamed) {
    const std::wstring dir = ScratchDir(L"damagecut"), path = dir + L"\\Shop.zvl", backup = dir + L"\\Shop.BAK";
    Layout l = ThreeItems();
    WriteBytes(path, l.file.v);
    WriteBytes(backup, Bytes().u8(1).v);  // an old copy: replaced
    ListDocument doc;
    // Doubled backslashes are collapsed before the file is opened.
    ListFileResult read = readListFile((dir + L"\\\\\\Shop.zvl").c_str(), doc);
    CHECK(read == FileStatus::Ok);
    CHECK(read.message.IsEmpty());
    CHECK_EQ(std::wstring(doc.path.c_str()), path);
    CHECK_EQ(doc.itemCount(), 3);
    CHECK_BYTES(ReadBytes(backup), l.file.v);
    for (size_t cut = 0; cut < l.file.v.size(); ++cut) {
        WriteBytes(path, Head(l.file.v, cut));
        ListReadReport report;
        FileStatus got = readListFile(path.c_str(), doc, ReadListOptions(), &report).code;
        FileStatus want = cut == 0 ? FileStatus::Empty
                          : cut < l.fieldsEnd ? FileStatus::Damaged : FileStatus::PartlyRead;
        CHECK_EQ((int)got, (int)want);
        int whole = 0;
        for (size_t end : l.itemEnd) whole += cut >= end ? 1 : 0;
        CHECK_EQ(doc.itemCount(), got == FileStatus::PartlyRead ? whole : 0);
        if (got == FileStatus::PartlyRead) {
            CHECK_EQ(report.itemsRead, (uint32_t)whole);
            CHECK_EQ(report.itemsPromised, 3u);
        }
        CHECK_BYTES(ReadBytes(backup), l.file.v);
    }
    // Asked for none, a good read makes none.
    DeleteFileW(backup.c_str());
    WriteBytes(path, l.file.v);
    ReadListOptions quiet;
    quiet.makeBackup = false;
    CHECK(readListFile(path.c_str(), doc, quiet) == FileStatus::Ok);
    CHECK(!FileExists(backup));
}

// Each kind of bad list has its own message, none loads a field and none
// makes a backup: the version is checked before the backup is written.
TEST_CASE(Damage_EachKindHasItsOwnMessage) {
    std::wstring dir = ScratchDir(L"damagekinds");
    Layout l = ThreeItems();
    auto fields = [](int count) { return Bytes().listHeader(count, 0).viewState(-1, 0).v; };
    const BadFile cases[] = {
        {L"empty", ByteVec(), FileStatus::Empty, IDS_LIST_EMPTY},
        {L"old", Bytes().wstr(L"1.6").i32(0).i32(0).viewState(-1, 0).v, FileStatus::BadVersion, IDS_LIST_VERSION_BAD},
        // "1.7" must be followed by its terminator.
        {L"noNul", Bytes().wchars(L"1.7x").i32(0).i32(0).v, FileStatus::Damaged, IDS_LIST_DAMAGED},
        {L"zip", Bytes().wchars(L"PK\x0003\x0004 zip").v, FileStatus::Damaged, IDS_LIST_DAMAGED},
        {L"51", fields(51), FileStatus::BadFieldCount, IDS_LIST_DAMAGED},
        {L"minus", fields(-1), FileStatus::BadFieldCount, IDS_LIST_DAMAGED},
        {L"huge", fields(4098252), FileStatus::BadFieldCount, IDS_LIST_DAMAGED},
        {L"max", fields(0x7FFFFFFF), FileStatus::BadFieldCount, IDS_LIST_DAMAGED},
        {L"items", Head(l.file.v, l.itemEnd[1] + 3), FileStatus::PartlyRead, IDS_LIST_PARTLY_READ},
        {L"none", ByteVec(), FileStatus::Missing, IDS_LIST_MISSING},
    };
    for (const BadFile& c : cases) {
        std::wstring stem = dir + L"\\" + c.name;
        if (c.status != FileStatus::Missing) WriteBytes(stem + L".zvl", c.bytes);
        ListDocument doc;
        ListFileResult r = readListFile((stem + L".zvl").c_str(), doc);
        CHECK_EQ((int)r.code, (int)c.status);
        // Only a partly read list says how much was read.
        const bool part = c.status == FileStatus::PartlyRead;
        UINT caption = part ? IDS_SAVE_DAMAGED_CAPTION : IDS_ERROR_CAPTION;
        CheckMessage(r.message, c.text, caption, MB_ICONEXCLAMATION, ZV_HERE);
        CHECK(r.message.argument.has_value() == part);
        if (part) CHECK_EQ(*r.message.argument, std::wstring(L"2 of 3"));
        CHECK_EQ(doc.fieldCount(), part ? 2 : 0);
        CHECK(!FileExists(stem + L".BAK"));
    }
}

// A bad template is named when read; no list is made from it, nor from part
// of one, and an existing list stays whole.
TEST_CASE(Damage_TemplatesMakeNoList) {
    std::wstring dir = ScratchDir(L"damagetpl");
    Bytes cut;
    cut.templateHeader(2).viewState(-1, 0).append(FieldChunks(L"What", 3, 80, L"", 0, 0, 0));
    cut.raw(Head(FieldChunks(L"When", 0, 40, L"", 0, 0, 0).v, 10));
    const ByteVec existing = ThreeItems().file.v;
    const std::wstring list = dir + L"\\L.zvl";
    WriteBytes(list, existing);
    const BadFile cases[] = {
        {L"cut", cut.v, FileStatus::PartlyRead, IDS_TEMPLATE_PARTLY_READ},
        {L"empty", ByteVec(), FileStatus::Empty, IDS_TEMPLATE_EMPTY},
        {L"old", Bytes().wstr(L"1.6").i32(0).v, FileStatus::BadVersion, IDS_TEMPLATE_VERSION_BAD},
        {L"none", ByteVec(), FileStatus::Missing, IDS_TEMPLATE_MISSING},
    };
    for (const BadFile& c : cases) {
        std::wstring path = dir + L"\\" + c.name + L".zvt";
        if (c.status != FileStatus::Missing) WriteBytes(path, c.bytes);
        TemplateFieldList fields;
        PlanarImage icon;
        DocMessage m;
        const bool part = c.status == FileStatus::PartlyRead;
        CHECK(readTemplateFile(path.c_str(), fields, icon, nullptr, &m) == c.status);
        CHECK_EQ(m.textId, c.text);
        CHECK_EQ(fields.count, part ? 1 : 0);
        if (part) CHECK_EQ(*m.argument, std::wstring(L"1 of 2"));
        CHECK(makeListFromTemplate(path.c_str(), list.c_str(), &m) == (part ? FileStatus::Damaged : c.status));
        CHECK_EQ(m.textId, part ? (UINT)IDS_TEMPLATE_DAMAGED : c.text);
        CHECK_BYTES(ReadBytes(list), existing);
    }
}

TEST_CASE(Damage_TextReadByItsByteOrderMark) {
    // "Café" and a Greek word, big-endian and as UTF-8 (the text import
    // cases read little-endian and unmarked files).
    const std::wstring want = L"(Text)Caf\x00e9\r\n\x03b1\x03b2\t";
    Bytes be, utf8;
    be.u8(0xFE).u8(0xFF);
    for (wchar_t c : want) be.u8(c >> 8).u8(c & 0xFF);
    utf8.u8(0xEF).u8(0xBB).u8(0xBF);
    for (unsigned char c : std::string("(Text)Caf\xC3\xA9\r\n\xCE\xB1\xCE\xB2\t")) utf8.u8(c);
    std::wstring path = ScratchDir(L"damagebom") + L"\\t.CSV";
    for (const ByteVec& bytes : {be.v, utf8.v}) {
        WriteBytes(path, bytes);
        std::wstring text;
        CHECK(readCsvFileText(path.c_str(), text));
        CHECK_EQ(text, want);
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
}
