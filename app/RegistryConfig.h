// The program's machine-level configuration under
// HKEY_CURRENT_USER\Software\Quenta\Zorvel: where it is installed, where the
// lists and templates live and which language module to load.
#pragma once
#include <windows.h>

#include "base/AppGlobals.h"  // kProgramKey
#include "base/TextBuffer.h"

// Reads a string value of the program's key; on any failure `out` receives
// the default and 0 is returned.
int ReadStringValue(HKEY root, const wchar_t* name, TextBuffer& out, const wchar_t* defaultText);
void WriteStringValue(HKEY root, const wchar_t* name, const wchar_t* text);

struct RegistryConfig {
    TextBuffer installPath;
    TextBuffer value;  // the last value read through this record

    RegistryConfig();
    ~RegistryConfig();
    RegistryConfig(const RegistryConfig&) = delete;
    RegistryConfig& operator=(const RegistryConfig&) = delete;

    void LoadStartupPaths();
    // Lists folder number n: 1 is "ListsPath", n > 1 is "ListsPath<n>". `out` holds 260 characters.
    void GetListsPath(int n, wchar_t* out);
    void SetListsPath(int n, const wchar_t* text);
    void GetTemplatePath(wchar_t* out);
    void SetTemplatePath(const wchar_t* text);
    void GetLanguageModulePath(wchar_t* out);
};

extern RegistryConfig g_registryConfig;

// Appends "\" to a non-empty path that lacks it. `path` holds 260
// characters; a path that fills them is left as it is.
void EnsureTrailingBackslash(wchar_t* path);

// After the user picked a new lists folder: it becomes number 1, the old
// ones move down to 2 and 3, the old number 3 is dropped.
void RotateListsPaths(const wchar_t* newFolder);

// Writes the .zvl and .zvt associations (per user) pointing at the program,
// `programPath` being its full path with the drive: the desktop shell opens
// a list from whatever drive is current, where a drive-less path would miss.
void RegisterFileAssociations(const wchar_t* programPath);
