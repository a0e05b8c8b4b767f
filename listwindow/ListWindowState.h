// The list window's one state record and the functions its files share.
// The window is modal, so one list is open at a time and the state is one
// global record, cleared at set-up and released at WM_DESTROY.
#pragma once
#include <windows.h>
#include <commctrl.h>

#include <vector>

#include "base/Handles.h"
#include "document/ListDocument.h"
#include "listwindow/ListWindow.h"
#include "images/PlanarImage.h"
#include "platform/aygshell.h"

// Control ID of the list view (tests and tools find it by this number).
constexpr int kListViewControlId = 300;

// One check-box bitmap kept for the window's lifetime, with its size and
// its pixels (32-bit, top-down rows) for copying straight into the row
// buffer.
struct CheckBitmap {
    BitmapHandle bitmap;
    SIZE size = {};
    std::vector<DWORD> pixels;
};

struct ListWindowState {
    ListOpenRequest* request = nullptr;
    HWND dialog = nullptr;
    HWND listView = nullptr;
    HWND header = nullptr;
    HWND menuBar = nullptr;
    HMENU softKeyMenu = nullptr;  // popup of the second soft key

    // The working copy of the list: fields, items in display order, icon and
    // sort state. `rows` indexes the items in the same order, so row i of the
    // (virtual) list view is rows[i].
    ListDocument doc;
    std::vector<ListItem*> rows;

    BYTE modified = 0;
    // The file was damaged when opened: only the items before the damage
    // are here, so a save (which replaces the file) asks first.
    BYTE openedDamaged = 0;
    BYTE headerWidthsPending = 1;
    // Whether the items stand in the order a re-sort would give them (sort
    // column, its field's comparator, the present direction, no NaN key), so
    // that an added item can go straight to its place. Cleared whenever a
    // change may leave the order stale without a re-sort.
    BYTE inResortOrder = 0;

    // Fonts made from the font settings: the list font, the bold title font
    // and the struck-out font of checked rows. fontHeight is the list font's
    // LOGFONT height, the unit of the title strip's layout.
    FontHandle listFont;
    FontHandle titleFont;
    FontHandle checkedFont;
    int fontHeight = 0;

    PlanarImage defaultIcon;   // IDT_DEFAULT_LIST: lists without their own icon
    PlanarImage priorityHigh;  // IDT_PRIORITY_HIGH: Priority value 1
    PlanarImage priorityLow;   // IDT_PRIORITY_LOW: Priority value 2
    CheckBitmap checkedBox;    // IDB_CHECKED
    CheckBitmap clearBox;      // IDB_UNCHECKED
    BitmapHandle rowBuffer;      // rows are composed here, then copied to the list
    SIZE rowBufferSize = {};
    DWORD* rowBufferBits = nullptr;  // its pixels, top-down rows of rowBufferSize.cx
    HDC rowBufferDc = nullptr;       // the DC composing a row, while one is drawn
    int rowBufferTop = 0;            // list coordinate of the buffer's first line
};

extern ListWindowState g_listWindow;
// Set by the first Down key in any list window and never cleared while the
// program runs: until then the colour letters B, G, R and Y do nothing.
extern BYTE g_colorKeysArmed;

// ---- ListWindow.cpp --------------------------------------------------------
// Height of a row in pixels: the taller of the list font and a check box.
int RowHeight();
// Rebuilds the row index from the item list and shows it: the view loses its
// selection and focus and starts at the top, as after a fresh fill.
void FillRows();
// What a fresh fill does to a list view that keeps its row count: no
// selection, no focus, no selection mark, back at the top.
void ResetRowView(HWND list, bool hasRows);
// Rebuilds the row index and sets the row count, keeping selection and scroll.
void SyncRowCount();
// Selects and focuses the row that shows `item` and scrolls it into view:
// what the user worked on stays under the cursor after a refill.
void SelectItemRow(const ListItem* item);
// Invalidates the title strip (its counter).
void InvalidateTitle();
// The item at the list view's selection mark, or null when there is none.
ListItem* SelectedItem();
// Whether field 0 is a check field (a check list).
bool IsCheckList();

// ---- ListDraw.cpp ----------------------------------------------------------
LRESULT OnDrawItem(const DRAWITEMSTRUCT* draw);
// Puts the sort mark on the sort column's header and takes it off the others.
void UpdateSortMark();
// Text of one cell for the list view's own use (LVN_GETDISPINFO).
const wchar_t* CellTextOf(int row, int column);

// ---- ListCommands.cpp ------------------------------------------------------
void OnCommand(HWND hwnd, UINT id, UINT code);
void OnContextMenu(HWND hwnd, int x, int y);
// Edit, Delete and the row-colour popup need a selection: enabled or grayed.
void EnableSelectionEntries(HMENU menu);
// Toggles a check cell. `fromAction` chooses the texts of the Action command
// (checked IDS_CHECKED, cleared IDS_UNCHECKED); Enter and taps write them the other way round.
void ToggleCheckCell(int row, int column, bool fromAction);
// Sorts by column `column` as the sort menu (fromMenu) or a column click does.
void SortByColumn(int column, bool fromMenu);
// Sorts again by the present column and direction, then refills the rows.
void Resort();
// Refills the rows after the item list was reordered and repaints once.
void ShowResortedRows();

// ---- ListNotify.cpp --------------------------------------------------------
LRESULT OnNotify(HWND hwnd, const NMHDR* header);
