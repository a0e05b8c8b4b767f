#include "document/ListFileIo.h"

FileStatus ReadWholeFile(const wchar_t* path, std::vector<unsigned char>& bytes) {
    bytes.clear();
    FileHandle file(CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                nullptr));
    if (!file.IsValid()) return FileStatus::CannotOpen;
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.Get(), &size) || size.QuadPart < 0 || size.QuadPart > kMaxDocumentFileSize)
        return FileStatus::CannotOpen;
    bytes.resize(size_t(size.QuadPart));
    DWORD got = 0;
    if (!bytes.empty() && !ReadFile(file.Get(), bytes.data(), (DWORD)bytes.size(), &got, nullptr))
        return FileStatus::CannotOpen;
    bytes.resize(got);
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

FileStatus WriteWholeFile(const wchar_t* path, const ByteWriter& out, DWORD share) {
    FileHandle file(CreateFileW(path, GENERIC_WRITE, share, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsValid()) return FileStatus::CannotCreate;
    return out.WriteTo(file.Get()) ? FileStatus::Ok : FileStatus::WriteFailed;
}
