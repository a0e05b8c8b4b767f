// Program start: the single-instance rule, the resource modules, the sample
// files, the file associations and the main window.
//
// Table of contents of app/ (start-up alone; the screens live elsewhere):
//   WinMain.cpp         the entry point and the message loop
//   Startup.h/.cpp      start-up in order, the sample rule, the exit
//   RegistryConfig.h/.cpp  the program's folders in the registry, the lists
//                       folder history, the file associations
#pragma once
#include <windows.h>

#include "base/TextBuffer.h"

extern const wchar_t kMainWindowClass[];  // "ZorvelConsole"
extern const wchar_t kMainWindowTitle[];  // "Zorvel"

// Device paths are rooted at "\" without a drive letter: they name the
// drive the program was started from, which this makes the current one.
void MakeProgramDriveCurrent();

// A desktop shell quotes a path that holds blanks; the phone's shell hands
// the path over as it is. One quoted argument loses its quotes so that the
// command line reads as it would on the phone.
void UnquoteDesktopCommandLine(wchar_t* commandLine);

// Loads the image module that fits the screen's density from the
// installation folder; the other one is left in place for a later start.
HMODULE LoadImageModule(const wchar_t* installPath, bool lowDensity);

// Returns TRUE when the main window exists, FALSE when the program is to end.
BOOL InitInstance(HINSTANCE instance, int nCmdShow, LPWSTR lpCmdLine);

ATOM RegisterMainWindowClass(HINSTANCE instance, WNDPROC wndProc, HICON icon, const wchar_t* className);

// The command line the program was started with, unchanged.
extern TextBuffer g_commandLineFile;

// A list file's name ends in 'l' ('.zvl'); a template's ('.zvt') does not.
bool IsListFileName(const TextBuffer& path);
// The characters after the last "\" up to the first "." after it.
void FileTitleFromPath(const TextBuffer& path, wchar_t* out);

// Installs one sample file: the copy whose suffix fits the screen ("_qvga" on
// a low-density screen, "_vga" otherwise) becomes the plain file unless the
// user already has one; the other copy is removed.
void PlaceSampleFile(const wchar_t* folder, const wchar_t* fileName, bool lowDensity);
void PlaceSampleFiles(const wchar_t* listsPath, const wchar_t* templatePath, bool lowDensity);
