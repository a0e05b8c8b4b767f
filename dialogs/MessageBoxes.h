// Message boxes whose texts come from the language module: the one place
// the screens turn string IDs, and the document code's messages, into boxes.
#pragma once
#include <windows.h>

#include "document/DocMessages.h"

// MessageBoxW with text and caption taken from the language module.
int ResMessageBox(HWND owner, UINT textId, UINT captionId, UINT style);

// Shows a message returned by a reader, writer, export or import with its
// text, caption and style, and returns the answer (IDOK, IDYES, IDNO...).
// An empty message shows nothing and returns 0.
int ShowDocMessage(HWND owner, const DocMessage& message);
