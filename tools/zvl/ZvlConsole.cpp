#include "tools/zvl/ZvlConsole.h"

#include <windows.h>

namespace {

void WriteTo(DWORD which, const std::wstring& text) {
    HANDLE handle = GetStdHandle(which);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE || text.empty()) return;
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(handle, &mode)) {
        WriteConsoleW(handle, text.data(), (DWORD)text.size(), &written, nullptr);
        return;
    }
    std::string bytes = ToUtf8(text);
    WriteFile(handle, bytes.data(), (DWORD)bytes.size(), &written, nullptr);
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
    if (!text.empty()) WriteFile(handle, text.data(), (DWORD)text.size(), &written, nullptr);
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
