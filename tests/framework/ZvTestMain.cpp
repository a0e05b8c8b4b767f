#include "tests/framework/ZvTest.h"

#include <windows.h>

#include "base/AppGlobals.h"
#ifdef ZVTEST_SCREENS
#include "platform/ScreenScale.h"
#endif

#include <cstring>

namespace zvtest {

std::vector<Case>& Registry() {
    static std::vector<Case> cases;
    return cases;
}

static int g_failures;
static const char* g_current = "";

void Fail(const char* file, int line, const std::string& what) {
    ++g_failures;
    std::printf("FAIL %s  %s:%d\n    %s\n", g_current, file, line, what.c_str());
    std::fflush(stdout);
}

std::string Show(const std::wstring& s) {
    std::string out = "\"";
    char escaped[8];
    for (wchar_t c : s) {
        bool plain = c >= 32 && c < 127;
        if (!plain) std::snprintf(escaped, sizeof escaped, "\\u%04X", (unsigned)c);
        out += plain ? std::string(1, (char)c) : std::string(escaped);
    }
    return out + "\"";
}
std::string Show(const std::string& s) { return "\"" + s + "\""; }
std::string Show(const wchar_t* s) { return s ? Show(std::wstring(s)) : "(null)"; }
std::string Show(const char* s) { return s ? Show(std::string(s)) : "(null)"; }
std::string Show(long long v) { return std::to_string(v); }
std::string Show(unsigned long long v) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%llu (0x%llX)", v, v);
    return buf;
}
std::string Show(double v) { return std::to_string(v); }
static std::string ShowBytes(const std::vector<unsigned char>& bytes) {
    static const char hex[] = "0123456789ABCDEF";
    std::string out;
    for (size_t i = 0; i < bytes.size() && i < 64; ++i) out += {hex[bytes[i] >> 4], hex[bytes[i] & 15], ' '};
    if (bytes.size() > 64) out += "...";
    return out;
}

void CheckBytes(const std::vector<unsigned char>& got, const std::vector<unsigned char>& want, const char* file, int line) {
    size_t n = got.size() < want.size() ? got.size() : want.size();
    size_t i = 0;
    while (i < n && got[i] == want[i]) ++i;
    if (i == n && got.size() == want.size()) return;
    size_t from = i > 8 ? i - 8 : 0;
    auto around = [from](const std::vector<unsigned char>& b) {
        return ShowBytes({b.begin() + std::min(from, b.size()), b.begin() + std::min(from + 32, b.size())});
    };
    Fail(file, line, "bytes differ at offset " + std::to_string(i) + " (sizes " + std::to_string(got.size()) + " and " +
                         std::to_string(want.size()) + ")\n    got  @" + std::to_string(from) + ": " + around(got) +
                         "\n    want @" + std::to_string(from) + ": " + around(want));
}

}  // namespace zvtest

// Runs every registered case, or those whose names start with one of the
// prefixes given as arguments. Exit status 0 only when no check failed.
// The resource modules are loaded from the test program's own folder, as the
// program would load them from its installation folder.
static HINSTANCE LoadBesideMe(const wchar_t* name) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    wcscpy(wcsrchr(path, L'\\') + 1, name);
    return LoadLibraryW(path);
}

int wmain(int argc, wchar_t** argv) {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    hInstance = GetModuleHandleW(nullptr);
    hLangModule = LoadBesideMe(L"LangEng.dll");
    hImageModule = LoadBesideMe(L"ZVLowDpiRes.dll");
#ifdef ZVTEST_SCREENS
    InitScreenScale(0);
#endif
    // Device paths (rooted at a backslash) name the current drive: keep what the
    // tests write inside the Wine prefix's own drive.
    SetCurrentDirectoryW(L"C:\\");
    int run = 0, failedCases = 0;
    for (const zvtest::Case& c : zvtest::Registry()) {
        std::wstring name(c.name, c.name + std::strlen(c.name));
        bool wanted = argc < 2;
        for (int i = 1; i < argc; ++i) wanted |= name.compare(0, wcslen(argv[i]), argv[i]) == 0;
        if (!wanted) continue;
        zvtest::g_current = c.name;
        int before = zvtest::g_failures;
        DWORD start = GetTickCount();
        c.fn();
        ++run;
        bool failed = zvtest::g_failures != before;
        failedCases += failed;
        std::printf("%s %s (%lu ms)\n", failed ? "FAILED" : "ok    ", c.name, GetTickCount() - start);
        std::fflush(stdout);
    }
    std::printf("%d cases, %d failed, %d failed checks\n", run, failedCases, zvtest::g_failures);
    return (failedCases || run == 0) ? 1 : 0;
}
