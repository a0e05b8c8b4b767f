// Every writer of a user's file, failed part-way (the writer's fault hook
// stands for a full disk): the file on the disk stays byte for byte as it
// was, no temporary file is left, and the message names the cause.
#include <windows.h>

#include <functional>
#include <set>
#include <string>

#include "LangIds.h"
#include "document/CsvText.h"
#include "document/ListFile.h"
#include "document/SafeWrite.h"
#include "tests/core/test_doc_util.h"

using namespace doctest;

namespace {

std::set<std::wstring> FolderNames(const std::wstring& dir) {
    std::set<std::wstring> names;
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((dir + L"\\*").c_str(), &found);
    if (find == INVALID_HANDLE_VALUE) return names;
    do {
        std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") names.insert(name);
    } while (FindNextFileW(find, &found));
    FindClose(find);
    return names;
}

ListDocument TwoFieldList(int items) {
    ListDocument doc;
    doc.fields.push_back(MakeField(L"What", 3));
    doc.fields.push_back(MakeField(L"Done", 6));
    for (int i = 0; i < items; ++i) {
        ListItem item;
        item.fieldCount = 2;
        item.values.resize(2);
        item.values[0].storedType = FieldType::Text;
        item.values[0].text = (L"item " + std::to_wstring(i)).c_str();
        item.values[1].storedType = FieldType::Check;
        item.values[1].choice = i % 2;
        doc.items.push_back(item);
    }
    return doc;
}

// One writer: the file it replaces and a run that returns the text and
// cause IDs of its message (0, 0 when it reports success).
struct Writer {
    const wchar_t* name;
    const wchar_t* target;
    UINT failText;
    std::function<std::pair<UINT, UINT>(const std::wstring& dir)> run;
};

std::pair<UINT, UINT> Ids(const DocMessage& m, bool ok) { return ok ? std::make_pair(0u, 0u) : std::make_pair(m.textId, m.causeId); }

const Writer kWriters[] = {
    {L"list save", L"L.zvl", IDS_SAVE_FAILED,
     [](const std::wstring& dir) {
         ListFileResult r = writeListFile((dir + L"\\L.zvl").c_str(), TwoFieldList(40));
         return Ids(r.message, r == FileStatus::Ok);
     }},
    {L"text import", L"L.zvl", IDS_SAVE_FAILED,
     [](const std::wstring& dir) {
         CsvResult r = importCsvFile((dir + L"\\src\\L.CSV").c_str(), dir.c_str(), 240,
                                     [](const DocMessage&) { return true; });
         return Ids(r.message, r == CsvStatus::Ok);
     }},
    {L"new list", L"L.zvl", IDS_LIST_CREATE_FAILED,
     [](const std::wstring& dir) {
         DocMessage m;
         FileStatus s = makeListFromTemplate((dir + L"\\src\\T.zvt").c_str(), (dir + L"\\L.zvl").c_str(), &m);
         return Ids(m, s == FileStatus::Ok);
     }},
    {L"template", L"T.zvt", IDS_TEMPLATE_CREATE_FAILED,
     [](const std::wstring& dir) {
         ListDocument doc = TwoFieldList(0);
         DocMessage m;
         FileStatus s = writeTemplateFile((dir + L"\\T.zvt").c_str(), doc.fields.data(), 2, PlanarImage(), &m);
         return Ids(m, s == FileStatus::Ok);
     }},
    {L"text export", L"E.CSV", IDS_EXPORT_CREATE_FAILED,
     [](const std::wstring& dir) {
         CsvResult r = exportCsvToFile(TwoFieldList(40), (dir + L"\\E.CSV").c_str());
         return Ids(r.message, r == CsvStatus::Ok);
     }},
};

// A folder holding the old file each writer replaces and their sources.
std::wstring PrepareFolder(const wchar_t* name) {
    std::wstring dir = ScratchDir(name);
    CreateDirectoryW((dir + L"\\src").c_str(), nullptr);
    Bytes old;
    old.wchars(L"the old file, which must survive");
    for (const wchar_t* target : {L"L.zvl", L"T.zvt", L"E.CSV"}) WriteBytes(dir + L"\\" + target, old.v);
    Bytes csv;
    csv.u8(0xFF).u8(0xFE).wchars(L"(Text)A\t(Check)B\r\none\tDone\t\r\ntwo\tNot done\t");
    WriteBytes(dir + L"\\src\\L.CSV", csv.v);
    ListDocument tpl = TwoFieldList(0);
    setWriteFaultAfter(-1);
    writeTemplateFile((dir + L"\\src\\T.zvt").c_str(), tpl.fields.data(), 2, PlanarImage());
    return dir;
}

}  // namespace

TEST_CASE(Safe_EveryWriterFailedPartWayLeavesTheFile) {
    // Fault points: before the first byte, inside the header, inside the
    // body, one byte short of the end.
    const long long faults[] = {0, 1, 13, 200, -2};
    std::wstring dir = PrepareFolder(L"safefault");
    const std::set<std::wstring> before = FolderNames(dir);
    for (const Writer& w : kWriters) {
        ByteVec old = ReadBytes(dir + L"\\" + w.target);
        for (long long at : faults) {
            // -2: the size of a good write less one byte, measured first.
            long long point = at;
            if (at == -2) {
                std::wstring probe = PrepareFolder(L"safeprobe");
                w.run(probe);
                point = (long long)ReadBytes(probe + L"\\" + w.target).size() - 1;
            }
            setWriteFaultAfter(point);
            std::pair<UINT, UINT> said = w.run(dir);
            setWriteFaultAfter(-1);
            CHECK_EQ(said.first, w.failText);
            CHECK_EQ(said.second, (UINT)IDS_CAUSE_DISK_FULL);
            CHECK_BYTES(ReadBytes(dir + L"\\" + w.target), old);
            CHECK(FolderNames(dir) == before);
        }
        // Without the fault the same writer replaces the file.
        CHECK_EQ(w.run(dir).first, 0u);
        CHECK(ReadBytes(dir + L"\\" + w.target) != old);
        CHECK(FolderNames(dir) == before);
    }
}

TEST_CASE(Safe_CausesInTheUsersWords) {
    std::wstring dir = ScratchDir(L"safecause");
    Bytes old;
    old.wchars(L"kept");
    WriteBytes(dir + L"\\ro.zvl", old.v);
    SetFileAttributesW((dir + L"\\ro.zvl").c_str(), FILE_ATTRIBUTE_READONLY);
    struct Case {
        std::wstring path;
        UINT cause;
    } cases[] = {
        {dir + L"\\ro.zvl", IDS_CAUSE_READ_ONLY},
        {dir + L"\\no such folder\\x.zvl", IDS_CAUSE_FOLDER_MISSING},
        {dir + L"\\nul", IDS_CAUSE_INVALID_NAME},
        {dir + L"\\COM1.zvl", IDS_CAUSE_INVALID_NAME},
        {dir + L"\\aux.CSV", IDS_CAUSE_INVALID_NAME},
    };
    for (const Case& c : cases) {
        ListFileResult r = writeListFile(c.path.c_str(), TwoFieldList(3));
        CHECK(r == FileStatus::CannotCreate);
        CHECK_EQ(r.message.causeId, c.cause);
        CHECK_EQ(r.message.textId, (UINT)IDS_SAVE_FAILED);
    }
    CHECK_BYTES(ReadBytes(dir + L"\\ro.zvl"), old.v);
    SetFileAttributesW((dir + L"\\ro.zvl").c_str(), FILE_ATTRIBUTE_NORMAL);
    CHECK(FolderNames(dir) == std::set<std::wstring>{L"ro.zvl"});
    // The cause follows the step's own message as a sentence of its own.
    DocMessage m{IDS_SAVE_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, {}};
    m.causeId = IDS_CAUSE_DISK_FULL;
    DocMessage step{IDS_SAVE_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, {}};
    DocMessage cause{IDS_CAUSE_DISK_FULL, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, {}};
    CHECK_EQ(m.Text(), step.Text() + L"\n\n" + cause.Text());
}
