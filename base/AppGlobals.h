// Process-wide handles and flags set once at start-up and read everywhere.
#pragma once
#include <windows.h>

extern HINSTANCE hInstance;     // the program's own module: the full-screen dialog template, icons
extern HINSTANCE hLangModule;   // the language module: texts, menus, soft-key bars
extern HINSTANCE hImageModule;  // the image module chosen for the screen density
extern int UseSlashDates;       // 1: dates as 01/03/2007; 0: 01.03.2007
