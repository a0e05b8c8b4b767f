#include "base/ResString.h"

#include "base/AppGlobals.h"

int LoadResString(HINSTANCE module, UINT id, TextBuffer& out) {
    wchar_t buffer[1024];
    buffer[0] = 0;
    int n = LoadStringW(module, id, buffer, 1024);
    if (n <= 0) buffer[0] = 0;
    out.Assign(buffer);
    return n > 0 ? n : 0;
}

std::wstring ResText(UINT id) {
    wchar_t buffer[1024];
    int n = LoadStringW(hLangModule, id, buffer, 1024);
    return std::wstring(buffer, n > 0 ? n : 0);
}

