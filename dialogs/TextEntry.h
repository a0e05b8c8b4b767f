// The one-line text prompt: a full-screen dialog with a prompt in the list
// font, an edit box under it and OK / Cancel soft keys. Back erases in the
// box and never closes the dialog.
//
//   TextEntryRequest req = {};
//   req.module = hInstance;
//   req.prompt = L"Please insert template name: ";
//   if (RunTextEntryDialog(owner, req)) use(req.text);  // at most 255 characters
#pragma once
#include <windows.h>

#include "base/CeString.h"

const int kTextEntryMaxChars = 255;
const int kTextEntryEditId = 1000;  // child ID of the edit box

struct TextEntryRequest {
    HINSTANCE module;                     // the instance of the edit box
    wchar_t text[kTextEntryMaxChars + 1]; // in: the initial text; out on OK: the typed text
    CeString prompt;                      // shown above the box
};

// Runs the dialog on the full-screen template of the program's module. Returns 1 when
// confirmed (request.text holds the text, possibly empty), 0 when cancelled
// (request.text untouched).
int RunTextEntryDialog(HWND owner, TextEntryRequest& request);
