// The settings dialog: a list of the three settings pages (General, Colors,
// Templates). Pages put their values into g_appSettings when they are left;
// Done stores them in the registry, a confirmed Back throws them away.
//
//     if (RunSettingsDialog(hInstance, hLangModule, hImageModule))
//         ...  // the stored settings changed: rebuild fonts and colours
#pragma once
#include <windows.h>

// Control ID of the page list (a report list view with one column).
const int kSettingsPageList = 100;

// The message that ends a page's life: the open page object is destroyed and
// the dialog's title is put back.
const UINT kMsgPageClosed = WM_USER + 1;

// Runs the dialog modally with no owner. `resourceModule` holds the
// full-screen template and the pages' menus, `stringModule` the texts and
// the dialog's menu, `pageModule` the images handed to the pages. Returns
// true when the user confirmed (the settings were saved).
bool RunSettingsDialog(HINSTANCE resourceModule, HINSTANCE stringModule, HINSTANCE pageModule);
