// The soft-key bar's own state, shared by the files that build, paint and
// open the bar (platform/ only).
#pragma once
#include <windows.h>
#include <commctrl.h>

#include <map>
#include <string>

struct SoftKeyBarState {
    HWND parent = nullptr;
    HMENU menu = nullptr;                // the whole menu the bar was built from (owned)
    std::map<UINT, WORD> keyOverrides;   // virtual key -> SHMBOF_* flags
    bool inBand = false;                 // shown in the parent's frame band
    int tappedIndex = -1;                // button under a tap in the band
    bool backDown = false;               // a Back press started on this bar
    COLORREF background = CLR_NONE;      // SHCMBF_COLORBK
    HFONT font = nullptr;
};

// The state of a bar made by SHCreateMenuBar (NULL for any other window).
SoftKeyBarState* SoftKeyBarStateOf(HWND bar);

// SoftKeyPaint.cpp: the look of the bar.
void FillSoftKeyBar(HDC dc, const RECT& rc, COLORREF background);
LRESULT DrawSoftKeyBarItems(HWND bar, NMTBCUSTOMDRAW* cd);  // the toolbar's own NM_CUSTOMDRAW

// SoftKeyMenu.cpp: menus opened from a soft key.
void OpenSoftKeyPopup(HWND bar, int index);
std::wstring MenuItemText(HMENU menu, UINT pos);
std::wstring StripMnemonics(const std::wstring& text);  // also drops an accelerator column
