#include "document/SafeWrite.h"

#include <cwchar>
#include <cwctype>
#include <string>

#include "LangIds.h"
#include "base/Handles.h"

namespace {

// The write hooks are set by tests before any writer runs; the program
// never touches them.
long long g_faultAfter = -1;
size_t g_pieceSize = 0;
constexpr size_t kDefaultPiece = 4u << 20;

// The temporary file: beside the target (a rename never crosses volumes),
// named after it so a leftover from a killed process says whose it was.
std::wstring TemporaryPathFor(const std::wstring& path, unsigned attempt) {
    size_t slash = path.find_last_of(L"\\/");
    std::wstring folder = slash == std::wstring::npos ? std::wstring() : path.substr(0, slash + 1);
    std::wstring name = slash == std::wstring::npos ? path : path.substr(slash + 1);
    wchar_t tail[40];
    swprintf(tail, 40, L".%lu-%u.tmp", GetCurrentProcessId(), attempt);
    return folder + L"~" + name + tail;
}

// Writes everything in pieces, honouring the fault hook.
bool WritePieces(HANDLE file, const unsigned char* data, size_t size) {
    size_t piece = g_pieceSize ? g_pieceSize : kDefaultPiece;
    size_t done = 0;
    while (done < size) {
        size_t take = size - done < piece ? size - done : piece;
        bool fault = false;
        if (g_faultAfter >= 0 && (long long)(done + take) > g_faultAfter) {
            take = g_faultAfter > (long long)done ? size_t(g_faultAfter - (long long)done) : 0;
            fault = true;
        }
        DWORD written = 0;
        if (take && (!WriteFile(file, data + done, (DWORD)take, &written, nullptr) || written != take)) {
            if (GetLastError() == ERROR_SUCCESS) SetLastError(ERROR_DISK_FULL);
            return false;
        }
        done += take;
        if (fault) {
            SetLastError(ERROR_DISK_FULL);
            return false;
        }
    }
    return true;
}

SafeWriteResult Failed(DWORD error) { return {false, writeCauseOf(error), error}; }

}  // namespace

void setWriteFaultAfter(long long bytes) { g_faultAfter = bytes; }
void setWritePieceSize(size_t bytes) { g_pieceSize = bytes; }

bool isReservedDeviceName(const wchar_t* path) {
    if (!path) return false;
    const wchar_t* name = path;
    for (const wchar_t* p = path; *p; ++p)
        if (*p == L'\\' || *p == L'/' || *p == L':') name = p + 1;
    // The device is named by what comes before the first dot, blanks ignored.
    std::wstring stem;
    for (const wchar_t* p = name; *p && *p != L'.'; ++p) stem += (wchar_t)towlower(*p);
    while (!stem.empty() && stem.back() == L' ') stem.pop_back();
    static const wchar_t* const kDevices[] = {L"nul", L"con", L"aux", L"prn", L"conin$", L"conout$"};
    for (const wchar_t* device : kDevices)
        if (stem == device) return true;
    return stem.size() == 4 && (stem.compare(0, 3, L"com") == 0 || stem.compare(0, 3, L"lpt") == 0) &&
           stem[3] >= L'1' && stem[3] <= L'9';
}

WriteCause writeCauseOf(DWORD error) {
    switch (error) {
    case ERROR_SUCCESS: return WriteCause::None;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL: return WriteCause::DiskFull;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: return WriteCause::ReadOnly;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_FILE_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH: return WriteCause::FolderMissing;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_DIRECTORY: return WriteCause::InvalidName;
    default: return WriteCause::Other;
    }
}

UINT writeCauseTextId(WriteCause cause) {
    switch (cause) {
    case WriteCause::None: return 0;
    case WriteCause::DiskFull: return IDS_CAUSE_DISK_FULL;
    case WriteCause::ReadOnly: return IDS_CAUSE_READ_ONLY;
    case WriteCause::FolderMissing: return IDS_CAUSE_FOLDER_MISSING;
    case WriteCause::InvalidName: return IDS_CAUSE_INVALID_NAME;
    case WriteCause::Other: return IDS_CAUSE_OTHER;
    }
    return IDS_CAUSE_OTHER;
}

SafeWriteResult writeFileSafely(const wchar_t* path, const void* data, size_t size) {
    if (!path || !*path || isReservedDeviceName(path)) return Failed(ERROR_INVALID_NAME);
    if (size > 0xFFFFFFFFu) return Failed(ERROR_DISK_FULL);
    // A read-only target is refused before anything is written: the rename
    // would otherwise replace it, read-only or not, on some systems.
    DWORD attributes = GetFileAttributesW(path);
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        if (attributes & FILE_ATTRIBUTE_DIRECTORY) return Failed(ERROR_DIRECTORY);
        if (attributes & FILE_ATTRIBUTE_READONLY) return Failed(ERROR_ACCESS_DENIED);
    }
    const std::wstring target = path;
    std::wstring temporary;
    FileHandle file;
    for (unsigned attempt = 0; attempt < 100 && !file.IsValid(); ++attempt) {
        temporary = TemporaryPathFor(target, attempt);
        file.Reset(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                               FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_TEMPORARY, nullptr));
        if (!file.IsValid() && GetLastError() != ERROR_FILE_EXISTS && GetLastError() != ERROR_ALREADY_EXISTS)
            return Failed(GetLastError());
    }
    if (!file.IsValid()) return Failed(ERROR_ALREADY_EXISTS);
    bool written = WritePieces(file.Get(), static_cast<const unsigned char*>(data), size) &&
                   FlushFileBuffers(file.Get());
    DWORD error = written ? ERROR_SUCCESS : GetLastError();
    file.Reset();
    if (written && !MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        written = false;
        error = GetLastError();
    }
    if (written) return {true, WriteCause::None, 0};
    DeleteFileW(temporary.c_str());
    return Failed(error ? error : ERROR_WRITE_FAULT);
}
