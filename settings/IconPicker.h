// The icon picker: a modal full-screen grid of the small TGA icons found in
// the icons folder (the IconsFolder setting) and its subfolders, with a
// preview band at the bottom showing the icon chosen so far.
//
//     PlanarImage& icon = ...;            // the list's or template's icon
//     if (IconPicker::Run(hwnd, hLangModule, (INT_PTR)hInstance, IDB_PROGRAM_IMAGE_STRIP, 0, icon))
//         modified = true;                // icon now holds the chosen image
//
// The folder is scanned once, on the first run; the icons stay cached until
// the program ends, so a change of IconsFolder shows after a restart.
#pragma once
#include <windows.h>

#include <cstddef>

#include "images/PlanarImage.h"

namespace IconPicker {

// Identifier of the grid (a list view in icon view).
const int kIconListId = 1100;

// Runs the picker owned by `owner`; the menu bar comes from `resourceModule`.
// The two values and the flag are the caller's own and are passed through
// unused. On confirm `image` is released and replaced by the chosen icon
// (the icon it came in with when nothing was chosen) and Run returns true;
// on cancel `image` is untouched and Run returns false.
bool Run(HWND owner, HINSTANCE resourceModule, INT_PTR callerValue1, INT_PTR callerValue2, int flag,
         PlanarImage& image);

// The icon cache, in scan order: every TGA of at most ScaleX(16) x ScaleY(16)
// pixels under the icons folder, subfolders before the folder's own files.
size_t CachedIconCount();
const PlanarImage& CachedIcon(size_t index);
// Fills the cache from `folder` (a device path) when it is empty; the
// picker does this itself on its first run.
void FillIconCache(const wchar_t* folder);
// How many times a folder tree was scanned since the program started.
int IconScanCount();
// Empties the cache; the next run scans again. The program itself never
// needs this: the cache lives as long as the program.
void ReleaseIconCache();

}  // namespace IconPicker
