#include "document/DocMessages.h"

#include <string>

#include "base/ResString.h"

MessageBoxFunction ZvMessageBoxOverride = nullptr;

int showDocMessage(HWND owner, UINT textId, UINT captionId, UINT style, const wchar_t* argument) {
    std::wstring text = ResText(textId);
    if (argument) {
        // The text holds one "%s". It is replaced here rather than passed to
        // wsprintfW, so that a translated text with a stray "%" cannot read
        // arguments that are not there.
        size_t at = text.find(L"%s");
        if (at != std::wstring::npos) text.replace(at, 2, argument);
    }
    std::wstring caption = ResText(captionId);
    if (ZvMessageBoxOverride) return ZvMessageBoxOverride(owner, text.c_str(), caption.c_str(), style);
    return MessageBoxW(owner, text.c_str(), caption.c_str(), style);
}
