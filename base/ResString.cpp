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

std::wstring ResFormat(UINT id, std::initializer_list<std::wstring> values) {
    std::wstring text = ResText(id);
    size_t from = 0;
    for (const std::wstring& value : values) {
        size_t at = text.find(L"%s", from);
        if (at == std::wstring::npos) break;
        text.replace(at, 2, value);
        from = at + value.size();
    }
    return text;
}
