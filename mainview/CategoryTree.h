// The main window's tree: the Root item, the categories (sub-folders of the
// lists folder, one level deep) and the lists in them, each list with its
// own icon painted by the program. Opening a list runs the list window;
// renaming an item in place renames its file or folder.
#pragma once
#include <windows.h>
#include <commctrl.h>

#include "base/Handles.h"
#include "base/TextBuffer.h"
#include "images/PlanarImage.h"

// One per tree item, held in the item's lParam.
struct TreeNode {
    PlanarImage icon;        // the list's own icon; empty for none
    BYTE isFolder = 0;       // 1: a category or the Root item
    ScopedTextBuffer path;   // full path of the file or folder; empty for Root
    ScopedTextBuffer label;  // the text shown
    int level = 0;           // -1 Root, 0 top level, 1 a list inside a category
    bool iconRead = false;   // the icon is read when the row is first painted
};

// The main view's state: the main window is created once, so one record.
struct MainViewState {
    HWND mainWindow = nullptr;
    HWND tree = nullptr;
    HIMAGELIST imageList = nullptr;
    FontHandle regularFont, strikeOutFont, boldFont;
    int fontHeight = 0;
    HTREEITEM lastSelected = nullptr;
    int listCount = 0;
    wchar_t listsFolder[MAX_PATH] = L"";  // with a trailing "\"
    HWND editControl = nullptr;           // the label edit in progress
    wchar_t newLabel[251] = L"";
    BYTE RenameArmed = 0;    // a tree-started label edit may go ahead
    BYTE RenamePending = 0;  // a command named the item the edit renames
    HTREEITEM pendingItem = nullptr;
    BYTE ToggleOnOpen = 0;   // the open command expands or collapses a category
    bool editTyped = false;  // the label edit has had a key since it began
};
extern MainViewState g_mainView;

// Timer 2 of the main window: gives the keyboard focus back to the tree.
constexpr UINT_PTR kTreeFocusTimer = 2;
constexpr UINT kTreeFocusTimerMs = 100;
// Control id of the tree (tests find it by this number).
constexpr int kTreeControlId = 1;

// The regular, strike-out and bold fonts from the settings (old ones deleted).
void MakeTreeFonts();
// Creates the tree in the main window and fills it from the lists folder.
void CreateTree(HWND mainWindow);
// Empties the tree and rebuilds it from the lists folder.
void FillTree();
// A new item under `parent` (NULL: the top level), sorted by label.
HTREEITEM InsertTreeNode(const wchar_t* label, HTREEITEM parent, BYTE isFolder, const wchar_t* path);
// Opens the selected list, or (with ToggleOnOpen) expands or collapses the
// selected category.
void OpenSelectedItem(HWND mainWindow);
// The node of `item` (NULL for none); the selected item and its node.
TreeNode* NodeOf(HTREEITEM item);
HTREEITEM SelectedTreeItem();
TreeNode* SelectedNode();
// Starts the timer that gives the focus back to the tree.
void ReturnFocusToTree();

// Message handlers of the main window for the tree.
void OnTreeSize(HWND mainWindow);
void OnMainPaint(HWND mainWindow);
LRESULT OnTreeNotify(HWND mainWindow, NMHDR* header);
void OnTreeContextMenu(HWND mainWindow, int x, int y);
void OnTreeTimer(HWND mainWindow, UINT_PTR id);
// Releases the tree, its image list, the images decoded for its rows and the
// fonts (main window's WM_DESTROY).
void DestroyTree();

// ---- TreeRename.cpp --------------------------------------------------------
// The new path of a renamed item: the folder part of `oldPath`, then
// `newText`, and for a list "." plus the old extension, so a typed name never
// changes a list's extension; always starting with "\".
void RenamedPath(const wchar_t* oldPath, const wchar_t* newText, bool isFolder, TextBuffer& out);
// Starts editing the label of `item` for a rename command.
void StartRename(HTREEITEM item);
LRESULT OnBeginLabelEdit();
LRESULT OnEndLabelEdit(HWND mainWindow, const NMTVDISPINFOW* info);

// ---- MainCommands.cpp ------------------------------------------------------
// The commands of the main menu bar and the tree's context menu.
void OnMainCommand(HWND mainWindow, UINT id, UINT code, HWND control);
