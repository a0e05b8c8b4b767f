// The commands of the main menu bar and of the tree's context menu: they act
// on the tree's selected item.
#include <windows.h>
#include <commctrl.h>

#include <cwchar>
#include <string>

#include "LangIds.h"
#include "app/RegistryConfig.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/CsvDialogs.h"
#include "dialogs/FileSelectDialog.h"
#include "dialogs/MessageBoxes.h"
#include "mainview/AboutScreen.h"
#include "mainview/CategoryTree.h"
#include "mainview/MainWindow.h"
#include "settings/SettingsDialog.h"
#include "templates/Templates.h"

namespace {

MainViewState& V() { return g_mainView; }

// Appended to the default category name while that name is taken; it lives
// as long as the program and is never reset.
int g_newCategoryCounter = 1;
// A lists folder that takes no folder at all (missing, read-only, full)
// would keep the loop going for ever.
constexpr int kNewCategoryTries = 1000;

HTREEITEM ParentOf(HTREEITEM item) {
    return (HTREEITEM)SendMessageW(V().tree, TVM_GETNEXTITEM, TVGN_PARENT, (LPARAM)item);
}

std::wstring WithBackslash(const wchar_t* path) {
    std::wstring folder = path;
    if (folder.empty() || folder.back() != L'\\') folder += L'\\';
    return folder;
}

// Where a new list or an import goes for the selection: a category's own
// folder, the lists folder for the Root item and for a list at the top
// level, a list's category otherwise.
std::wstring TargetFolder(HTREEITEM item) {
    TreeNode* node = NodeOf(item);
    if (!node || node->level < 0) return V().listsFolder;
    if (node->isFolder) return WithBackslash(node->path.Text());
    TreeNode* parent = NodeOf(ParentOf(item));
    return parent ? WithBackslash(parent->path.Text()) : std::wstring(V().listsFolder);
}

// The three characters after the first "." are the list extension's or "bak".
bool IsListOrBackupName(const wchar_t* name) {
    const wchar_t* dot = wcschr(name, L'.');
    return dot && (_wcsnicmp(dot + 1, L"zvl", 3) == 0 || _wcsnicmp(dot + 1, L"bak", 3) == 0);
}

void NewList(HWND mainWindow) {
    MainViewState& v = V();
    HTREEITEM item = SelectedTreeItem();
    TreeNode* node = NodeOf(item);
    if (!node) {
        ResMessageBox(mainWindow, IDS_NO_SELECTION, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
        return;
    }
    NewListRequest request = {};
    request.module = hLangModule;
    lstrcpynW(request.categoryFolder, TargetFolder(item).c_str(), MAX_PATH);
    RunNewListDialog(mainWindow, request);
    if (!request.created) return;
    // The new list goes into the selected category (a list's own category).
    if (!node->isFolder) {
        HTREEITEM parent = ParentOf(item);
        if (parent) SendMessageW(v.tree, TVM_SELECTITEM, TVGN_CARET, (LPARAM)parent);
        item = parent;
        node = NodeOf(item);
    }
    HTREEITEM under = node && node->level >= 0 ? item : nullptr;
    HTREEITEM added = InsertTreeNode(request.listName, under, 0, request.listPath);
    if (!added) return;
    ++v.listCount;
    v.lastSelected = added;
    InvalidateRect(v.tree, nullptr, TRUE);
}

void NewCategory(HWND mainWindow) {
    MainViewState& v = V();
    std::wstring base = ResText(IDS_NEW_CATEGORY_NAME);
    std::wstring name = base;
    int tries = 0;
    while (!CreateDirectoryW((std::wstring(v.listsFolder) + name).c_str(), nullptr)) {
        if (++tries > kNewCategoryTries) {
            ResMessageBox(mainWindow, IDS_NEW_CATEGORY_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
            return;
        }
        name = base + L" " + std::to_wstring(g_newCategoryCounter++);
    }
    HTREEITEM item = InsertTreeNode(name.c_str(), nullptr, 1, (std::wstring(v.listsFolder) + name).c_str());
    if (!item) return;
    v.pendingItem = item;
    v.RenamePending = 1;
    SendMessageW(v.tree, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, (LPARAM)item);
    v.RenameArmed = 1;
    SetFocus(v.tree);
    SendMessageW(v.tree, TVM_EDITLABELW, 0, (LPARAM)item);
}

void DeleteCategory(HWND mainWindow, const TreeNode& node) {
    if (ResMessageBox(mainWindow, IDS_DELETE_CATEGORY_TEXT, IDS_DELETE_CAPTION, MB_OKCANCEL | MB_ICONINFORMATION) != IDOK)
        return;
    // The Root item stands for the lists folder itself.
    std::wstring folder = node.level < 0 ? std::wstring(V().listsFolder) : WithBackslash(node.path.Text());
    WIN32_FIND_DATAW found;
    {
        FindHandle search(FindFirstFileW((folder + L"*.*").c_str(), &found));
        if (search) {
            do {
                if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && IsListOrBackupName(found.cFileName))
                    DeleteFileW((folder + found.cFileName).c_str());
            } while (FindNextFileW(search, &found));
        }
    }
    folder.pop_back();
    // Either way the tree is filled again: the lists already deleted stay deleted.
    if (!RemoveDirectoryW(folder.c_str()))
        ResMessageBox(mainWindow, IDS_CATEGORY_NOT_EMPTY, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
    FillTree();
}

void DeleteList(HWND mainWindow, HTREEITEM item, const TreeNode& node) {
    if (ResMessageBox(mainWindow, IDS_DELETE_LIST_TEXT, IDS_DELETE_CAPTION, MB_OKCANCEL | MB_ICONINFORMATION) != IDOK)
        return;
    if (DeleteFileW(node.path.Text())) {
        // The count of lists is left as it was, and the tree is not rebuilt.
        SendMessageW(V().tree, TVM_DELETEITEM, 0, (LPARAM)item);
    } else {
        ResMessageBox(mainWindow, IDS_ERROR_CAPTION, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
    }
}

void DeleteSelected(HWND mainWindow) {
    HTREEITEM item = SelectedTreeItem();
    TreeNode* node = NodeOf(item);
    if (!node) return;
    if (node->isFolder)
        DeleteCategory(mainWindow, *node);
    else
        DeleteList(mainWindow, item, *node);
}

void ChooseListsFolder(HWND mainWindow) {
    MainViewState& v = V();
    FileSelectRequest request;
    request.mode = FileSelectFolder;
    request.title = ResText(IDS_LISTS_FOLDER_TITLE).c_str();
    request.folder = v.listsFolder;
    if (!RunFileSelectDialog(mainWindow, request)) return;
    lstrcpynW(v.listsFolder, request.path, MAX_PATH - 1);
    EnsureTrailingBackslash(v.listsFolder);
    RotateListsPaths(v.listsFolder);
    FillTree();
}

// The settings may have changed the font and the colours the tree uses.
void OpenSettings(HWND mainWindow) {
    RunSettingsDialog(hInstance, hLangModule, hImageModule);
    MakeTreeFonts();
    SendMessageW(V().tree, WM_SETFONT, (WPARAM)V().regularFont.Get(), TRUE);
    InvalidateRect(mainWindow, nullptr, TRUE);
}

void ImportIntoCategory(HWND mainWindow) {
    std::wstring folder = TargetFolder(SelectedTreeItem());
    if (!importCsv(mainWindow, folder.c_str())) return;
    ResMessageBox(mainWindow, IDS_IMPORT_DONE_TEXT, IDS_IMPORT_DONE_CAPTION, MB_ICONEXCLAMATION);
    FillTree();
}

}  // namespace

void OnMainCommand(HWND mainWindow, UINT id, UINT code, HWND control) {
    MainViewState& v = V();
    // The tree passes on its label edit's notifications (EN_CHANGE...).
    if (control && control == v.editControl) return;
    // While a label is being edited a soft key accepts the edit once the
    // user has typed, and is otherwise ignored: nothing else may happen to
    // the item under the edit.
    if (v.editControl && IsWindow(v.editControl)) {
        if (v.editTyped) SendMessageW(v.tree, TVM_ENDEDITLABELNOW, FALSE, 0);
        return;
    }
    switch (id) {
    case IDOK:
    case IDCANCEL:
        if (code == 0) OpenSelectedItem(mainWindow);
        return;
    case IDM_OPEN:
        v.ToggleOnOpen = 1;
        OpenSelectedItem(mainWindow);
        return;
    case IDM_NEW_LIST: NewList(mainWindow); break;
    case IDM_NEW_CATEGORY: NewCategory(mainWindow); return;
    case IDM_DELETE:
    case IDM_DELETE_CTX: DeleteSelected(mainWindow); break;
    case IDM_RENAME:
    case IDM_RENAME_CTX: StartRename(SelectedTreeItem()); return;
    case IDM_SETTINGS: OpenSettings(mainWindow); break;
    case IDM_ABOUT: RunAboutScreen(mainWindow); break;
    case IDM_LISTS_FOLDER: ChooseListsFolder(mainWindow); break;
    case IDM_EXIT: DestroyWindow(mainWindow); return;
    case IDM_IMPORT: ImportIntoCategory(mainWindow); break;
    default: return;
    }
    ReturnFocusToTree();
}
