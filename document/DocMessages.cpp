#include "document/DocMessages.h"

#include "base/ResString.h"

std::wstring DocMessage::Text() const {
    std::wstring text = ResText(textId);
    if (argument) {
        // The text holds one "%s". It is replaced here rather than passed to
        // wsprintfW, so that a translated text with a stray "%" cannot read
        // arguments that are not there.
        size_t at = text.find(L"%s");
        if (at != std::wstring::npos) text.replace(at, 2, *argument);
    }
    if (causeId) text += L"\n\n" + ResText(causeId);
    return text;
}

std::wstring DocMessage::Caption() const { return ResText(captionId); }
