// A writer killed at any moment: zvl replacing a large list by a text import
// is terminated again and again, from before it starts writing to just
// after the list changed, and every time the list on the disk is either the
// old one or the new one, whole.
#include <windows.h>

#include <cstdio>
#include <string>

#include "document/ListFile.h"
#include "tests/core/test_doc_util.h"

using namespace doctest;

namespace {

std::wstring BinFolder() {
    wchar_t self[MAX_PATH];
    DWORD n = GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring path(self, n);
    return path.substr(0, path.find_last_of(L'\\') + 1);
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

HANDLE StartImport(const std::wstring& text, const std::wstring& folder) {
    std::wstring bin = BinFolder();
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

bool TemporaryFileExists(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((folder + L"\\~*.tmp").c_str(), &found);
    if (find == INVALID_HANDLE_VALUE) return false;
    FindClose(find);
    return true;
}

void RemoveTemporaryFiles(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((folder + L"\\~*.tmp").c_str(), &found);
    if (find == INVALID_HANDLE_VALUE) return;
    do DeleteFileW((folder + L"\\" + found.cFileName).c_str());
    while (FindNextFileW(find, &found));
    FindClose(find);
}

}  // namespace

TEST_CASE(Kill_AWriterKilledAnyTimeLeavesOldOrNewList) {
    std::wstring dir = ScratchDir(L"killwrite");
    std::wstring lists = dir + L"\\lists";
    CreateDirectoryW(lists.c_str(), nullptr);
    std::wstring oldText = dir + L"\\old\\Big.CSV", newText = dir + L"\\new\\Big.CSV";
    CreateDirectoryW((dir + L"\\old").c_str(), nullptr);
    CreateDirectoryW((dir + L"\\new").c_str(), nullptr);
    const int rows = 60000;
    WriteBytes(oldText, LargeText(rows, L"old"));
    WriteBytes(newText, LargeText(rows, L"new"));
    const std::wstring list = lists + L"\\Big.zvl";

    // The new list as a whole run writes it, then the old one in its place.
    DWORD began = GetTickCount();
    HANDLE run = StartImport(newText, lists);
    CHECK(run != nullptr);
    if (!run) return;
    WaitForSingleObject(run, 60000);
    CloseHandle(run);
    DWORD wholeRun = GetTickCount() - began;
    const ByteVec newBytes = ReadBytes(list);
    run = StartImport(oldText, lists);
    WaitForSingleObject(run, 60000);
    CloseHandle(run);
    const ByteVec oldBytes = ReadBytes(list);
    CHECK(oldBytes.size() > 1000000 && newBytes.size() > 1000000 && oldBytes != newBytes);

    int kills = 0, sawOld = 0, sawNew = 0, duringWrite = 0;
    const int rounds = 60;
    // Process starts are slow under a cold Wine server: the rounds stop
    // after half a minute, however many that allowed.
    const DWORD stopAt = GetTickCount() + 30000;
    int done = 0;
    for (int round = 0; round < rounds && (round < 6 || GetTickCount() < stopAt); ++round, ++done) {
        HANDLE writer = StartImport(round % 2 ? newText : oldText, lists);
        if (!writer) break;
        if (round % 3 == 0) {
            // Spread over the whole run.
            Sleep(DWORD(wholeRun * (round + 1) / (rounds + 2)));
        } else {
            // Right at the write: once the temporary file appears, after a
            // few milliseconds more or none.
            DWORD until = GetTickCount() + 5000;
            while (!TemporaryFileExists(lists) && WaitForSingleObject(writer, 0) == WAIT_TIMEOUT &&
                   GetTickCount() < until)
                Sleep(0);
            if (TemporaryFileExists(lists)) ++duringWrite;
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
        RemoveTemporaryFiles(lists);
    }
    std::printf("kill test: %d kills (%d while the temporary file was being written): old list %d, new list %d\n",
                kills, duringWrite, sawOld, sawNew);
    CHECK(kills >= done - 2);
    CHECK(duringWrite > 0);
}
