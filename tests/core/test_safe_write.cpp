// The writers of a user's files: each failed part-way (the writer's fault
// hook stands for a full disk) leaves the file on the disk byte for byte as
// it was, no temporary file behind, and a message that names the cause; zvl
// replacing a large list by a text import, killed again and again from
// before it starts writing to just after the list changed, leaves the old
// list or the new one, whole.
#include <windows.h>

#include <cstdio>
#include <functional>
#include <set>
#include <string>

#include "LangIds.h"
#include "base/ResString.h"
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
    doc.fields = {MakeField(L"What", 3), MakeField(L"Done", 6)};
    for (int i = 0; i < items; ++i) {
        ListItem item;
        item.fieldCount = 2;
        item.values = {{(L"item " + std::to_wstring(i)).c_str(), FieldType::Text}, {{}, FieldType::Check, i % 2}};
        doc.items.push_back(item);
    }
    return doc;
}

// The text and cause IDs of a writer's message; 0, 0 when it reports success.
template <class Code>
std::pair<UINT, UINT> Ids(const DocResult<Code>& r, Code ok) {
    return r == ok ? std::make_pair(0u, 0u) : std::make_pair(r.message.textId, r.message.causeId);
}

// One writer: the file it replaces and a run in the folder given.
using Folder = const std::wstring&;
struct Writer {
    const wchar_t* target;
    UINT failText;
    std::function<std::pair<UINT, UINT>(Folder dir)> run;
} const kWriters[] = {
    {L"L.zvl", IDS_SAVE_FAILED,  // saving a list
     [](Folder dir) { return Ids(writeListFile((dir + L"\\L.zvl").c_str(), TwoFieldList(40)), FileStatus::Ok); }},
    {L"L.zvl", IDS_SAVE_FAILED,  // importing a text
     [](Folder dir) {
         auto yes = [](const DocMessage&) { return true; };
         return Ids(importCsvFile((dir + L"\\src\\L.CSV").c_str(), dir.c_str(), 240, yes), CsvStatus::Ok);
     }},
    {L"L.zvl", IDS_LIST_CREATE_FAILED,  // a new list from a template
     [](Folder dir) {
         ListFileResult r{FileStatus::Ok, {}};
         r.code = makeListFromTemplate((dir + L"\\src\\T.zvt").c_str(), (dir + L"\\L.zvl").c_str(), &r.message);
         return Ids(r, FileStatus::Ok);
     }},
    {L"T.zvt", IDS_TEMPLATE_CREATE_FAILED,  // a template
     [](Folder dir) {
         ListFileResult r{FileStatus::Ok, {}};
         r.code = writeTemplateFile((dir + L"\\T.zvt").c_str(), TwoFieldList(0).fields.data(), 2, PlanarImage(),
                                    &r.message);
         return Ids(r, FileStatus::Ok);
     }},
    {L"E.CSV", IDS_EXPORT_CREATE_FAILED,  // a text export
     [](Folder dir) { return Ids(exportCsvToFile(TwoFieldList(40), (dir + L"\\E.CSV").c_str()), CsvStatus::Ok); }},
};

// A folder holding the old file each writer replaces and their sources.
std::wstring PrepareFolder(const wchar_t* name) {
    std::wstring dir = ScratchDir(name);
    CreateDirectoryW((dir + L"\\src").c_str(), nullptr);
    const ByteVec old = Bytes().wchars(L"the old file, which must survive").v;
    for (const wchar_t* target : {L"L.zvl", L"T.zvt", L"E.CSV"}) WriteBytes(dir + L"\\" + target, old);
    Bytes csv;
    csv.u8(0xFF).u8(0xFE).wchars(L"(Text)A\t(Check)B\r\none\tDone\t\r\ntwo\tNot done\t");
    WriteBytes(dir + L"\\src\\L.CSV", csv.v);
    setWriteFaultAfter(-1);
    writeTemplateFile((dir + L"\\src\\T.zvt").c_str(), TwoFieldList(0).fields.data(), 2, PlanarImage());
    return dir;
}

// A text of `rows` rows whose cells all carry `mark`.
ByteVec LargeText(int rows, const std::wstring& mark) {
    Bytes b;
    b.u8(0xFF).u8(0xFE).wchars(L"(Text)What\t(Number)How many");
    for (int i = 0; i < rows; ++i)
        b.wchars(L"\r\n" + mark + L" item " + std::to_wstring(i) + L" with a longer description\t" +
                 std::to_wstring(i) + L"\t");
    return b.v;
}

// zvl beside this program, importing `text` into `folder`.
HANDLE StartImport(const std::wstring& text, const std::wstring& folder) {
    wchar_t self[MAX_PATH];
    std::wstring bin(self, GetModuleFileNameW(nullptr, self, MAX_PATH));
    bin.erase(bin.find_last_of(L'\\') + 1);
    std::wstring command = L"\"" + bin + L"zvl.exe\" --lang \"" + bin + L"LangEng.dll\" import \"" + text + L"\" \"" +
                           folder + L"\" --force";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, &command[0], nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr, &start,
                        &process))
        return nullptr;
    CloseHandle(process.hThread);
    return process.hProcess;
}

// A whole run; false when zvl could not be started.
bool RunImport(const std::wstring& text, const std::wstring& folder) {
    HANDLE run = StartImport(text, folder);
    if (!run) return false;
    WaitForSingleObject(run, 60000);
    CloseHandle(run);
    return true;
}

// The temporary files ("~...tmp") a killed writer left, removed when asked.
int TemporaryFiles(const std::wstring& folder, bool remove = false) {
    int count = 0;
    for (const std::wstring& name : FolderNames(folder)) {
        if (name[0] != L'~') continue;
        ++count;
        if (remove) DeleteFileW((folder + L"\\" + name).c_str());
    }
    return count;
}

}  // namespace

TEST_CASE(Safe_EveryWriterFailedPartWayLeavesTheFile) {
    std::wstring dir = PrepareFolder(L"safefault");
    const std::set<std::wstring> before = FolderNames(dir);
    for (const Writer& w : kWriters) {
        ByteVec old = ReadBytes(dir + L"\\" + w.target);
        // The size of a good write, measured first.
        std::wstring probe = PrepareFolder(L"safeprobe");
        w.run(probe);
        long long size = (long long)ReadBytes(probe + L"\\" + w.target).size();
        // Fault points: before the first byte, inside the header, inside the
        // body, one byte short of the end.
        for (long long point : {0LL, 1LL, 13LL, 200LL, size - 1}) {
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
    const ByteVec old = Bytes().wchars(L"kept").v;
    WriteBytes(dir + L"\\ro.zvl", old);
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
        CheckMessage(r.message, IDS_SAVE_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, ZV_HERE);
        CHECK_EQ(r.message.causeId, c.cause);
        // The cause follows the step's own message as a sentence of its own.
        CHECK_EQ(r.message.Text(), ResText(IDS_SAVE_FAILED) + L"\n\n" + ResText(c.cause));
    }
    CHECK_BYTES(ReadBytes(dir + L"\\ro.zvl"), old);
    CHECK(FolderNames(dir) == std::set<std::wstring>{L"ro.zvl"});
}

TEST_CASE(Kill_AWriterKilledAnyTimeLeavesOldOrNewList) {
    const std::wstring dir = ScratchDir(L"killwrite"), lists = dir + L"\\lists", list = lists + L"\\Big.zvl";
    for (const wchar_t* sub : {L"\\lists", L"\\old", L"\\new"}) CreateDirectoryW((dir + sub).c_str(), nullptr);
    const std::wstring oldText = dir + L"\\old\\Big.CSV", newText = dir + L"\\new\\Big.CSV";
    WriteBytes(oldText, LargeText(60000, L"old"));
    WriteBytes(newText, LargeText(60000, L"new"));

    // The new list as a whole run writes it, then the old one in its place.
    DWORD began = GetTickCount();
    CHECK(RunImport(newText, lists));
    DWORD wholeRun = GetTickCount() - began;
    const ByteVec newBytes = ReadBytes(list);
    CHECK(RunImport(oldText, lists));
    const ByteVec oldBytes = ReadBytes(list);
    CHECK(oldBytes.size() > 1000000 && newBytes.size() > 1000000 && oldBytes != newBytes);

    int kills = 0, sawOld = 0, sawNew = 0, duringWrite = 0;
    const int rounds = 60;
    // Process starts are slow under a cold Wine server: the rounds stop
    // after half a minute, however many that allowed.
    const DWORD stopAt = GetTickCount() + 30000;
    int round = 0;
    for (; round < rounds && (round < 6 || GetTickCount() < stopAt); ++round) {
        HANDLE writer = StartImport(round % 2 ? newText : oldText, lists);
        if (!writer) break;
        if (round % 3 == 0) {
            // Spread over the whole run.
            Sleep(DWORD(wholeRun * (round + 1) / (rounds + 2)));
        } else {
            // Right at the write: once the temporary file appears, after a
            // few milliseconds more or none.
            DWORD until = GetTickCount() + 5000;
            while (!TemporaryFiles(lists) && WaitForSingleObject(writer, 0) == WAIT_TIMEOUT && GetTickCount() < until)
                Sleep(0);
            if (TemporaryFiles(lists)) ++duringWrite;
            Sleep(DWORD(round % 3 == 1 ? 0 : round % 7));
        }
        if (TerminateProcess(writer, 9)) ++kills;
        WaitForSingleObject(writer, 10000);
        CloseHandle(writer);
        ByteVec now = ReadBytes(list);
        ListDocument doc;
        CHECK(parseListBytes(now.data(), now.size(), doc) == FileStatus::Ok);
        CHECK(now == oldBytes || now == newBytes);
        sawOld += now == oldBytes;
        sawNew += now == newBytes;
        TemporaryFiles(lists, true);
    }
    std::printf("kill test: %d kills (%d while the temporary file was being written): old list %d, new list %d\n",
                kills, duringWrite, sawOld, sawNew);
    CHECK(kills >= round - 2);
    CHECK(duringWrite > 0);
}
