#include "dialogs/MessageBoxes.h"

#include "base/ResString.h"

int ResMessageBox(HWND owner, UINT textId, UINT captionId, UINT style) {
    return MessageBoxW(owner, ResText(textId).c_str(), ResText(captionId).c_str(), style);
}

int ShowDocMessage(HWND owner, const DocMessage& message) {
    if (message.IsEmpty()) return 0;
    return MessageBoxW(owner, message.Text().c_str(), message.Caption().c_str(), message.style);
}
