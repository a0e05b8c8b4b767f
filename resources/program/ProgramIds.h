// Resource IDs of the program's own module (Zorvel.exe; the same .rc is
// linked into zvtests_ui.exe).
//
// Plain #defines only: this header is read by windres as well as by C++.
#pragma once

// The empty dialog template that every full-screen dialog runs on; the
// dialog procedure creates its controls, SHInitDialog sizes it to the screen.
#define IDD_FULLSCREEN        139

// Icons (16, 32 and 48 pixels in each group).
#define IDI_ZORVEL            130   // program and file associations ("Zorvel.exe,-130")
#define IDI_MAIN_WINDOW       131   // main window class icon

// List-window bitmaps. The check boxes are drawn with TransparentImage and
// the two small strips are image lists, all keyed on pure green RGB(0,255,0).
#define IDB_CHECKED           175   // 12 x 12 check box, checked
#define IDB_UNCHECKED         176   // 12 x 12 check box, clear
#define IDB_SMALL_SORT_MARKS  199   // strip of two 8 x 8 cells: up, down
#define IDB_SMALL_PRIORITY    200   // strip of two 8 x 8 cells: high, low
// Header sort marks, drawn opaque by the header (HDF_BITMAP): 8 x 8 on
// light grey RGB(192,192,192): load them with LoadImageW and LR_LOADMAP3DCOLORS
// so that grey becomes the header face colour. Direction flag 0 shows 202
// (down arrow), flag 1 shows 203 (up arrow).
#define IDB_SORT_DOWN         202
#define IDB_SORT_UP           203

// Copies of image-module resources at the low-density size, for code that
// looks them up in the program module (the image module is the better source:
// it matches the screen density).
#define IDT_PROGRAM_PRIORITY_HIGH 172   // "TARGA", 12 x 12
#define IDT_PROGRAM_PRIORITY_LOW  173   // "TARGA", 12 x 12
#define IDT_PROGRAM_DEFAULT_LIST  188   // "TARGA", 16 x 16
#define IDB_PROGRAM_IMAGE_STRIP   163   // 7 cells of 16 x 16, white mask

// Menus the settings pages load from the program module (see LangIds.h for
// the command IDs): 155 for a page with one tab, 197 for two or more.
#define IDM_PROGRAM_PAGE_ONE_TAB  155
#define IDM_PROGRAM_PAGE_TABS     197
