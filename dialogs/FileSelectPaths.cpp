#include "dialogs/FileSelectPaths.h"

#include <windows.h>

#include <cwchar>

const wchar_t kIllegalFileNameChars[] = L"/:*?\"<>|";

bool IsValidFileName(const wchar_t* name) {
    return name[wcscspn(name, kIllegalFileNameChars)] == 0;
}

CeString ParentFolder(const wchar_t* folder) {
    int n = (int)wcslen(folder);
    if (n > 0 && folder[n - 1] == L'\\') --n;  // step over the trailing "\"
    while (n > 0 && folder[n - 1] != L'\\') --n;
    if (n <= 0) return CeString(L"\\");
    return CeString(folder, n);
}

CeString LastFolderName(const wchar_t* folder) {
    int end = (int)wcslen(folder);
    if (end > 0 && folder[end - 1] == L'\\') --end;
    int start = end;
    while (start > 0 && folder[start - 1] != L'\\') --start;
    return CeString(folder + start, end - start);
}

CeString WithTrailingSlash(const wchar_t* folder) {
    CeString out(folder);
    int n = out.Length();
    if (n == 0 || folder[n - 1] != L'\\') out.Append(L"\\");
    return out;
}

bool ExtensionHasWildcard(const wchar_t* extension) {
    return wcspbrk(extension, L"*?") != nullptr;
}

bool NameHasExtension(const wchar_t* name, const wchar_t* extension) {
    if (ExtensionHasWildcard(extension)) return true;
    size_t n = wcslen(name), e = wcslen(extension);
    if (e > n) return false;
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, name + n - e, (int)e, extension, (int)e) == CSTR_EQUAL;
}
