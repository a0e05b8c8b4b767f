// Helpers of the document tests: a byte builder that spells out the file
// layouts independently of the writer under test, dates, scratch files, and a
// check of the messages the document code returns.
#pragma once
#include "document/DocMessages.h"
#include "document/ListDocument.h"
#include "tests/framework/ZvTest.h"

namespace doctest {

using ByteVec = std::vector<unsigned char>;

// Little-endian building blocks of the file formats.
struct Bytes {
    ByteVec v;
    Bytes& u8(unsigned x) { v.push_back((unsigned char)x); return *this; }
    Bytes& u16(unsigned x) { u8(x & 0xFF); return u8((x >> 8) & 0xFF); }
    Bytes& u32(uint32_t x) { u16(x & 0xFFFF); return u16(x >> 16); }
    Bytes& i32(int32_t x) { return u32((uint32_t)x); }
    // UTF-16LE text without terminator.
    Bytes& wchars(const std::wstring& s) { for (wchar_t c : s) u16(c); return *this; }
    // UTF-16LE text with its NUL.
    Bytes& wstr(const std::wstring& s) { wchars(s); return u16(0); }
    Bytes& raw(const ByteVec& b) { v.insert(v.end(), b.begin(), b.end()); return *this; }
    Bytes& append(const Bytes& b) { return raw(b.v); }
    Bytes& chunk(uint32_t tag, const Bytes& payload) { u32((uint32_t)payload.v.size()); u32(tag); return append(payload); }
    Bytes& chunk0(uint32_t tag) { u32(0); return u32(tag); }
    Bytes& chunkU32(uint32_t tag, uint32_t value) { return chunk(tag, Bytes().u32(value)); }
    Bytes& chunkText(uint32_t tag, const std::wstring& s) { return chunk(tag, Bytes().wstr(s)); }
    Bytes& systemTime(int y, int mo, int dow, int d, int h, int mi, int s, int ms) {
        return u16(y).u16(mo).u16(dow).u16(d).u16(h).u16(mi).u16(s).u16(ms);
    }
    Bytes& listHeader(int fields, int items) { wstr(L"1.7"); i32(fields); return i32(items); }
    Bytes& templateHeader(int fields) { wstr(L"1.7"); return i32(fields); }
    Bytes& viewState(int column, int descending) { return chunk(1010, Bytes().i32(column).i32(descending)); }
    // An 18-byte TGA header: colour map fields and origin all zero.
    Bytes& tgaHeader(int type, int width, int height, int bits, int descriptor, int idLength = 0, int colourMap = 0) {
        u8(idLength).u8(colourMap).u8(type).raw(ByteVec(9, 0));
        return u16(width).u16(height).u8(bits).u8(descriptor);
    }
};

// The chunks of one field definition as the layout spells them: the choice
// types carry a default choice, all but Priority, Check and Selection a
// default text.
inline Bytes FieldChunks(const std::wstring& name, int type, int width, const wchar_t* defaultText, int defaultChoice,
                         int dateMode, int timeMode) {
    Bytes b;
    b.chunk0(4321).chunkU32(1001, width).chunkText(1004, name).chunkU32(1002, type);
    if (type == 2 || type == 4 || type == 6 || type == 8) b.chunkU32(1009, defaultChoice);
    if (type != 2 && type != 6 && type != 8) b.chunkText(1003, defaultText);
    return b.chunkU32(1005, dateMode).chunkU32(1006, timeMode).chunk0(1234);
}

inline SYSTEMTIME MakeTime(int y, int mo, int d, int h = 0, int mi = 0) {
    return SYSTEMTIME{WORD(y), WORD(mo), 0, WORD(d), WORD(h), WORD(mi), 0, 0};
}

// UTF-16LE bytes read back as text, from byte `from` on.
inline std::wstring Utf16Text(const ByteVec& bytes, size_t from = 0) {
    std::wstring text;
    for (size_t i = from; i + 1 < bytes.size(); i += 2) text += wchar_t(bytes[i] | (bytes[i + 1] << 8));
    return text;
}

// Scratch files: written whole (a read-only one too), read back whole,
// looked for, and folders removed with everything in them.
inline void WriteBytes(const std::wstring& path, const ByteVec& bytes) {
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    HANDLE f = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    if (!bytes.empty()) WriteFile(f, bytes.data(), (DWORD)bytes.size(), &written, nullptr);
    CloseHandle(f);
}

inline ByteVec ReadBytes(const std::wstring& path) {
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

inline bool FileExists(const std::wstring& path) { return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES; }

// `dir` may end in "\".
inline void RemoveTree(std::wstring dir) {
    if (!dir.empty() && dir.back() == L'\\') dir.pop_back();
    WIN32_FIND_DATAW data;
    HANDLE find = FindFirstFileW((dir + L"\\*").c_str(), &data);
    if (find != INVALID_HANDLE_VALUE) {
        do {
            std::wstring name = data.cFileName, full = dir + L"\\" + name;
            if (name == L"." || name == L"..") continue;
            SetFileAttributesW(full.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) RemoveTree(full);
            else DeleteFileW(full.c_str());
        } while (FindNextFileW(find, &data));
        FindClose(find);
    }
    RemoveDirectoryW(dir.c_str());
}

// A folder of its own under the temporary folder, emptied on creation.
inline std::wstring ScratchDir(const wchar_t* name) {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    std::wstring dir = std::wstring(temp) + L"zvdoc_" + name;
    RemoveTree(dir);
    CreateDirectoryW(dir.c_str(), nullptr);
    return dir;
}

// Checks a returned message against its string IDs and its box style.
inline void CheckMessage(const DocMessage& got, UINT textId, UINT captionId, UINT style, const char* file, int line) {
    CHECK_EQ_AT(got.textId, textId, file, line);
    CHECK_EQ_AT(got.captionId, captionId, file, line);
    CHECK_EQ_AT(got.style, style, file, line);
}

// Field records for tests.
inline FieldDef MakeField(const wchar_t* name, int type, const wchar_t* defaultText = L"", int defaultChoice = 0,
                          int width = 0, int dateMode = 0, int timeMode = 0) {
    FieldDef f{{}, FieldType(type), {}, defaultChoice, width, dateMode, timeMode};
    f.SetName(name);
    f.SetDefaultText(defaultText);
    return f;
}

}  // namespace doctest
