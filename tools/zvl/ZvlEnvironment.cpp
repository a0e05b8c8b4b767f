#include "tools/zvl/ZvlEnvironment.h"

#include <windows.h>

#include "base/AppGlobals.h"
#include "document/ValueText.h"
#include "tools/zvl/ZvlConsole.h"

namespace {
std::wstring g_languagePath;

// Read without creating the key: zvl leaves the registry as it found it.
std::wstring RegistryLanguagePath() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kProgramKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) return L"";
    wchar_t buffer[MAX_PATH] = {};
    DWORD size = sizeof buffer - sizeof(wchar_t);
    DWORD type = 0;
    LONG result = RegQueryValueExW(key, L"SelectedLangResFile", nullptr, &type, (BYTE*)buffer, &size);
    RegCloseKey(key);
    if (result != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return L"";
    return buffer;
}

HINSTANCE TryLoad(const std::wstring& path) {
    if (path.empty()) return nullptr;
    return LoadLibraryW(path.c_str());
}
}  // namespace

std::wstring ProgramFolder() {
    wchar_t path[MAX_PATH];
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    while (n > 0 && path[n - 1] != L'\\' && path[n - 1] != L'/') --n;
    return std::wstring(path, n);
}

std::wstring ResolvePath(const std::wstring& path) {
    std::wstring p = path;
    for (wchar_t& c : p)
        if (c == L'/') c = L'\\';
    bool deviceStyle = p.size() >= 1 && p[0] == L'\\' && (p.size() == 1 || p[1] != L'\\');
    if (deviceStyle) {
        std::wstring folder = ProgramFolder();
        if (folder.size() >= 2 && folder[1] == L':') p = folder.substr(0, 2) + p;
    }
    return p;
}

bool LoadLanguageModule(const std::wstring& explicitPath) {
    std::wstring candidates[2];
    if (!explicitPath.empty()) {
        candidates[0] = ResolvePath(explicitPath);
    } else {
        candidates[0] = RegistryLanguagePath();
        if (!candidates[0].empty()) candidates[0] = ResolvePath(candidates[0]);
        candidates[1] = ProgramFolder() + L"LangEng.dll";
    }
    for (const std::wstring& path : candidates) {
        HINSTANCE module = TryLoad(path);
        if (!module) continue;
        hLangModule = module;
        g_languagePath = path;
        UseSlashDates = LanguageUsesDottedDates(path.c_str()) ? 0 : 1;
        resetValueTextCache();
        return true;
    }
    const std::wstring& tried = explicitPath.empty() ? candidates[1] : candidates[0];
    ReportError(tried, L"cannot load the language module: " + SystemErrorText(GetLastError()));
    return false;
}

const std::wstring& LanguageModulePath() { return g_languagePath; }

bool FileExists(const std::wstring& path) {
    DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool FolderExists(const std::wstring& path) {
    DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::wstring FileNameOf(const std::wstring& path) {
    size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? path : path.substr(slash + 1);
}

std::wstring FileTitleOf(const std::wstring& path) {
    std::wstring name = FileNameOf(path);
    size_t dot = name.rfind(L'.');
    return dot == std::wstring::npos || dot == 0 ? name : name.substr(0, dot);
}

bool IsTemplatePath(const std::wstring& path) {
    return path.size() >= 4 && _wcsicmp(path.c_str() + path.size() - 4, L".zvt") == 0;
}
