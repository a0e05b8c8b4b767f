// ZorvelSetup: installs Zorvel from the folder this program sits in.
//
//   ZorvelSetup.exe [--target FOLDER] [--lists FOLDER]
//
// Copies the program and its modules into the installation folder (default
// \Program Files\Quenta\Zorvel on the current drive), the icons into its
// Icons folder and the templates folder, creates the lists folder with the
// categories Business and Personal, puts every sample file there twice (with
// "_vga" and "_qvga" after the extension: the program keeps the copy that
// fits the screen at its next start) and writes the program's registry values.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "app/RegistryConfig.h"

namespace {
const wchar_t kDefaultTarget[] = L"\\Program Files\\Quenta\\Zorvel";
const wchar_t kDefaultLists[] = L"\\My Documents\\Zorvel Lists";
const wchar_t* const kProgramFiles[] = {L"Zorvel.exe", L"LangEng.dll", L"ZVLowDpiRes.dll", L"ZVHighDpiRes.dll",
                                        L"zvl.exe"};
const wchar_t* const kCategories[] = {L"Business", L"Personal"};
const wchar_t* const kVariants[] = {L"vga", L"qvga"};

int g_errors;

std::wstring SourceFolder() {
    wchar_t path[MAX_PATH];
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    while (n > 0 && path[n - 1] != L'\\') --n;
    return std::wstring(path, n);
}

void Report(const wchar_t* what, const std::wstring& path) {
    ++g_errors;
    fwprintf(stderr, L"ZorvelSetup: %ls %ls (error %lu)\n", what, path.c_str(), GetLastError());
}

// Creates a folder and every missing folder above it.
void MakeFolders(const std::wstring& path) {
    for (size_t i = 1; i <= path.size(); ++i) {
        if (i == path.size() || path[i] == L'\\') {
            std::wstring part = path.substr(0, i);
            if (part.size() > 2 || (part.size() == 2 && part[1] != L':')) CreateDirectoryW(part.c_str(), nullptr);
        }
    }
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) Report(L"cannot create the folder", path);
}

void Copy(const std::wstring& from, const std::wstring& to, bool required) {
    if (GetFileAttributesW(from.c_str()) == INVALID_FILE_ATTRIBUTES) {
        if (required) Report(L"missing file", from);
        return;
    }
    SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (!CopyFileW(from.c_str(), to.c_str(), FALSE)) Report(L"cannot copy to", to);
}

std::vector<std::wstring> FilesIn(const std::wstring& folder, const wchar_t* pattern) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW data;
    HANDLE find = FindFirstFileW((folder + pattern).c_str(), &data);
    if (find == INVALID_HANDLE_VALUE) return names;
    do {
        if (!(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)) names.push_back(data.cFileName);
    } while (FindNextFileW(find, &data));
    FindClose(find);
    return names;
}

// Each sample comes in a variant per screen density; one that exists only
// once is used for both.
void PlaceSamples(const std::wstring& source, const std::wstring& lists, const std::wstring& templates) {
    for (const wchar_t* variant : kVariants) {
        std::wstring root = source + L"samples\\" + variant + L"\\";
        if (GetFileAttributesW(root.c_str()) == INVALID_FILE_ATTRIBUTES) root = source + L"samples\\";
        for (const wchar_t* category : kCategories) {
            std::wstring from = root + L"lists\\" + category + L"\\";
            for (const std::wstring& name : FilesIn(from, L"*.zvl"))
                Copy(from + name, lists + category + L"\\" + name + L"_" + variant, true);
        }
        std::wstring from = root + L"templates\\";
        for (const std::wstring& name : FilesIn(from, L"*.zvt")) Copy(from + name, templates + name + L"_" + variant, true);
    }
}

int Usage() {
    fwprintf(stderr, L"usage: ZorvelSetup.exe [--target FOLDER] [--lists FOLDER]\n");
    return 2;
}

// Device paths have no drive letter: the installation goes to the system
// drive, which is where the installed program then finds its files.
void UseSystemDrive() {
    wchar_t windows[MAX_PATH];
    if (GetWindowsDirectoryW(windows, MAX_PATH) >= 2 && windows[1] == L':') {
        wchar_t drive[4] = {windows[0], L':', L'\\', 0};
        SetCurrentDirectoryW(drive);
    }
}
}  // namespace

int wmain(int argc, wchar_t** argv) {
    std::wstring source = SourceFolder();
    UseSystemDrive();
    std::wstring target = kDefaultTarget, lists = kDefaultLists;
    for (int i = 1; i < argc; ++i) {
        if (wcscmp(argv[i], L"--target") == 0 && i + 1 < argc)
            target = argv[++i];
        else if (wcscmp(argv[i], L"--lists") == 0 && i + 1 < argc)
            lists = argv[++i];
        else
            return Usage();
    }
    while (!target.empty() && target.back() == L'\\') target.pop_back();
    while (!lists.empty() && lists.back() == L'\\') lists.pop_back();

    std::wstring install = target + L"\\";
    std::wstring templates = install + L"Templates\\";
    std::wstring icons = install + L"Icons\\";
    MakeFolders(target);
    MakeFolders(install + L"Templates");
    MakeFolders(install + L"Icons");
    for (const wchar_t* category : kCategories) MakeFolders(lists + L"\\" + category);

    for (const wchar_t* name : kProgramFiles) Copy(source + name, install + name, wcscmp(name, L"zvl.exe") != 0);
    for (const std::wstring& name : FilesIn(source + L"Icons\\", L"*.tga")) Copy(source + L"Icons\\" + name, icons + name, true);
    PlaceSamples(source, lists + L"\\", templates);

    WriteStringValue(HKEY_CURRENT_USER, L"InstallPath", target.c_str());
    WriteStringValue(HKEY_CURRENT_USER, L"SelectedLangResFile", (install + L"LangEng.dll").c_str());
    WriteStringValue(HKEY_CURRENT_USER, L"TemplatePath", (install + L"Templates").c_str());
    WriteStringValue(HKEY_CURRENT_USER, L"ListsPath", lists.c_str());

    if (g_errors) {
        fwprintf(stderr, L"ZorvelSetup: %d problem(s); Zorvel may not start.\n", g_errors);
        return 1;
    }
    wprintf(L"Zorvel installed in %ls; lists in %ls\n", target.c_str(), lists.c_str());
    return 0;
}
