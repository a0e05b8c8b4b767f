#include "base/AppGlobals.h"

#include <cwchar>

HINSTANCE hInstance;
HINSTANCE hLangModule;
HINSTANCE hImageModule;
int UseSlashDates = 1;

bool LanguageUsesDottedDates(const wchar_t* languageModulePath) {
    const wchar_t* slash = wcsrchr(languageModulePath, L'\\');
    const wchar_t* start = slash ? slash + 1 : languageModulePath;
    const wchar_t* dot = wcsrchr(start, L'.');
    size_t n = dot ? size_t(dot - start) : wcslen(start);
    return (n == 7 && (_wcsnicmp(start, L"LangGer", 7) == 0 || _wcsnicmp(start, L"LangHeb", 7) == 0));
}
