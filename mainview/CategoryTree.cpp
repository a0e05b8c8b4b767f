#include "mainview/CategoryTree.h"

#include <cwchar>

#include "ImageIds.h"
#include "LangIds.h"
#include "app/RegistryConfig.h"
#include "base/AppGlobals.h"
#include "listwindow/ListWindow.h"
#include "mainview/MainViewImages.h"
#include "platform/ScreenScale.h"
#include "settings/ListLook.h"

MainViewState g_mainView;

namespace {

// The tree draws no bitmap of its own: every icon is painted in custom draw,
// so items name an index beyond the image list.
constexpr int kNoTreeImage = 100;
constexpr wchar_t kRootText[] = L"Root";
// The device tree's sixth style bit, kept as the device program sets it.
constexpr DWORD kTreeStyleBit40 = 0x40;

MainViewState& V() { return g_mainView; }

// A list file: the three characters after the first "." of the name are the
// list extension's letters. Nothing after them counts, so a backup copy
// "x.zvl.bak" shows as the list x: a list saved from its backup by hand
// stays reachable from the tree.
bool IsListEntry(const wchar_t* name) {
    const wchar_t* dot = wcschr(name, L'.');
    return dot && _wcsnicmp(dot + 1, L"zvl", 3) == 0;
}

// The name up to the first ".".
void TitleOf(const wchar_t* name, wchar_t* title, size_t capacity) {
    size_t n = 0;
    while (name[n] && name[n] != L'.' && n + 1 < capacity) {
        title[n] = name[n];
        ++n;
    }
    title[n] = 0;
}

// A new node of `level` as an item under `parent`, `after` its place; the
// item owns the node from then on (TVN_DELETEITEM frees it).
HTREEITEM InsertNode(const wchar_t* label, HTREEITEM parent, HTREEITEM after, BYTE isFolder, int level,
                     const wchar_t* path) {
    auto* node = new TreeNode();
    node->isFolder = isFolder;
    node->level = level;
    node->path.Assign(path);
    node->label.Assign(label);
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent;
    insert.hInsertAfter = after;
    insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_PARAM | TVIF_SELECTEDIMAGE;
    insert.item.pszText = (LPWSTR)node->label.Text();
    insert.item.iImage = insert.item.iSelectedImage = kNoTreeImage;
    insert.item.lParam = (LPARAM)node;
    HTREEITEM item = (HTREEITEM)SendMessageW(V().tree, TVM_INSERTITEMW, 0, (LPARAM)&insert);
    if (!item) delete node;
    return item;
}

void InsertRoot() { InsertNode(L"", TVI_ROOT, TVI_FIRST, 1, -1, L""); }

bool IsDotEntry(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == 0 || (name[1] == L'.' && name[2] == 0));
}

// The entries of `folder` (a path with its trailing "\"). In the lists folder
// (`topLevel`) each sub-folder becomes a category, filled in turn; in a
// category only its lists count, sub-folders are not shown: categories are
// one level deep. Lists go under `parent`.
void AddFolder(const wchar_t* folder, bool topLevel, HTREEITEM parent) {
    wchar_t pattern[MAX_PATH * 2];
    _snwprintf(pattern, MAX_PATH * 2 - 1, L"%s*.*", folder);
    pattern[MAX_PATH * 2 - 1] = 0;
    WIN32_FIND_DATAW found;
    FindHandle search(FindFirstFileW(pattern, &found));
    if (!search) return;
    do {
        const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isFolder ? !topLevel || IsDotEntry(found.cFileName) : !IsListEntry(found.cFileName)) continue;
        wchar_t title[MAX_PATH], path[MAX_PATH * 2];
        TitleOf(found.cFileName, title, MAX_PATH);
        _snwprintf(path, MAX_PATH * 2 - 1, L"%s%s", folder, found.cFileName);
        path[MAX_PATH * 2 - 1] = 0;
        if (isFolder) {
            HTREEITEM category = InsertTreeNode(title, nullptr, 1, path);
            wchar_t categoryFolder[MAX_PATH * 2];
            _snwprintf(categoryFolder, MAX_PATH * 2 - 1, L"%s\\", path);
            categoryFolder[MAX_PATH * 2 - 1] = 0;
            AddFolder(categoryFolder, false, category);
        } else {
            InsertTreeNode(title, parent, 0, path);
            ++V().listCount;
        }
    } while (FindNextFileW(search, &found));
}

int IconTop(const RECT& item, const PlanarImage& image) {
    int fontHeight = V().fontHeight;
    return fontHeight > image.height ? item.top + (fontHeight - image.height + 1) / 2 : item.top;
}

// The item a custom-draw notification is about.
HTREEITEM DrawnItem(const NMTVCUSTOMDRAW* draw) { return (HTREEITEM)draw->nmcd.dwItemSpec; }

LRESULT OnItemPrePaint(NMTVCUSTOMDRAW* draw) {
    HTREEITEM item = DrawnItem(draw);
    const TreeNode* node = (const TreeNode*)draw->nmcd.lItemlParam;
    if (item && item == SelectedTreeItem() && GetFocus() == V().tree)
        draw->clrText = GetSysColor(COLOR_WINDOW);
    else if (node)
        draw->clrText = node->isFolder ? CategoryTextColor() : ListNameTextColor();
    return 112;
}

// A resource image of the tree, decoded when first painted and kept until the
// main window goes (another density's window decodes its own).
const PlanarImage& DecodedOnce(PlanarImage& image, UINT id) {
    if (!image.IsDrawable()) LoadTgaResource(image, hImageModule, id);
    return image;
}

void DrawRootItem(HDC dc, const RECT& item, bool selected, int scroll) {
    FillRect(dc, &item, (HBRUSH)GetStockObject(WHITE_BRUSH));
    SelectedObject font(dc, V().regularFont);
    RECT text = {item.left + ScaleX(18) - scroll, item.top, 0, item.bottom};
    DrawTextW(dc, kRootText, -1, &text, DT_CALCRECT);
    if (selected) {
        text.top = item.top + ScaleX(1);
        text.bottom = item.bottom;
        BrushHandle highlight(CreateSolidBrush(GetSysColor(COLOR_HIGHLIGHT)));
        FillRect(dc, &text, highlight);
        SetBkColor(dc, GetSysColor(COLOR_HIGHLIGHT));
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
        DrawTextW(dc, kRootText, -1, &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    } else {
        DrawTextW(dc, kRootText, -1, &text, DT_SINGLELINE);
    }
    const PlanarImage& root = DecodedOnce(g_rootImage, IDT_ROOT);
    DrawImage(root, dc, item.left + ScaleX(1) - scroll, IconTop(item, root));
}

LRESULT OnItemPostPaint(NMTVCUSTOMDRAW* draw) {
    TreeNode* node = (TreeNode*)draw->nmcd.lItemlParam;
    if (!node) return 32;
    if (!node->isFolder && !node->iconRead) {
        LoadListIcon(node->icon, node->path.Text(), IsLowDensityScreen());
        node->iconRead = true;
    }
    HDC dc = draw->nmcd.hdc;
    int scroll = GetScrollPos(V().tree, SB_HORZ);
    RECT item = draw->nmcd.rc;
    if (node->level < 0) {
        DrawRootItem(dc, item, DrawnItem(draw) == SelectedTreeItem(), scroll);
    } else if (node->isFolder) {
        DrawImage(g_categoryImage, dc, item.left + ScaleX(19) - scroll, IconTop(item, g_categoryImage));
    } else {
        const PlanarImage& icon =
            node->icon.IsDrawable() ? node->icon : DecodedOnce(g_defaultListImage, IDT_DEFAULT_LIST);
        int x = ScaleX(18) * node->level + item.left + ScaleX(19) - scroll;
        DrawImage(icon, dc, x, IconTop(item, icon));
    }
    return 32;
}

LRESULT OnCustomDraw(NMTVCUSTOMDRAW* draw) {
    switch (draw->nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT: return OnItemPrePaint(draw);
    case CDDS_ITEMPOSTPAINT: return OnItemPostPaint(draw);
    }
    return CDRF_SKIPDEFAULT;
}

// A tap opens what it hits right of the buttons and lines; a tap on those
// only expands or collapses, as the tree does by itself.
void OnClick(HWND mainWindow) {
    DWORD position = GetMessagePos();
    POINT point = {(short)LOWORD(position), (short)HIWORD(position)};
    ScreenToClient(V().tree, &point);
    TVHITTESTINFO hit = {};
    hit.pt = point;
    HTREEITEM item = (HTREEITEM)SendMessageW(V().tree, TVM_HITTEST, 0, (LPARAM)&hit);
    if (!item || point.x <= ScaleX(36)) return;
    SendMessageW(V().tree, TVM_SELECTITEM, TVGN_CARET, (LPARAM)item);
    OpenSelectedItem(mainWindow);
}

}  // namespace

TreeNode* NodeOf(HTREEITEM item) {
    if (!item || !V().tree) return nullptr;
    TVITEMW data = {};
    data.mask = TVIF_PARAM;
    data.hItem = item;
    if (!SendMessageW(V().tree, TVM_GETITEMW, 0, (LPARAM)&data)) return nullptr;
    return (TreeNode*)data.lParam;
}

HTREEITEM SelectedTreeItem() {
    return V().tree ? (HTREEITEM)SendMessageW(V().tree, TVM_GETNEXTITEM, TVGN_CARET, 0) : nullptr;
}

TreeNode* SelectedNode() { return NodeOf(SelectedTreeItem()); }

void MakeTreeFonts() {
    MainViewState& v = V();
    LOGFONTW font = ListLogFont(100);
    v.fontHeight = font.lfHeight < 0 ? -font.lfHeight : font.lfHeight;
    v.regularFont.Reset(CreateFontIndirectW(&font));
    font.lfStrikeOut = 1;
    v.strikeOutFont.Reset(CreateFontIndirectW(&font));
    font.lfStrikeOut = 0;
    font.lfWeight = 700;
    v.boldFont.Reset(CreateFontIndirectW(&font));
}

void CreateTree(HWND mainWindow) {
    MainViewState& v = V();
    v.mainWindow = mainWindow;
    RECT client;
    GetClientRect(mainWindow, &client);
    const DWORD style = WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_EDITLABELS |
                        kTreeStyleBit40;
    v.tree = CreateWindowExW(0, WC_TREEVIEWW, L"", style, 0, ScaleY(19), client.right, client.bottom - ScaleY(20),
                             mainWindow, (HMENU)(INT_PTR)kTreeControlId, hInstance, nullptr);
    if (!v.tree) return;
    SendMessageW(v.tree, WM_SETFONT, (WPARAM)v.regularFont.Get(), TRUE);
    // The strip's cells are as wide as the density's icons: the tree keeps
    // that much room before each label for the icon painted there, and its
    // indent follows the icons' step per level.
    v.imageList = ImageList_LoadImageW(hImageModule, MAKEINTRESOURCEW(IDB_IMAGE_STRIP), ScaleX(16), 0,
                                       RGB(255, 255, 255), IMAGE_BITMAP, 0);
    if (!IsLowDensityScreen()) SendMessageW(v.tree, TVM_SETINDENT, ScaleX(18), 0);
    if (v.imageList) SendMessageW(v.tree, TVM_SETIMAGELIST, TVSIL_NORMAL, (LPARAM)v.imageList);
    g_registryConfig.GetListsPath(1, v.listsFolder);
    EnsureTrailingBackslash(v.listsFolder);
    FillTree();
}

void FillTree() {
    MainViewState& v = V();
    if (!v.tree) return;
    SendMessageW(v.tree, WM_SETREDRAW, FALSE, 0);
    SendMessageW(v.tree, TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT);
    v.listCount = 0;
    v.lastSelected = nullptr;
    InsertRoot();
    AddFolder(v.listsFolder, true, nullptr);
    SendMessageW(v.tree, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(v.tree, nullptr, TRUE);
}

HTREEITEM InsertTreeNode(const wchar_t* label, HTREEITEM parent, BYTE isFolder, const wchar_t* path) {
    // A list's icon is read when its row is first painted: a big lists
    // folder then shows at once, with the same picture.
    HTREEITEM item = InsertNode(label, parent ? parent : TVI_ROOT, TVI_SORT, isFolder, parent ? 1 : 0, path);
    if (item && parent) SendMessageW(V().tree, TVM_EXPAND, TVE_EXPAND, (LPARAM)parent);
    return item;
}

void OpenSelectedItem(HWND mainWindow) {
    MainViewState& v = V();
    TreeNode* node = SelectedNode();
    if (node && !node->isFolder) {
        ListOpenRequest request = {};
        request.module = hInstance;
        _snwprintf(request.path, MAX_PATH - 1, L"%s", node->path.Text());
        RunListWindow(mainWindow, request);
        // The list window may have given the list another icon.
        node->icon.Release();
        node->iconRead = false;
        InvalidateRect(v.tree, nullptr, TRUE);
    } else if (node && v.ToggleOnOpen) {
        SendMessageW(v.tree, TVM_EXPAND, TVE_TOGGLE, (LPARAM)SelectedTreeItem());
        v.ToggleOnOpen = 0;
    }
    v.RenameArmed = 0;
    ReturnFocusToTree();
}

void ReturnFocusToTree() {
    if (V().mainWindow) SetTimer(V().mainWindow, kTreeFocusTimer, kTreeFocusTimerMs, nullptr);
}

void OnTreeSize(HWND mainWindow) {
    if (!V().tree) return;
    RECT client;
    GetClientRect(mainWindow, &client);
    MoveWindow(V().tree, 0, ScaleY(0), client.right, client.bottom, TRUE);
    InvalidateRect(mainWindow, nullptr, TRUE);
    UpdateWindow(mainWindow);
}

void OnMainPaint(HWND mainWindow) { WhitePaint paint(mainWindow); }

LRESULT OnTreeNotify(HWND mainWindow, NMHDR* header) {
    if (!header || header->hwndFrom != V().tree) return 0;
    switch (header->code) {
    case NM_CUSTOMDRAW: return OnCustomDraw((NMTVCUSTOMDRAW*)header);
    case TVN_KEYDOWN:
        if (((NMTVKEYDOWN*)header)->wVKey == VK_RETURN) OpenSelectedItem(mainWindow);
        return 0;
    case NM_CLICK: OnClick(mainWindow); return 0;
    case TVN_SELCHANGEDW: V().lastSelected = ((NMTREEVIEWW*)header)->itemNew.hItem; return 0;
    case TVN_DELETEITEMW: delete (TreeNode*)((NMTREEVIEWW*)header)->itemOld.lParam; return 0;
    case TVN_BEGINLABELEDITW: return OnBeginLabelEdit();
    case TVN_ENDLABELEDITW: return OnEndLabelEdit(mainWindow, (const NMTVDISPINFOW*)header);
    }
    return 0;
}

void OnTreeContextMenu(HWND mainWindow, int x, int y) {
    HWND tree = V().tree;
    if (!tree) return;
    POINT point = {x, y};
    HTREEITEM item = nullptr;
    if (x == -1 && y == -1) {
        // From the keyboard: the selected item, under its label.
        item = SelectedTreeItem();
        RECT rect = {};
        if (item && TreeView_GetItemRect(tree, item, &rect, TRUE)) {
            point = {rect.left, rect.bottom};
            ClientToScreen(tree, &point);
        }
    } else {
        TVHITTESTINFO hit = {};
        hit.pt = point;
        ScreenToClient(tree, &hit.pt);
        item = (HTREEITEM)SendMessageW(tree, TVM_HITTEST, 0, (LPARAM)&hit);
        SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, (LPARAM)item);
    }
    HMENU menus = LoadMenuW(hLangModule, MAKEINTRESOURCEW(IDM_CONTEXT_MENUS));
    if (!menus) return;
    HTREEITEM parent = item ? (HTREEITEM)SendMessageW(tree, TVM_GETNEXTITEM, TVGN_PARENT, (LPARAM)item) : nullptr;
    HMENU popup = GetSubMenu(menus, parent ? 2 : 0);
    if (item && popup) TrackPopupMenuEx(popup, 0, point.x, point.y, mainWindow, nullptr);
    DestroyMenu(menus);
}

void OnTreeTimer(HWND mainWindow, UINT_PTR id) {
    KillTimer(mainWindow, id);
    // A label edit begun meanwhile keeps the focus: taking it would end the
    // edit before the user typed.
    if (id == kTreeFocusTimer && V().tree && !V().editControl) SetFocus(V().tree);
}

void DestroyTree() {
    MainViewState& v = V();
    g_defaultListImage.Release();
    g_rootImage.Release();
    if (v.tree) DestroyWindow(v.tree);  // its items' nodes go with TVN_DELETEITEM
    v.tree = nullptr;
    if (v.imageList) ImageList_Destroy(v.imageList);
    v.imageList = nullptr;
    v.regularFont.Reset();
    v.strikeOutFont.Reset();
    v.boldFont.Reset();
    v.mainWindow = nullptr;
}
