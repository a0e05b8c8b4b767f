// The main window "ZorvelConsole": its soft-key bar, its commands and the
// hand-over of a file named on the command line.
//
// Table of contents of mainview/:
//   MainWindow.h/.cpp       the window procedure and its soft keys
//   CategoryTree.h/.cpp     the tree of categories and lists: filling,
//                           drawing, opening, the context menu
//   TreeRename.cpp          renaming an item in place
//   MainCommands.cpp        the commands of the menus
//   CommandLineFile.h/.cpp  a list or template named on the command line
//   MainViewImages.h/.cpp   the images the main view shares program-wide
//   AboutScreen.h/.cpp      the about screen (main menu and settings dialog)
#pragma once
#include <windows.h>

LRESULT CALLBACK MainWndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
HWND CreateMainWindow(HINSTANCE instance);

extern HWND g_hMainMenuBar;
