#include "dialogs/FileSelectList.h"

#include <commctrl.h>
#include <shellapi.h>

#include <map>
#include <string>

#include "ImageIds.h"
#include "base/Handles.h"
#include "dialogs/FileSelectPaths.h"

namespace {

const int kMaxRows = 0xFFFF;  // the row index must stay below the folder mark

// Holds the wait cursor for the life of a fill.
class WaitCursor {
public:
    WaitCursor() : m_previous(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    ~WaitCursor() { SetCursor(m_previous); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    HCURSOR m_previous;
};

bool IsDotEntry(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == 0 || (name[1] == L'.' && name[2] == 0));
}

// The small shell icon of `path` in the dialog's image list, or the cell of
// the dialog's own strip when the shell has none. -1 when neither exists.
int AddIcon(const FileSelectDialog& dlg, const wchar_t* path, bool isFolder) {
    SHFILEINFOW info = {};
    int image = -1;
    if (SHGetFileInfoW(path, 0, &info, sizeof info, SHGFI_ICON | SHGFI_SMALLICON) && info.hIcon) {
        IconHandle icon(info.hIcon);
        image = ImageList_ReplaceIcon(dlg.imageList, -1, icon);
    }
    if (image < 0 && dlg.stripImages) {
        IconHandle icon(ImageList_GetIcon(dlg.stripImages, isFolder ? IMAGE_STRIP_CATEGORY : IMAGE_STRIP_LIST, ILD_NORMAL));
        if (icon) image = ImageList_ReplaceIcon(dlg.imageList, -1, icon);
    }
    return image;
}

// Icons of one fill by kind. Every folder and every file of one extension
// shows the same shell icon, and asking the shell costs about a millisecond
// an entry, so it is asked once per kind; programs, icons and shortcuts
// carry their own and are asked one by one.
class IconCache {
public:
    explicit IconCache(const FileSelectDialog& dlg) : m_dlg(dlg) {}

    int For(const wchar_t* path, const wchar_t* name, bool isFolder) {
        std::wstring key = KindOf(name, isFolder);
        if (key.empty()) return AddIcon(m_dlg, path, isFolder);
        auto known = m_images.find(key);
        if (known != m_images.end()) return known->second;
        int image = AddIcon(m_dlg, path, isFolder);
        m_images[key] = image;
        return image;
    }

private:
    // "\\" for a folder, ".ext" in lower case for a file, "" when the file
    // has an icon of its own.
    static std::wstring KindOf(const wchar_t* name, bool isFolder) {
        if (isFolder) return L"\\";
        const wchar_t* dot = wcsrchr(name, L'.');
        std::wstring ext = dot ? dot : L".";
        CharLowerBuffW(&ext[0], (DWORD)ext.size());
        for (const wchar_t* own : {L".exe", L".ico", L".lnk", L".cur", L".ani"})
            if (ext == own) return std::wstring();
        return ext;
    }

    const FileSelectDialog& m_dlg;
    std::map<std::wstring, int> m_images;
};

void InsertRow(HWND list, int index, const wchar_t* name, int image, LPARAM param) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM | (image >= 0 ? LVIF_IMAGE : 0);
    item.iItem = index;
    item.pszText = const_cast<wchar_t*>(name);
    item.iImage = image;
    item.lParam = param;
    SendMessageW(list, LVM_INSERTITEMW, 0, (LPARAM)&item);
}

// Adds every entry of `pattern` of the wanted kind to the listing (and to
// the hidden sort view, which holds the names by running index).
void AddEntries(const FileSelectDialog& dlg, const wchar_t* pattern, bool folders, HWND sortView, IconCache& icons,
                int& index) {
    WIN32_FIND_DATAW found;
    FindHandle find(FindFirstFileW(pattern, &found));
    if (!find) return;  // an unreadable folder shows as empty
    do {
        bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isFolder != folders || IsDotEntry(found.cFileName)) continue;
        // "*.CSV" also matches the short name of "x.csvx"; list only real matches.
        if (!folders && !NameHasExtension(found.cFileName, dlg.extension)) continue;
        if (index >= kMaxRows) return;
        CeString path = dlg.currentFolder + found.cFileName;
        int image = icons.For(path, found.cFileName, isFolder);
        LPARAM param = index | (isFolder ? kFolderMark : 0);
        InsertRow(dlg.listView, index, found.cFileName, image, param);
        if (sortView) InsertRow(sortView, index, found.cFileName, -1, param);
        ++index;
    } while (FindNextFileW(find.Get(), &found));
}

// Folders before files; within each kind by name, ignoring case.
int CALLBACK CompareRows(LPARAM a, LPARAM b, LPARAM sortView) {
    bool aFolder = a > 0xFFFF, bFolder = b > 0xFFFF;
    if (aFolder != bFolder) return aFolder ? -1 : 1;
    wchar_t nameA[260], nameB[260];
    LVITEMW item = {};
    item.cchTextMax = 260;
    item.pszText = nameA;
    SendMessageW((HWND)sortView, LVM_GETITEMTEXTW, a & 0xFFFF, (LPARAM)&item);
    item.pszText = nameB;
    SendMessageW((HWND)sortView, LVM_GETITEMTEXTW, b & 0xFFFF, (LPARAM)&item);
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, nameA, -1, nameB, -1) - CSTR_EQUAL;
}

HWND CreateSortView(const FileSelectDialog& dlg) {
    HWND view = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 0, 0, dlg.dialog, nullptr,
                                dlg.hInstance, nullptr);
    LVCOLUMNW column = {};
    column.mask = LVCF_WIDTH;
    column.cx = 100;
    SendMessageW(view, LVM_INSERTCOLUMNW, 0, (LPARAM)&column);
    SendMessageW(view, WM_SETREDRAW, FALSE, 0);  // it is never shown: spare it the bookkeeping
    return view;
}

void FitColumn(const FileSelectDialog& dlg) {
    RECT client;
    GetClientRect(dlg.listView, &client);
    SendMessageW(dlg.listView, LVM_SETCOLUMNWIDTH, 0, client.right - client.left);
}

}  // namespace

void FillFileList(FileSelectDialog& dlg) {
    WaitCursor wait;
    SendMessageW(dlg.pathLine, WM_SETTEXT, 0, (LPARAM)dlg.currentFolder.c_str());
    LayoutPathLine(dlg);
    SendMessageW(dlg.listView, WM_SETREDRAW, FALSE, 0);
    SendMessageW(dlg.listView, LVM_DELETEALLITEMS, 0, 0);
    ImageList_RemoveAll(dlg.imageList);

    bool withFiles = dlg.mode != FileSelectFolder;
    HWND sortView = withFiles ? CreateSortView(dlg) : nullptr;
    IconCache icons(dlg);
    int index = 0;
    AddEntries(dlg, dlg.currentFolder + L"*", true, sortView, icons, index);
    if (withFiles) {
        CeString pattern = dlg.currentFolder + L"*";
        pattern.Append(dlg.extension);
        AddEntries(dlg, pattern, false, sortView, icons, index);
        SendMessageW(dlg.listView, LVM_SORTITEMS, (WPARAM)sortView, (LPARAM)CompareRows);
        DestroyWindow(sortView);
    }

    FitColumn(dlg);
    SendMessageW(dlg.listView, WM_SETREDRAW, TRUE, 0);
    SelectRow(dlg, 0);
    InvalidateRect(dlg.listView, nullptr, TRUE);
}

int SelectedRow(const FileSelectDialog& dlg) {
    int mark = (int)SendMessageW(dlg.listView, LVM_GETSELECTIONMARK, 0, 0);
    if (mark >= 0 && (SendMessageW(dlg.listView, LVM_GETITEMSTATE, mark, LVIS_SELECTED) & LVIS_SELECTED)) return mark;
    return (int)SendMessageW(dlg.listView, LVM_GETNEXTITEM, (WPARAM)-1, LVNI_SELECTED);
}

bool ReadRow(const FileSelectDialog& dlg, int row, wchar_t (&name)[257], bool& isFolder) {
    name[0] = 0;
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = row;
    item.pszText = name;
    item.cchTextMax = 256;
    if (row < 0 || !SendMessageW(dlg.listView, LVM_GETITEMW, 0, (LPARAM)&item)) return false;
    isFolder = item.lParam > 0xFFFF;
    return true;
}

void SelectRow(const FileSelectDialog& dlg, int row) {
    if (row < 0 || row >= (int)SendMessageW(dlg.listView, LVM_GETITEMCOUNT, 0, 0)) return;
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(dlg.listView, LVM_SETITEMSTATE, row, (LPARAM)&state);
    SendMessageW(dlg.listView, LVM_SETSELECTIONMARK, 0, row);
    SendMessageW(dlg.listView, LVM_ENSUREVISIBLE, row, FALSE);
}

void ActivateSelectedRow(FileSelectDialog& dlg) {
    wchar_t name[257];
    bool isFolder = false;
    if (!ReadRow(dlg, SelectedRow(dlg), name, isFolder) || !isFolder) return;
    dlg.currentFolder.Append(name);
    dlg.currentFolder.Append(L"\\");
    FillFileList(dlg);
    InvalidateRect(dlg.dialog, nullptr, TRUE);
    UpdateWindow(dlg.dialog);
}

void GoUpOneFolder(FileSelectDialog& dlg) {
    CeString parent = ParentFolder(dlg.currentFolder);
    if (wcscmp(parent, dlg.currentFolder) == 0) return;  // already at the root
    CeString left = LastFolderName(dlg.currentFolder);
    dlg.currentFolder = parent;
    FillFileList(dlg);
    LVFINDINFOW find = {};
    find.flags = LVFI_STRING;
    find.psz = left;
    int row = (int)SendMessageW(dlg.listView, LVM_FINDITEMW, (WPARAM)-1, (LPARAM)&find);
    if (row >= 0) SelectRow(dlg, row);
    InvalidateRect(dlg.dialog, nullptr, TRUE);
    UpdateWindow(dlg.dialog);
}
