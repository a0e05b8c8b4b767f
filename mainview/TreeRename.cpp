// Renaming a tree item in place: the label edit renames the file or folder.
#include <windows.h>
#include <commctrl.h>

#include <cwchar>
#include <string>

#include "mainview/CategoryTree.h"
#include "platform/aygshell.h"

namespace {

MainViewState& V() { return g_mainView; }

// Marks the edit as typed into: only then may a soft key accept it.
LRESULT CALLBACK LabelEditProc(HWND edit, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (msg == WM_CHAR || msg == WM_PASTE || msg == WM_CUT || msg == WM_CLEAR) V().editTyped = true;
    return DefSubclassProc(edit, msg, wParam, lParam);
}

bool SameIgnoringCase(const wchar_t* a, const wchar_t* b) {
    return CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, a, -1, b, -1) == CSTR_EQUAL;
}

// MoveFileW that also changes only the case of a name: some file systems
// take such a move as done without changing anything, so it goes through a
// temporary name.
bool MovePath(const wchar_t* from, const wchar_t* to) {
    if (wcscmp(from, to) == 0) return true;
    if (!SameIgnoringCase(from, to)) return MoveFileW(from, to) != 0;
    wchar_t temporary[MAX_PATH * 2];
    _snwprintf(temporary, MAX_PATH * 2 - 1, L"%s.rename~", from);
    temporary[MAX_PATH * 2 - 1] = 0;
    if (!MoveFileW(from, temporary)) return false;
    if (MoveFileW(temporary, to)) return true;
    MoveFileW(temporary, from);
    return false;
}

// The lists of a renamed category now live in its new folder.
void MoveChildPaths(HTREEITEM category, const wchar_t* oldFolder, const wchar_t* newFolder) {
    size_t oldLength = wcslen(oldFolder);
    HTREEITEM child = (HTREEITEM)SendMessageW(V().tree, TVM_GETNEXTITEM, TVGN_CHILD, (LPARAM)category);
    for (; child; child = (HTREEITEM)SendMessageW(V().tree, TVM_GETNEXTITEM, TVGN_NEXT, (LPARAM)child)) {
        TreeNode* node = NodeOf(child);
        if (!node || wcsncmp(node->path.Text(), oldFolder, oldLength) != 0) continue;
        ScopedTextBuffer moved;
        moved.Assign(newFolder);
        moved.Append(node->path.Text() + oldLength);
        node->path.Assign(moved.Text());
    }
}

}  // namespace

void RenamedPath(const wchar_t* oldPath, const wchar_t* newText, bool isFolder, TextBuffer& out) {
    const wchar_t* slash = wcsrchr(oldPath, L'\\');
    size_t folderLength = slash ? (size_t)(slash - oldPath) + 1 : 0;
    std::wstring path(oldPath, folderLength);
    path += newText;
    if (!isFolder) {
        const wchar_t* dot = wcsrchr(oldPath, L'.');
        path += L'.';
        if (dot) path.append(dot + 1, wcsnlen(dot + 1, 3));
    }
    if (path.empty() || path[0] != L'\\') path.insert(path.begin(), L'\\');
    out.Assign(path.c_str());
}

void StartRename(HTREEITEM item) {
    MainViewState& v = V();
    if (!item || !v.tree) return;
    SHDoneButton(v.mainWindow, SHDB_HIDE);
    v.RenameArmed = 1;
    v.RenamePending = 1;
    v.pendingItem = item;
    SetFocus(v.tree);
    SendMessageW(v.tree, TVM_EDITLABELW, 0, (LPARAM)item);
}

LRESULT OnBeginLabelEdit() {
    MainViewState& v = V();
    TreeNode* node = v.RenamePending ? NodeOf(v.pendingItem) : SelectedNode();
    if (!v.RenameArmed || !node || node->level < 0) {
        // The first edit the tree starts on its own after an open (a second
        // tap on the opened item) is refused; the next one goes ahead. The
        // Root item is never renamed.
        v.RenameArmed = 1;
        v.RenamePending = 0;
        ReturnFocusToTree();
        return TRUE;  // cancels the edit before it opens
    }
    v.editControl = (HWND)SendMessageW(v.tree, TVM_GETEDITCONTROL, 0, 0);
    v.editTyped = false;
    if (v.editControl) {
        SendMessageW(v.editControl, EM_LIMITTEXT, 250, 0);
        SetWindowSubclass(v.editControl, LabelEditProc, 0, 0);
    }
    return FALSE;
}

LRESULT OnEndLabelEdit(HWND mainWindow, const NMTVDISPINFOW* info) {
    MainViewState& v = V();
    // The edit may end twice (an explicit end and the loss of focus): only
    // the first counts.
    if (!v.editControl) return FALSE;
    GetWindowTextW(v.editControl, v.newLabel, 251);
    RemoveWindowSubclass(v.editControl, LabelEditProc, 0);
    v.editControl = nullptr;
    HTREEITEM item = v.RenamePending ? v.pendingItem : SelectedTreeItem();
    v.RenamePending = 0;
    TreeNode* node = NodeOf(item);
    bool cancelled = info && !info->item.pszText;
    if (node && node->level >= 0 && v.newLabel[0] && !cancelled) {
        ScopedTextBuffer newPath;
        RenamedPath(node->path.Text(), v.newLabel, node->isFolder != 0, newPath);
        if (MovePath(node->path.Text(), newPath.Text())) {
            if (node->isFolder) MoveChildPaths(item, node->path.Text(), newPath.Text());
            node->path.Assign(newPath.Text());
            node->label.Assign(v.newLabel);
            TVITEMW text = {};
            text.mask = TVIF_TEXT;
            text.hItem = item;
            text.pszText = (LPWSTR)node->label.Text();
            SendMessageW(v.tree, TVM_SETITEMW, 0, (LPARAM)&text);
        }
    }
    SHDoneButton(mainWindow, SHDB_SHOW);
    return FALSE;  // the label was set above when the rename succeeded
}
