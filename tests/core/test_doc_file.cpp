// List and template files byte for byte, reading back, refusals and backups.
#include <string>

#include "LangIds.h"
#include "base/ResString.h"
#include "document/ListFile.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"

using namespace doctest;

namespace {

// Four fields covering the default-chunk rules: YesNo, Check, Text and an
// unnamed Date.
void FillSampleFields(ListDocument& doc) {
    doc.fields.push_back(MakeField(L"Paid", 4, L"yes?", 1, 60, 0, 0));
    doc.fields.push_back(MakeField(L"Done", 6, L"ignored", 1, 30, 0, 0));
    doc.fields.push_back(MakeField(L"Note", 3, L"n/a", 7, 90, 0, 0));
    doc.fields.push_back(MakeField(L"", 0, L"", 0, 50, 2, 5));
}

Bytes SampleFieldBytes() {
    Bytes b;
    b.append(FieldChunks(L"Paid", 4, 60, L"yes?", 1, 0, 0));
    b.append(FieldChunks(L"Done", 6, 30, L"", 1, 0, 0));
    b.append(FieldChunks(L"Note", 3, 90, L"n/a", 0, 0, 0));
    b.append(FieldChunks(L"", 0, 50, L"", 0, 2, 5));
    return b;
}

void AddSampleItems(ListDocument& doc) {
    ListItem a;
    a.values.resize(4);
    a.fieldCount = 4;
    a.values[0].storedType = FieldType::YesNo;
    a.values[0].choice = 1;
    a.values[1].storedType = FieldType::Check;
    a.values[1].choice = 0;
    a.values[2].storedType = FieldType::Text;
    a.values[2].text = L"milk";
    a.values[3].storedType = FieldType::Date;
    a.values[3].time = MakeTime(2007, 3, 1);
    ListItem b = a;
    b.backColor = 0xB5DBB5;
    b.values[2].text = L"";
    b.values[3].storedType = FieldType::DateTime;  // stored type chooses the chunk
    b.values[3].time = MakeTime(2008, 12, 24, 9, 5);
    doc.items.push_back(a);
    doc.items.push_back(b);
}

Bytes SampleItemBytes() {
    Bytes b;
    // The first item has no colour: it starts with its first value.
    b.chunkU32(4, 1).chunkU32(6, 0).chunkText(3, L"milk").chunk(0, Bytes().systemTime(2007, 3, 0, 1, 0, 0, 0, 0));
    b.chunkU32(120, 0xB5DBB5).chunkU32(4, 1).chunkU32(6, 0).chunkText(3, L"");
    b.chunk(7, Bytes().systemTime(2008, 12, 0, 24, 9, 5, 0, 0));
    return b;
}

}  // namespace

TEST_CASE(Doc_WriteListBytesFollowLayout) {
    ListDocument doc;
    FillSampleFields(doc);
    AddSampleItems(doc);
    doc.sortColumn = 2;
    doc.sortDescending = true;
    ByteWriter out;
    buildListBytes(doc, out);
    Bytes want;
    // No icon: the view state follows the header directly.
    want.listHeader(4, 2).viewState(2, 1).append(SampleFieldBytes()).append(SampleItemBytes());
    CHECK_BYTES(out.bytes, want.v);

    std::wstring dir = ScratchDir(L"write");
    std::wstring path = dir + L"\\Shop.zvl";
    CHECK(writeListFile(path.c_str(), doc) == FileStatus::Ok);
    CHECK_BYTES(ReadBytes(path), want.v);
}

TEST_CASE(Doc_UnknownStoredTypeKeepsItsPlace) {
    ListDocument doc;
    doc.fields.push_back(MakeField(L"A", 3));
    doc.fields.push_back(MakeField(L"B", 5));
    ListItem item;
    item.fieldCount = 2;
    item.values.resize(2);
    item.values[0].storedType = FieldType(42);
    item.values[0].text = L"lost";
    item.values[1].storedType = FieldType::Number;
    item.values[1].text = L"-1.5";
    doc.items.push_back(item);
    ByteWriter out;
    buildListBytes(doc, out);
    Bytes want;
    want.listHeader(2, 1).viewState(-1, 0);
    want.append(FieldChunks(L"A", 3, 0, L"", 0, 0, 0)).append(FieldChunks(L"B", 5, 0, L"", 0, 0, 0));
    want.chunk0(42).chunkText(5, L"-1.5");
    CHECK_BYTES(out.bytes, want.v);
    // Text import chooses the chunk by the field's type instead.
    ByteWriter byField;
    buildListBytes(doc, byField, true);
    Bytes want2;
    want2.listHeader(2, 1).viewState(-1, 0);
    want2.append(FieldChunks(L"A", 3, 0, L"", 0, 0, 0)).append(FieldChunks(L"B", 5, 0, L"", 0, 0, 0));
    want2.chunkText(3, L"lost").chunkText(5, L"-1.5");
    CHECK_BYTES(byField.bytes, want2.v);
}

TEST_CASE(Doc_IconChunks) {
    unsigned char r[4] = {1, 2, 3, 4}, g[4] = {5, 6, 7, 8}, b[4] = {9, 10, 11, 12}, a[4] = {255, 0, 128, 7};
    PlanarImage icon;
    CHECK_EQ(SetPlanes(icon, r, g, b, a, 0, 2), 0);
    CHECK_EQ(SetPlanes(icon, r, g, b, a, 2, 2), 1);
    FieldDef fields[2] = {MakeField(L"Item", 3, L"d"), MakeField(L"Level", 2, L"", 2, 40)};
    ByteWriter fromArray;
    writeHeaderChunks(fromArray, fields, 2, icon, ViewState());
    Bytes want;
    want.chunk(1007, Bytes().i32(2).i32(2));
    want.chunk(1008, Bytes().u8(1).u8(2).u8(3).u8(4)).chunk(1008, Bytes().u8(5).u8(6).u8(7).u8(8));
    want.chunk(1008, Bytes().u8(9).u8(10).u8(11).u8(12)).chunk(1008, Bytes().u8(255).u8(0).u8(128).u8(7));
    want.viewState(-1, 0);
    want.append(FieldChunks(L"Item", 3, 0, L"d", 0, 0, 0)).append(FieldChunks(L"Level", 2, 40, L"", 2, 0, 0));
    CHECK_BYTES(fromArray.bytes, want.v);
}

TEST_CASE(Doc_ReadListBuildsTexts) {
    Bytes file;
    file.listHeader(9, 3);
    file.chunk(777, Bytes().u32(1).u32(2));  // unknown list-wide chunk: skipped
    file.chunk(1007, Bytes().i32(1).i32(1));
    for (int p = 1; p <= 4; ++p) file.chunk(1008, Bytes().u8(10 * p));
    file.viewState(4, 1);
    const wchar_t* names[9] = {L"D", L"T", L"P", L"X", L"Y", L"N", L"C", L"DT", L"S"};
    // Fields and three items (the second coloured): the part written back as read.
    Bytes body;
    for (int t = 0; t < 9; ++t) body.append(FieldChunks(names[t], t, 20 + t, L"", 0, 0, 0));
    for (int i = 0; i < 3; ++i) {
        if (i == 1) body.chunkU32(120, 0xC9CEFF);
        body.chunk(0, Bytes().systemTime(2007, 3, 4, 1, 0, 0, 0, 0));
        body.chunk(1, Bytes().systemTime(1899, 12, 6, 30, 9, 5, 0, 0));
        body.chunkU32(2, i % 3).chunkText(3, L"text").chunkU32(4, 5).chunkText(5, L"3.25").chunkU32(6, 1);
        body.chunk(7, Bytes().systemTime(2007, 3, 4, 1, 9, 5, 0, 0)).chunkU32(8, 11);
    }
    file.append(body);
    ListDocument doc;
    TextLayout layout;  // month-day-year with "/"
    CHECK(parseListBytes(file.v.data(), file.v.size(), doc, &layout) == FileStatus::Ok);
    CHECK_EQ(doc.fieldCount(), 9);
    CHECK_EQ(doc.itemCount(), 3);
    CHECK_EQ(doc.sortColumn, 4);
    CHECK(doc.sortDescending);
    CHECK_EQ(doc.icon.width, 1);
    CHECK_EQ((int)doc.icon.alpha[0], 40);
    CHECK_EQ(doc.fields[8].columnWidth, 28);
    CHECK_EQ(doc.fields[7].name, L"DT");
    auto it = doc.items.begin();
    CHECK_EQ(it->backColor, kNoBackColor);
    CHECK_EQ(it->ordinal, 0);
    CHECK_EQ(it->values[0].text.c_str(), L"03/01/2007");
    CHECK_EQ(it->values[1].text.c_str(), L"09:05");
    CHECK_EQ(std::wstring(it->values[2].text.c_str()), ResText(IDS_PRIORITY_NORMAL));
    CHECK_EQ(it->values[3].text.c_str(), L"text");
    CHECK_EQ(std::wstring(it->values[4].text.c_str()), ResText(IDS_YES));
    CHECK_EQ(it->values[5].text.c_str(), L"3.25");
    CHECK_EQ(std::wstring(it->values[6].text.c_str()), ResText(8145));
    CHECK_EQ(it->values[7].text.c_str(), L"03/01/2007    09:05");
    CHECK_EQ(std::wstring(it->values[8].text.c_str()), ResText(8187));
    CHECK_EQ(it->values[8].choice, 11);
    ++it;
    CHECK_EQ(it->backColor, (COLORREF)0xC9CEFF);
    CHECK_EQ(it->ordinal, 1);
    CHECK_EQ(std::wstring(it->values[2].text.c_str()), ResText(IDS_PRIORITY_HIGH));

    // Written back unchanged, byte for byte, less the unknown chunk.
    ByteWriter again;
    buildListBytes(doc, again);
    Bytes expected;
    expected.listHeader(9, 3).chunk(1007, Bytes().i32(1).i32(1));
    for (int p = 1; p <= 4; ++p) expected.chunk(1008, Bytes().u8(10 * p));
    expected.viewState(4, 1).append(body);
    CHECK_BYTES(again.bytes, expected.v);

    // The one-call-per-chunk reader gives the same document.
    std::wstring dir = ScratchDir(L"readboth");
    std::wstring path = dir + L"\\All.zvl";
    WriteBytes(path, file.v);
    ListDocument slow;
    CHECK(readListFileUnbuffered(path.c_str(), slow) == FileStatus::Ok);
    ByteWriter slowBytes;
    buildListBytes(slow, slowBytes);
    CHECK_BYTES(slowBytes.bytes, expected.v);
}

TEST_CASE(Doc_ReadListMakesBackupAfterVersionCheck) {
    std::wstring dir = ScratchDir(L"backup");
    std::wstring path = dir + L"\\Books.zvl";
    Bytes file;
    file.listHeader(1, 1).viewState(-1, 0).append(FieldChunks(L"Title", 3, 0, L"", 0, 0, 0)).chunkText(3, L"Dune");
    WriteBytes(path, file.v);
    WriteBytes(dir + L"\\Books.BAK", Bytes().u8(1).v);  // an old copy: replaced
    ListDocument doc;
    // Doubled backslashes are collapsed before the file is opened.
    std::wstring doubled = dir + L"\\\\Books.zvl";
    ListFileResult read = readListFile(doubled.c_str(), doc);
    CHECK(read == FileStatus::Ok);
    CHECK(read.message.IsEmpty());
    CHECK_EQ(std::wstring(doc.path.c_str()), path);
    CHECK_BYTES(ReadBytes(dir + L"\\Books.BAK"), file.v);
    CHECK_EQ(doc.items.front().values[0].text.c_str(), L"Dune");

    ReadListOptions quiet;
    quiet.makeBackup = false;
    DeleteFileW((dir + L"\\Books.BAK").c_str());
    CHECK(readListFile(path.c_str(), doc, quiet) == FileStatus::Ok);
    CHECK(!FileExists(dir + L"\\Books.BAK"));
}

TEST_CASE(Doc_WrongVersionRefusedWithoutBackup) {
    std::wstring dir = ScratchDir(L"version");
    std::wstring path = dir + L"\\Old.zvl";
    Bytes file;
    file.wstr(L"1.6").i32(0).i32(0).viewState(-1, 0);
    WriteBytes(path, file.v);
    ListDocument doc;
    ListFileResult read = readListFile(path.c_str(), doc);
    CHECK(read == FileStatus::BadVersion);
    CHECK(!FileExists(dir + L"\\Old.BAK"));
    CheckMessage(read.message, IDS_LIST_VERSION_BAD, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, ZV_HERE);
    CHECK_EQ(doc.fieldCount(), 0);
    // "1.7" must be followed by its terminator.
    Bytes noNul;
    noNul.wchars(L"1.7x").i32(0).i32(0);
    WriteBytes(path, noNul.v);
    CHECK(readListFile(path.c_str(), doc) == FileStatus::Damaged);
    // A missing file is not a version question.
    read = readListFile((dir + L"\\none.zvl").c_str(), doc);
    CHECK(read == FileStatus::Missing);
    CheckMessage(read.message, IDS_LIST_MISSING, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, ZV_HERE);
}

TEST_CASE(Doc_FieldCountLimits) {
    Bytes fifty;
    fifty.listHeader(50, 1).viewState(-1, 0);
    for (int i = 0; i < 50; ++i) fifty.append(FieldChunks(L"f" + std::to_wstring(i), 5, 0, L"", 0, 0, 0));
    for (int i = 0; i < 50; ++i) fifty.chunkText(5, std::to_wstring(i));
    ListDocument doc;
    CHECK(parseListBytes(fifty.v.data(), fifty.v.size(), doc) == FileStatus::Ok);
    CHECK_EQ(doc.fieldCount(), 50);
    CHECK_EQ((int)doc.items.front().values.size(), 50);
    CHECK_EQ(doc.items.front().values[49].text.c_str(), L"49");

    std::wstring dir = ScratchDir(L"fields");
    for (int count : {51, -1, 4098252, 0x7FFFFFFF}) {
        Bytes bad;
        bad.listHeader(count, 0).viewState(-1, 0);
        WriteBytes(dir + L"\\bad.zvl", bad.v);
        ListFileResult read = readListFile((dir + L"\\bad.zvl").c_str(), doc);
        CHECK(read == FileStatus::BadFieldCount);
        CHECK_EQ(read.message.textId, (UINT)IDS_LIST_DAMAGED);
        CHECK(!FileExists(dir + L"\\bad.BAK"));
    }
}

TEST_CASE(Doc_DamagedPayloadsCutAndSkipped) {
    std::wstring longName(300, L'n');
    std::wstring longText(600, L't');
    Bytes file;
    file.listHeader(2, 0x7FFFFFFF).viewState(-1, 0);
    file.chunk0(4321).chunkText(1004, longName).chunk(9999, Bytes().u32(1).u32(2).u32(3));
    file.chunk(1002, Bytes().u32(3).u32(0xDEAD)).chunk0(1234);  // type payload longer than 4: cut
    file.append(FieldChunks(L"B", 1, 0, L"", 0, 0, 0));
    file.chunkText(3, longText).chunk(1, Bytes().systemTime(2000, 1, 0, 1, 7, 30, 0, 0).u32(77));
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

    // A file ending inside an item drops that item: only whole items stay.
    Bytes cut;
    cut.listHeader(2, 5).viewState(-1, 0);
    cut.append(FieldChunks(L"A", 3, 0, L"", 0, 0, 0)).append(FieldChunks(L"B", 3, 0, L"", 0, 0, 0));
    cut.chunkText(3, L"whole").chunkText(3, L"item").chunkText(3, L"only");
    CHECK(parseListBytes(cut.v.data(), cut.v.size(), doc) == FileStatus::PartlyRead);
    CHECK_EQ(doc.itemCount(), 1);
    CHECK_EQ(doc.items.front().values[1].text.c_str(), L"item");

    // An icon whose planes are larger than the file is dropped, not allocated.
    Bytes icon;
    icon.listHeader(0, 0).chunk(1007, Bytes().i32(4000).i32(4000)).chunk(1008, Bytes().u8(1)).viewState(3, 0);
    icon.chunk0(4321);
    CHECK(parseListBytes(icon.v.data(), icon.v.size(), doc) == FileStatus::Ok);
    CHECK(doc.icon.IsEmpty());
}

TEST_CASE(Doc_WriteFailureShowsMessage) {
    ListDocument doc;
    doc.fields.push_back(MakeField(L"A", 3));
    std::wstring dir = ScratchDir(L"nowrite");
    std::wstring path = dir + L"\\missing folder\\x.zvl";
    ListFileResult written = writeListFile(path.c_str(), doc);
    CHECK(written == FileStatus::CannotCreate);
    CheckMessage(written.message, IDS_SAVE_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, ZV_HERE);
    CHECK_EQ(written.message.causeId, (UINT)IDS_CAUSE_FOLDER_MISSING);
}

TEST_CASE(Doc_TemplateFilesAndNewList) {
    std::wstring dir = ScratchDir(L"template");
    TemplateFieldList list;
    list.Add(MakeField(L"What", 3, L"?", 0, 120));
    list.Add(MakeField(L"When", 7, L"", 0, 0, 1, 19));
    PlanarImage noIcon;
    std::wstring path = dir + L"\\Trip.zvt";
    CHECK(writeTemplateFile(path.c_str(), list, noIcon) == FileStatus::Ok);
    Bytes chunks;
    chunks.viewState(-1, 0);
    chunks.append(FieldChunks(L"What", 3, 120, L"?", 0, 0, 0)).append(FieldChunks(L"When", 7, 0, L"", 0, 1, 19));
    Bytes want;
    want.templateHeader(2).append(chunks);
    CHECK_BYTES(ReadBytes(path), want.v);

    TemplateFieldList back;
    PlanarImage icon;
    CHECK(readTemplateFile(path.c_str(), back, icon) == FileStatus::Ok);
    CHECK_EQ(back.count, 2);
    CHECK_EQ(back.fields[1].timeDefaultMode, 19);
    CHECK_EQ(back.fields[0].defaultText, L"?");

    // A new list: 16-byte header with no items, then the same chunks.
    std::wstring listPath = dir + L"\\\\Trip.zvl";
    CHECK(makeListFromTemplate(path.c_str(), listPath.c_str()) == FileStatus::Ok);
    Bytes listWant;
    listWant.listHeader(2, 0).append(chunks);
    CHECK_BYTES(ReadBytes(dir + L"\\Trip.zvl"), listWant.v);

    // A template that fails makes no list and leaves an existing one whole.
    Bytes old;
    old.wstr(L"1.6").i32(0);
    WriteBytes(dir + L"\\Old.zvt", old.v);
    CHECK(readTemplateFile((dir + L"\\Old.zvt").c_str(), back, icon) == FileStatus::BadVersion);
    CHECK(makeListFromTemplate((dir + L"\\Old.zvt").c_str(), (dir + L"\\New.zvl").c_str()) == FileStatus::BadVersion);
    CHECK(!FileExists(dir + L"\\New.zvl"));
    CHECK(makeListFromTemplate((dir + L"\\None.zvt").c_str(), listPath.c_str()) == FileStatus::Missing);
    CHECK_BYTES(ReadBytes(dir + L"\\Trip.zvl"), listWant.v);

    // The template editor's list holds 50 fields at most.
    TemplateFieldList full;
    for (int i = 0; i < 50; ++i) CHECK(full.Add(MakeField(L"f", 3)));
    CHECK(!full.Add(MakeField(L"g", 3)));
    CHECK(!full.Swap(0, 50));
    CHECK(full.Swap(0, 49));
    full.Remove(0);
    CHECK_EQ(full.count, 49);
}

// Doubled backslashes collapse; a backup has "BAK" in place of the extension.
TEST_CASE(Doc_PathHelpers) {
    const struct {
        const wchar_t *in, *out;
        CeString (*fn)(const wchar_t*);
    } kRows[] = {{L"\\\\My Documents\\\\\\Lists\\a.zvl", L"\\My Documents\\Lists\\a.zvl", normalizePath},
                 {L"\\x\\y", L"\\x\\y", normalizePath},
                 {L"\\Lists\\Books.zvl", L"\\Lists\\Books.BAK", backupPathOf},
                 {L"ab", L"BAK", backupPathOf}};
    for (const auto& row : kRows)
        CHECK_EQ(std::wstring(row.in) + L" -> " + row.fn(row.in).c_str(), std::wstring(row.in) + L" -> " + row.out);
}
