// Resource IDs of the image modules ZVLowDpiRes.dll (16-pixel art) and
// ZVHighDpiRes.dll (32-pixel art). Both modules hold the same IDs; only the
// pixel sizes differ, so code never asks which one is loaded.
//
// Plain #defines only: this header is read by windres as well as by C++.
#pragma once

// Resource type of the 32-bit TGA images (uncompressed, with alpha, stored
// top row first: descriptor 0x18, bit 4 marks the row order for our decoder).
#define ZV_TARGA_TYPE_NAME "TARGA"
#ifndef RC_INVOKED
#define ZV_RT_TARGA L"TARGA"
#endif

// "TARGA" images: 16 x 16 (low density) or 32 x 32 (high density), except
// the two priority marks, which are 12 x 12 or 24 x 24 so that they fit in a
// list row at the default font and centre on (column middle - ScaleX(6)).
#define IDT_ROOT             159   // the tree's Root item
#define IDT_PRIORITY_HIGH    172   // Priority value 1
#define IDT_PRIORITY_LOW     173   // Priority value 2
#define IDT_DEFAULT_LIST     188   // a list without its own icon
#define IDT_CATEGORY         189   // a category folder

// Bitmap strip for image lists: category, list, Root, high, low, clear box,
// checked box (7 images). Cells are 16 x 16 (low) or 32 x 32 (high): load it
// with a cell width of ScaleX(16) to get the 7 images. The tree loads it with
// a width of 16 on every screen; it draws no image of its own, so there the
// strip's height is what counts (it sets the row height to fit the icons).
// White (0xFFFFFF) is the mask colour; the art never uses pure white.
#define IDB_IMAGE_STRIP      163
#define IMAGE_STRIP_COUNT    7
#define IMAGE_STRIP_CATEGORY 0
#define IMAGE_STRIP_LIST     1
#define IMAGE_STRIP_ROOT     2
#define IMAGE_STRIP_HIGH     3
#define IMAGE_STRIP_LOW      4
#define IMAGE_STRIP_CLEAR    5
#define IMAGE_STRIP_CHECKED  6

// Density-sized copies of the program module's list-window bitmaps (same
// numbers, same keys; see ProgramIds.h). 12 x 12 or 24 x 24 check boxes on
// pure green RGB(0,255,0); 8 x 8 or 16 x 16 sort marks on RGB(192,192,192).
#define IDB_CHECKED_DENSITY    175
#define IDB_UNCHECKED_DENSITY  176
#define IDB_SORT_DOWN_DENSITY  202
#define IDB_SORT_UP_DENSITY    203
