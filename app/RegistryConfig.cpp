#include "app/RegistryConfig.h"

#include <cwchar>
#include <initializer_list>

#include "base/Handles.h"

RegistryConfig g_registryConfig;

namespace {
// The key, created when missing; empty when it cannot be opened.
RegKey CreateKey(HKEY root, const wchar_t* path) {
    RegKey key;
    if (RegCreateKeyExW(root, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(), nullptr) != ERROR_SUCCESS)
        key.Release();
    return key;
}

void ListsPathName(int n, wchar_t* name) {
    if (n <= 1)
        wcscpy(name, L"ListsPath");
    else
        wsprintfW(name, L"ListsPath%d", n);
}
}  // namespace

int ReadStringValue(HKEY root, const wchar_t* name, TextBuffer& out, const wchar_t* defaultText) {
    wchar_t buffer[260] = {};
    DWORD size = sizeof buffer;
    int ok = 0;
    RegKey key = CreateKey(root, kProgramKey);
    if (key && RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(buffer), &size) == ERROR_SUCCESS) {
        ok = 1;
        buffer[259] = 0;
    } else {
        wcsncpy(buffer, defaultText, 259);
    }
    out.Assign(buffer);
    return ok;
}

void WriteStringValue(HKEY root, const wchar_t* name, const wchar_t* text) {
    RegKey key = CreateKey(root, kProgramKey);
    if (!key) return;
    RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), DWORD((wcslen(text) + 1) * sizeof(wchar_t)));
}

RegistryConfig::RegistryConfig() {
    installPath.Init();
    value.Init();
    installPath.Assign(L"");
}

RegistryConfig::~RegistryConfig() {
    installPath.Release();
    value.Release();
}

void RegistryConfig::LoadStartupPaths() {
    ReadStringValue(HKEY_CURRENT_USER, L"InstallPath", installPath, L"");
    ReadStringValue(HKEY_CURRENT_USER, L"ListsPath", value, L"");
}

// Paths are copied as text, never used as a format: a folder name may hold a "%".
void RegistryConfig::GetListsPath(int n, wchar_t* out) {
    wchar_t name[32];
    ListsPathName(n, name);
    ReadStringValue(HKEY_CURRENT_USER, name, value, L"");
    lstrcpynW(out, value.Text(), 260);
}

void RegistryConfig::SetListsPath(int n, const wchar_t* text) {
    wchar_t name[32];
    ListsPathName(n, name);
    WriteStringValue(HKEY_CURRENT_USER, name, text);
}

void RegistryConfig::GetTemplatePath(wchar_t* out) {
    ReadStringValue(HKEY_CURRENT_USER, L"TemplatePath", value, L"");
    lstrcpynW(out, value.Text(), 260);
}

void RegistryConfig::SetTemplatePath(const wchar_t* text) { WriteStringValue(HKEY_CURRENT_USER, L"TemplatePath", text); }

void RegistryConfig::GetLanguageModulePath(wchar_t* out) {
    ReadStringValue(HKEY_CURRENT_USER, L"SelectedLangResFile", value, L"");
    lstrcpynW(out, value.Text(), 260);
}

void EnsureTrailingBackslash(wchar_t* path) {
    constexpr size_t kCapacity = 260;
    size_t n = wcslen(path);
    if (n == 0 || path[n - 1] == L'\\' || n + 1 >= kCapacity) return;
    path[n] = L'\\';
    path[n + 1] = 0;
}

void RotateListsPaths(const wchar_t* newFolder) {
    wchar_t current[260], previous[260];
    g_registryConfig.GetListsPath(1, current);
    g_registryConfig.GetListsPath(2, previous);
    EnsureTrailingBackslash(current);
    EnsureTrailingBackslash(previous);
    g_registryConfig.SetListsPath(1, newFolder);
    g_registryConfig.SetListsPath(2, current);
    g_registryConfig.SetListsPath(3, previous);
}

namespace {
// The per-user view of HKEY_CLASSES_ROOT: writable without administrator rights.
const wchar_t kClassesRoot[] = L"Software\\Classes\\";

void SetDefault(const wchar_t* keyName, const wchar_t* text, const wchar_t* otherName = nullptr, const wchar_t* otherText = nullptr) {
    wchar_t path[512];
    wsprintfW(path, L"%s%s", kClassesRoot, keyName);
    RegKey key = CreateKey(HKEY_CURRENT_USER, path);
    if (!key) return;
    DWORD bytes = DWORD((wcslen(text) + 1) * sizeof(wchar_t));
    // The device shell reads the value named "Default"; the desktop shell
    // reads the unnamed one. Both hold the same text.
    RegSetValueExW(key, L"Default", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), bytes);
    RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text), bytes);
    if (otherName)
        RegSetValueExW(key, otherName, 0, REG_SZ, reinterpret_cast<const BYTE*>(otherText), DWORD((wcslen(otherText) + 1) * sizeof(wchar_t)));
}
}  // namespace

void RegisterFileAssociations(const wchar_t* programPath) {
    wchar_t icon[400], command[400];
    wsprintfW(icon, L"%s,-130", programPath);
    wsprintfW(command, L"\"%s\" %%1", programPath);
    SetDefault(L".zvl", L"listfile", L"Content Type", L"ZorvelFile");
    SetDefault(L".zvt", L"templatefile", L"Content Type", L"ZorvelTemplateFile");
    SetDefault(L"listfile", L"List File");
    SetDefault(L"templatefile", L"Template File");
    for (const wchar_t* kind : {L"listfile", L"templatefile"}) {
        wchar_t path[100];
        wsprintfW(path, L"%s\\DefaultIcon", kind);
        SetDefault(path, icon);
        wsprintfW(path, L"%s\\Shell", kind);
        SetDefault(path, L"");
        wsprintfW(path, L"%s\\Shell\\Open", kind);
        SetDefault(path, L"");
        wsprintfW(path, L"%s\\Shell\\Open\\Command", kind);
        SetDefault(path, command);
    }
}
