#include "document/DocMessages.h"

#include "base/ResString.h"

std::wstring DocMessage::Text() const {
    std::wstring text = argument ? ResFormat(textId, {*argument}) : ResText(textId);
    if (causeId) text += L"\n\n" + ResText(causeId);
    return text;
}

std::wstring DocMessage::Caption() const { return ResText(captionId); }
