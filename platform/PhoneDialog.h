// Every full-screen dialog runs through one call: it gets the empty
// full-screen template of the program's module, is fitted to the phone screen,
// has its soft-key bar before its procedure sees WM_INITDIALOG, and leaves
// activation and work-area changes to the shell. A dialog is then its
// handlers plus RunPhoneDialog.
#pragma once
#include <windows.h>

#include "platform/aygshell.h"

struct PhoneDialogSetup {
    HINSTANCE menuModule = nullptr;  // module holding the soft-key menu
    UINT menuId = 0;                 // its id; 0: no soft-key bar
    // Back reaches the dialog as WM_HOTKEY (to erase in an edit box, step
    // up a folder...) instead of closing it.
    bool overrideBack = true;
    DWORD initFlags = SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_SIPDOWN;
    // A template built by the caller (the settings dialog's own); null: the
    // empty full-screen template of the program's module.
    const DLGTEMPLATE* dialogTemplate = nullptr;
};

// Runs `proc` modally with `param` as WM_INITDIALOG's lParam. Returns what
// EndDialog was given, or -1 when the dialog could not be made. The dialog
// procedure need not handle WM_ACTIVATE or WM_SETTINGCHANGE; the bar is
// destroyed with the dialog.
INT_PTR RunPhoneDialog(HWND owner, const PhoneDialogSetup& setup, DLGPROC proc, LPARAM param);

// The soft-key bar of a dialog run by RunPhoneDialog (NULL when it has none).
HWND PhoneDialogMenuBar(HWND dialog);
