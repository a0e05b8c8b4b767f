#include "tests/core/test_doc_util.h"

#include "document/ListDocument.h"

namespace doctest {

static void RemoveTree(const std::wstring& dir) {
    WIN32_FIND_DATAW data;
    HANDLE find = FindFirstFileW((dir + L"\\*").c_str(), &data);
    if (find == INVALID_HANDLE_VALUE) return;
    do {
        std::wstring name = data.cFileName;
        if (name == L"." || name == L"..") continue;
        std::wstring full = dir + L"\\" + name;
        if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            RemoveTree(full);
            RemoveDirectoryW(full.c_str());
        } else {
            DeleteFileW(full.c_str());
        }
    } while (FindNextFileW(find, &data));
    FindClose(find);
}

std::wstring ScratchDir(const wchar_t* name) {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    std::wstring dir = std::wstring(temp) + L"zvdoc_" + name;
    CreateDirectoryW(dir.c_str(), nullptr);
    RemoveTree(dir);
    return dir;
}

void WriteBytes(const std::wstring& path, const ByteVec& bytes) {
    HANDLE f = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    if (!bytes.empty()) WriteFile(f, bytes.data(), (DWORD)bytes.size(), &written, nullptr);
    CloseHandle(f);
}

ByteVec ReadBytes(const std::wstring& path) {
    ByteVec bytes;
    HANDLE f = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (f == INVALID_HANDLE_VALUE) return bytes;
    bytes.resize(GetFileSize(f, nullptr));
    DWORD got = 0;
    if (!bytes.empty()) ReadFile(f, bytes.data(), (DWORD)bytes.size(), &got, nullptr);
    bytes.resize(got);
    CloseHandle(f);
    return bytes;
}

bool FileExists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

FieldDef MakeField(const wchar_t* name, int type, const wchar_t* defaultText, int defaultChoice, int width,
                   int dateMode, int timeMode) {
    FieldDef f;
    f.SetName(name);
    f.type = FieldType(type);
    f.SetDefaultText(defaultText);
    f.defaultChoice = defaultChoice;
    f.columnWidth = width;
    f.dateDefaultMode = dateMode;
    f.timeDefaultMode = timeMode;
    return f;
}

}  // namespace doctest
