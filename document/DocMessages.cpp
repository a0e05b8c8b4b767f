#include "document/DocMessages.h"

#include <cwchar>
#include <string>

#include "base/ResString.h"

MessageBoxFunction ZvMessageBoxOverride = nullptr;

int showDocMessage(HWND owner, UINT textId, UINT captionId, UINT style, const wchar_t* argument) {
    std::wstring text = ResText(textId);
    if (argument) {
        // The text holds one "%s"; 1024 characters like every loaded text.
        wchar_t formatted[1024 + 260];
        std::wstring pattern = text;
        size_t at = pattern.find(L"%s");
        std::wstring joined = at == std::wstring::npos ? pattern : pattern.substr(0, at) + argument + pattern.substr(at + 2);
        wcsncpy(formatted, joined.c_str(), sizeof formatted / sizeof formatted[0] - 1);
        formatted[sizeof formatted / sizeof formatted[0] - 1] = 0;
        text = formatted;
    }
    std::wstring caption = ResText(captionId);
    if (ZvMessageBoxOverride) return ZvMessageBoxOverride(owner, text.c_str(), caption.c_str(), style);
    return MessageBoxW(owner, text.c_str(), caption.c_str(), style);
}
