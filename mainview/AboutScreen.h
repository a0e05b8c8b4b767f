// The about screen: the program's icon, name, version and build date, what
// it is for, and where this installation keeps its lists and templates.
// Done or Back closes it.
#pragma once
#include <windows.h>

// Child window IDs, for tests and for anyone reading the screen's texts.
enum AboutControl {
    kAboutIcon = 100,
    kAboutName,
    kAboutVersion,
    kAboutBuilt,
    kAboutDescription,
    kAboutListsLabel,
    kAboutListsFolder,
    kAboutTemplatesLabel,
    kAboutTemplatesFolder,
};

// Runs the screen modally, owned by `owner`.
void RunAboutScreen(HWND owner);
