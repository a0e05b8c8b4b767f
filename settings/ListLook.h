// How lists look wherever they are shown (list window, item editor, text
// prompt, the main view's tree): the list font and the text colours from the
// user's settings, with the defaults when a setting is unset.
#pragma once
#include <windows.h>

// The list font: the face and size settings, scaled, at `weight`.
LOGFONTW ListLogFont(LONG weight);
HFONT CreateListFont(LONG weight);

// The forms' font (item editor, field editor, template lists): the face
// setting (Tahoma when unset) at 12 phone pixels, at `weight`.
HFONT CreateFormFont(LONG weight);

// The rows' background and text: the settings, or the system colours.
COLORREF ListBackColor();
COLORREF ListTextColor();

// The tree's texts: a category's and a list's name, the settings or the
// system's window text colour.
COLORREF CategoryTextColor();
COLORREF ListNameTextColor();
