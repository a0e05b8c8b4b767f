// The phone shell interface: dialog sizing, the two-soft-key menu bar, the
// Back key, activation and input-panel handling, and transparent blits.
// Code calls these exactly as it would on the phone; the numeric values are
// the phone's.
//
// How they behave here (see platform/Platform.h for the screen itself):
// - The phone screen is ScaleX(240) x ScaleY(320) pixels at one place on the
//   desktop. A window sized with SHIDIF_SIZEDLGFULLSCREEN, and any top-level
//   window that gets a menu bar, covers it: its client area is the screen
//   minus the soft-key bar (ScaleY(26) high), and the bar is shown right
//   below the client area, in a band of the window's frame, as on the phone
//   where the bar is a window of its own under the application's area. Code
//   lays out in its whole client rectangle and never overlaps the bar.
// - The menu bar handle (SHMENUBARINFO::hwndMB) is a real toolbar control
//   (a disabled child lying in that band; GetWindowRect gives the band):
//   TB_GETBUTTONINFO / TB_SETBUTTONINFO / TB_ADDSTRING / TB_GETBUTTONTEXTW
//   work on it, and the band shows its buttons. Read texts back with
//   TB_GETBUTTONTEXTW (TBIF_TEXT reads back "" under Wine). Button command IDs are the IDs of the menu's top-level items
//   (a POPUP item's ID comes from a MENUEX resource; a POPUP without one gets
//   its position + 1). A popup button keeps its HMENU in the button's lParam.
// - Keys: F1 = left soft key, F2 = right soft key, Esc = Back. A soft key
//   sends its command as WM_COMMAND (lParam 0) to the bar's parent, or opens
//   its popup above the key; menu entries are numbered 1..9, 0 and a digit
//   picks one. Back, unless overridden, erases a character in a focused edit
//   box and otherwise sends WM_COMMAND IDCANCEL to the bar's parent.
#pragma once
#include <windows.h>

#ifdef __cplusplus
extern "C" {
#endif

// ---------------------------------------------------------------------------
// SHInitDialog
// ---------------------------------------------------------------------------
#define SHIDIM_FLAGS                0x0001

#define SHIDIF_DONEBUTTON           0x0001
#define SHIDIF_SIZEDLG              0x0002
#define SHIDIF_SIZEDLGFULLSCREEN    0x0004
#define SHIDIF_SIPDOWN              0x0008
#define SHIDIF_FULLSCREENNOMENUBAR  0x0010
#define SHIDIF_EMPTYMENU            0x0020
#define SHIDIF_WANTSCROLLBAR        0x0040

typedef struct tagSHINITDLGINFO {
    DWORD dwMask;   // SHIDIM_FLAGS
    HWND hDlg;
    DWORD dwFlags;  // SHIDIF_*
} SHINITDLGINFO, *PSHINITDLGINFO;

BOOL WINAPI SHInitDialog(PSHINITDLGINFO pshidi);

// ---------------------------------------------------------------------------
// SHCreateMenuBar
// ---------------------------------------------------------------------------
#define SHCMBF_EMPTYBAR        0x0001
#define SHCMBF_HIDDEN          0x0002
#define SHCMBF_HIDESIPBUTTON   0x0004
#define SHCMBF_COLORBK         0x0008
#define SHCMBF_HMENU           0x0010  // nToolBarId is a MENU resource in hInstRes

typedef struct tagSHMENUBARINFO {
    DWORD cbSize;          // sizeof(SHMENUBARINFO)
    HWND hwndParent;
    DWORD dwFlags;         // SHCMBF_*
    UINT nToolBarId;       // MENU resource id (with SHCMBF_HMENU)
    HINSTANCE hInstRes;    // module holding the menu
    int nBmpId;
    int cBmpImages;
    HWND hwndMB;           // out: the menu bar
    COLORREF clrBk;        // with SHCMBF_COLORBK
} SHMENUBARINFO, *PSHMENUBARINFO;

BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* pmbi);

// Messages to the menu bar.
#define SHCMBM_SETSUBMENU   (WM_USER + 400)  // wParam: button id, lParam: HMENU; returns the old HMENU
#define SHCMBM_GETSUBMENU   (WM_USER + 401)  // wParam: 0, lParam: button id; returns the popup HMENU
#define SHCMBM_GETMENU      (WM_USER + 402)  // returns the whole menu the bar was built from
#define SHCMBM_OVERRIDEKEY  (WM_USER + 403)  // wParam: virtual key, lParam: MAKELPARAM(mask, value) of SHMBOF_*

#define SHMBOF_NODEFAULT    0x00000001  // the key's default action is not taken
#define SHMBOF_NOTIFY       0x00000002  // the parent gets WM_HOTKEY for the key

// ---------------------------------------------------------------------------
// Phone keys as the shell names them, and the key-up bit of WM_HOTKEY.
// WM_HOTKEY from the bar: wParam = the key, lParam = MAKELPARAM(modifiers, key);
// the shell sends it on key down (modifiers 0) and on key up (MOD_KEYUP).
// ---------------------------------------------------------------------------
#ifndef VK_TSOFT1
#define VK_TSOFT1  VK_F1
#define VK_TSOFT2  VK_F2
#define VK_TBACK   VK_ESCAPE
#define VK_TACTION VK_RETURN
#endif
#ifndef MOD_KEYUP
#define MOD_KEYUP  0x1000
#endif

// ---------------------------------------------------------------------------
// Activation, settings change, Back key, Done button, input panel
// ---------------------------------------------------------------------------
typedef struct tagSHACTIVATEINFO {
    DWORD cbSize;
    HWND hwndLastFocus;
    UINT fSipUp : 1;
    UINT fSipOnDeactivation : 1;
    UINT fActive : 1;
    UINT fReserved : 29;
} SHACTIVATEINFO, *PSHACTIVATEINFO;

#define SHA_INPUTDIALOG  0x00000001

// Keeps the input-panel state and the focused control across deactivation:
// the control that had the focus gets it back when the window is activated.
BOOL WINAPI SHHandleWMActivate(HWND hwnd, WPARAM wParam, LPARAM lParam, SHACTIVATEINFO* psai, DWORD dwFlags);
// Keeps a full-screen window on the phone screen when the work area changes.
BOOL WINAPI SHHandleWMSettingChange(HWND hwnd, WPARAM wParam, LPARAM lParam, SHACTIVATEINFO* psai);
// Hands an overridden Back key (WM_HOTKEY) to the focused control: an edit
// box erases the character before the caret (or the selection) when the key
// is released; other controls ignore it.
void WINAPI SHSendBackToFocusWindow(UINT uMsg, WPARAM wParam, LPARAM lParam);

#define SHDB_SHOW        0x0001
#define SHDB_HIDE        0x0002
#define SHDB_SHOWCANCEL  0x0004
BOOL WINAPI SHDoneButton(HWND hwndRequester, DWORD dwState);

#define SIPF_OFF     0x00000000
#define SIPF_ON      0x00000001
#define SIPF_DOCKED  0x00000002
#define SIPF_LOCKED  0x00000004
BOOL WINAPI SipShowIM(DWORD dwFlag);

// ---------------------------------------------------------------------------
// Blit with one colour transparent. hSrc is a device context or a bitmap.
// ---------------------------------------------------------------------------
BOOL WINAPI TransparentImage(HDC hdcDest, LONG DstX, LONG DstY, LONG DstCx, LONG DstCy, HANDLE hSrc, LONG SrcX,
                             LONG SrcY, LONG SrcCx, LONG SrcCy, COLORREF TransparentColor);

#ifdef __cplusplus
}
#endif
