// The icon picker's cache: the small TGA icons of the icons folder tree,
// read once and kept until the program ends.
#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/Handles.h"
#include "platform/ScreenScale.h"
#include "settings/IconPicker.h"

namespace {

struct IconCacheStore {
    std::vector<PlanarImage> icons;
    int scans = 0;
} g_iconCache;

bool IsDots(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == 0 || (name[1] == L'.' && name[2] == 0));
}

// Names matching `pattern` in `folder`, directories or files as asked, in
// name order: the order the user sees them in a file list, whatever order
// the file system hands them out in.
std::vector<std::wstring> ListEntries(const std::wstring& folder, const wchar_t* pattern, bool directories) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    FindHandle search(FindFirstFileW((folder + pattern).c_str(), &found));
    if (!search) return names;
    do {
        bool isDirectory = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isDirectory != directories || found.cFileName[0] == 0 || IsDots(found.cFileName)) continue;
        names.push_back(found.cFileName);
    } while (FindNextFileW(search, &found));
    std::sort(names.begin(), names.end(), [](const std::wstring& a, const std::wstring& b) {
        return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.c_str(), -1, b.c_str(), -1) == CSTR_LESS_THAN;
    });
    return names;
}

// Subfolders first, depth first; then the folder's own icons. The header
// alone decides the size, so large pictures are never decoded.
void ScanFolder(const std::wstring& folder, int depth) {
    // Deep enough for any icon collection; stops a link loop.
    if (depth > 16) return;
    for (const std::wstring& sub : ListEntries(folder, L"*.*", true)) ScanFolder(folder + sub + L"\\", depth + 1);
    for (const std::wstring& name : ListEntries(folder, L"*.tga", false)) {
        std::wstring path = folder + name;
        SIZE size = ReadTgaSize(path.c_str());
        if (size.cx <= 0 || size.cy <= 0 || size.cx > ScaleX(16) || size.cy > ScaleY(16)) continue;
        PlanarImage icon;
        if (LoadTgaFile(icon, path.c_str()) == S_OK && icon.IsDrawable()) g_iconCache.icons.push_back(std::move(icon));
    }
}

}  // namespace

namespace IconPicker {

size_t CachedIconCount() { return g_iconCache.icons.size(); }

const PlanarImage& CachedIcon(size_t index) { return g_iconCache.icons[index]; }

void FillIconCache(const wchar_t* folder) {
    if (!g_iconCache.icons.empty()) return;
    std::wstring root = folder ? folder : L"";
    if (!root.empty() && root.back() != L'\\') root += L'\\';
    HCURSOR previous = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    ++g_iconCache.scans;
    if (!root.empty()) ScanFolder(root, 0);
    SetCursor(previous);
}

int IconScanCount() { return g_iconCache.scans; }

void ReleaseIconCache() { g_iconCache.icons.clear(); }

}  // namespace IconPicker
