// What the screen benchmarks share: wall time, and the resource modules
// loaded from the benchmark's own folder, as the program loads them from
// its installation folder.
#pragma once
#include <windows.h>
#include <commctrl.h>

#include <cwchar>

#include "base/AppGlobals.h"
#include "platform/ScreenScale.h"

namespace bench {

// Milliseconds since `start` (a QueryPerformanceCounter reading).
inline double MsSince(const LARGE_INTEGER& start) {
    static LARGE_INTEGER frequency = {};
    if (!frequency.QuadPart) QueryPerformanceFrequency(&frequency);
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return double(now.QuadPart - start.QuadPart) * 1000.0 / double(frequency.QuadPart);
}

inline HINSTANCE LoadBesideMe(const wchar_t* name) {
    wchar_t path[MAX_PATH];
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    while (n > 0 && path[n - 1] != L'\\' && path[n - 1] != L'/') --n;
    path[n] = 0;
    wcsncat(path, name, MAX_PATH - 1 - n);
    return LoadLibraryW(path);
}

// The language module and the image module that fits the screen.
inline void LoadResourceModules() {
    hLangModule = LoadBesideMe(L"LangEng.dll");
    hImageModule = LoadBesideMe(IsLowDensityScreen() ? L"ZVLowDpiRes.dll" : L"ZVHighDpiRes.dll");
}

// What every screen benchmark does first: the program's module, the screen
// scale, the resource modules and the common controls of `controlClasses`.
inline void Start(DWORD controlClasses) {
    hInstance = GetModuleHandleW(nullptr);
    InitScreenScale(0);
    LoadResourceModules();
    INITCOMMONCONTROLSEX icc = {sizeof icc, controlClasses};
    InitCommonControlsEx(&icc);
}

}  // namespace bench
