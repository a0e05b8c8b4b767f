#include "document/ListFileIo.h"

FileStatus ReadWholeFile(const wchar_t* path, std::vector<unsigned char>& bytes) {
    bytes.clear();
    FileHandle file(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                nullptr));
    if (!file.IsValid()) {
        DWORD error = GetLastError();
        bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME;
        return missing ? FileStatus::Missing : FileStatus::CannotOpen;
    }
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.Get(), &size) || size.QuadPart < 0) return FileStatus::CannotOpen;
    if (size.QuadPart > kMaxDocumentFileSize) return FileStatus::TooLarge;
    bytes.resize(size_t(size.QuadPart));
    // A read that stops short is an error, not a smaller file: the parser
    // would otherwise take a cut list for a whole one.
    size_t done = 0;
    while (done < bytes.size()) {
        DWORD got = 0;
        DWORD want = DWORD(bytes.size() - done);
        if (!ReadFile(file.Get(), bytes.data() + done, want, &got, nullptr) || got == 0) {
            bytes.clear();
            return FileStatus::CannotOpen;
        }
        done += got;
    }
    return FileStatus::Ok;
}

bool ReadRestOfFile(HANDLE file, std::vector<unsigned char>& bytes) {
    bytes.clear();
    LARGE_INTEGER size, zero, here;
    zero.QuadPart = 0;
    if (!GetFileSizeEx(file, &size) || !SetFilePointerEx(file, zero, &here, FILE_CURRENT)) return false;
    long long rest = size.QuadPart - here.QuadPart;
    if (rest <= 0) return true;
    if (rest > kMaxDocumentFileSize) return false;
    bytes.resize(size_t(rest));
    DWORD got = 0;
    if (!ReadFile(file, bytes.data(), (DWORD)bytes.size(), &got, nullptr)) return false;
    bytes.resize(got);
    return true;
}

bool WriteAll(HANDLE file, const void* data, size_t count) {
    if (count == 0) return true;
    DWORD written = 0;
    return WriteFile(file, data, (DWORD)count, &written, nullptr) && written == count;
}

