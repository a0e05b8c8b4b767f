// Message boxes of the document code. Texts come from the language module.
//
// Console programs and tests replace the box with ZvMessageBoxOverride: when
// set, it is called instead of MessageBoxW with the texts already loaded,
// and its result is returned as the box's answer (IDOK, IDYES, IDNO...).
#pragma once
#include <windows.h>

using MessageBoxFunction = int (*)(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style);
extern MessageBoxFunction ZvMessageBoxOverride;

// Shows string `textId` with caption `captionId`. When `argument` is given
// the text is a format with one "%s" that receives it.
int showDocMessage(HWND owner, UINT textId, UINT captionId, UINT style, const wchar_t* argument = nullptr);
