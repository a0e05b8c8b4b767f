// Registry helpers for tests: the program's key is wiped before a case so
// that every case starts from a machine that never ran the program.
#pragma once
#include <windows.h>

#include <string>

namespace regtest {

inline void WipeProgramKey() {
    for (const wchar_t* key : {L"Software\\Quenta\\Zorvel", L"Software\\Classes\\.zvl", L"Software\\Classes\\.zvt",
                               L"Software\\Classes\\listfile", L"Software\\Classes\\templatefile"})
        RegDeleteTreeW(HKEY_CURRENT_USER, key);
}

inline bool KeyExists(const wchar_t* path) {
    HKEY key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
}

inline bool HasValue(const wchar_t* path, const wchar_t* name) {
    return RegGetValueW(HKEY_CURRENT_USER, path, name, RRF_RT_ANY, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

inline std::wstring GetString(const wchar_t* path, const wchar_t* name) {
    wchar_t buffer[600] = {};
    DWORD size = sizeof buffer;
    if (RegGetValueW(HKEY_CURRENT_USER, path, name, RRF_RT_REG_SZ, nullptr, buffer, &size) != ERROR_SUCCESS)
        return L"<missing>";
    return buffer;
}

inline DWORD GetDword(const wchar_t* path, const wchar_t* name, DWORD missing = 0xDEADBEEF) {
    DWORD value = 0, size = sizeof value;
    if (RegGetValueW(HKEY_CURRENT_USER, path, name, RRF_RT_REG_DWORD, nullptr, &value, &size) != ERROR_SUCCESS)
        return missing;
    return value;
}

inline void SetString(const wchar_t* path, const wchar_t* name, const wchar_t* text) {
    RegSetKeyValueW(HKEY_CURRENT_USER, path, name, REG_SZ, text, DWORD((wcslen(text) + 1) * sizeof(wchar_t)));
}

inline void SetDword(const wchar_t* path, const wchar_t* name, DWORD value) {
    RegSetKeyValueW(HKEY_CURRENT_USER, path, name, REG_DWORD, &value, sizeof value);
}

}  // namespace regtest
