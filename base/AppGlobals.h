// Process-wide handles and flags set once at start-up and read everywhere,
// and the start-up facts the program and zvl must agree on.
#pragma once
#include <windows.h>

extern HINSTANCE hInstance;     // the program's own module: the full-screen dialog template, icons
extern HINSTANCE hLangModule;   // the language module: texts, menus, soft-key bars
extern HINSTANCE hImageModule;  // the image module chosen for the screen density
extern int UseSlashDates;       // 1: dates as 01/03/2007; 0: 01.03.2007

// The program's key under HKEY_CURRENT_USER. A literal as well as a name, so
// that the settings can spell their subkeys below it.
#define ZV_PROGRAM_KEY L"Software\\Quenta\\Zorvel"
constexpr wchar_t kProgramKey[] = ZV_PROGRAM_KEY;

// Whether a language module of this file title writes dates with dots
// (UseSlashDates 0).
bool LanguageUsesDottedDates(const wchar_t* languageModulePath);
