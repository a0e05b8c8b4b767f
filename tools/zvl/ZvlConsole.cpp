#include "tools/zvl/ZvlConsole.h"

#include <windows.h>

namespace {

// The first error of a write to standard output (0: none): output cut by a
// full disk must not end with status 0.
DWORD g_outputError = 0;

void NoteOutput(DWORD which, bool ok, size_t wanted, DWORD written) {
    if (which != STD_OUTPUT_HANDLE || g_outputError) return;
    if (!ok) g_outputError = GetLastError() ? GetLastError() : ERROR_WRITE_FAULT;
    else if (written != wanted) g_outputError = ERROR_DISK_FULL;
}

void WriteTo(DWORD which, const std::wstring& text) {
    HANDLE handle = GetStdHandle(which);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE || text.empty()) return;
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(handle, &mode)) {
        bool ok = WriteConsoleW(handle, text.data(), (DWORD)text.size(), &written, nullptr);
        NoteOutput(which, ok, text.size(), written);
        return;
    }
    std::string bytes = ToUtf8(text);
    bool ok = WriteFile(handle, bytes.data(), (DWORD)bytes.size(), &written, nullptr);
    NoteOutput(which, ok, bytes.size(), written);
}

std::wstring OneLine(const std::wstring& text) {
    std::wstring line;
    bool blank = false;
    for (wchar_t c : text) {
        bool isBreak = c == L'\r' || c == L'\n' || c == L'\t';
        if (isBreak) {
            if (!blank && !line.empty()) line += L' ';
            blank = true;
            continue;
        }
        line += c;
        blank = c == L' ';
    }
    while (!line.empty() && line.back() == L' ') line.pop_back();
    return line;
}

}  // namespace

std::string ToUtf8(const std::wstring& text) {
    if (text.empty()) return std::string();
    int n = WideCharToMultiByte(CP_UTF8, 0, text.data(), (int)text.size(), nullptr, 0, nullptr, nullptr);
    std::string out(n, '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), (int)text.size(), &out[0], n, nullptr, nullptr);
    return out;
}

std::wstring FromUtf8(const std::string& text) {
    if (text.empty()) return std::wstring();
    int n = MultiByteToWideChar(CP_UTF8, 0, text.data(), (int)text.size(), nullptr, 0);
    std::wstring out(n, L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), (int)text.size(), &out[0], n);
    return out;
}

void Out(const std::wstring& text) { WriteTo(STD_OUTPUT_HANDLE, text); }

void OutUtf8(const std::string& text) {
    HANDLE handle = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode)) {
        Out(FromUtf8(text));
        return;
    }
    DWORD written = 0;
    if (text.empty()) return;
    bool ok = WriteFile(handle, text.data(), (DWORD)text.size(), &written, nullptr);
    NoteOutput(STD_OUTPUT_HANDLE, ok, text.size(), written);
}

unsigned long OutputError() {
    HANDLE handle = GetStdHandle(STD_OUTPUT_HANDLE);
    // Bytes the system still holds for a file count only once they are out.
    if (!g_outputError && handle && handle != INVALID_HANDLE_VALUE && GetFileType(handle) == FILE_TYPE_DISK &&
        !FlushFileBuffers(handle) && GetLastError() != ERROR_INVALID_HANDLE && GetLastError() != ERROR_ACCESS_DENIED)
        g_outputError = GetLastError();
    return g_outputError;
}

void Err(const std::wstring& text) { WriteTo(STD_ERROR_HANDLE, text); }

void ReportError(const std::wstring& subject, const std::wstring& reason) {
    std::wstring line = L"zvl: ";
    if (!subject.empty()) line += subject + L": ";
    line += OneLine(reason);
    Err(line + L"\n");
}

void ReportDocMessage(const std::wstring& subject, const DocMessage& message) {
    if (!message.IsEmpty()) ReportError(subject, message.Text());
}

std::wstring SystemErrorText(unsigned long code) {
    wchar_t* buffer = nullptr;
    DWORD n = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                             nullptr, code, 0, (wchar_t*)&buffer, 0, nullptr);
    std::wstring text;
    if (n && buffer) text.assign(buffer, n);
    if (buffer) LocalFree(buffer);
    text = OneLine(text);
    while (!text.empty() && (text.back() == L'.' || text.back() == L' ')) text.pop_back();
    if (text.empty()) text = L"system error " + std::to_wstring(code);
    return text;
}
