// Helpers shared by the dialog tests: a screen density held for one test,
// device paths on drive C:, scratch files and folders, and where a control
// sits in its dialog.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

#include "platform/ScreenScale.h"
#include "tests/framework/ZvTest.h"

namespace uitest {

// A screen density for the life of a test; the old one comes back after.
class DensityScope {
public:
    explicit DensityScope(int dpi) : m_x(ScreenDpiX()), m_y(ScreenDpiY()) { SetScreenDensity(dpi, dpi); }
    ~DensityScope() { SetScreenDensity(m_x, m_y); }
    DensityScope(const DensityScope&) = delete;
    DensityScope& operator=(const DensityScope&) = delete;

private:
    int m_x, m_y;
};

// Device paths are rooted on the current drive; the tests make theirs on C:.
class OnDriveC {
public:
    OnDriveC() {
        GetCurrentDirectoryW(MAX_PATH, m_saved);
        SetCurrentDirectoryW(L"C:\\");
    }
    ~OnDriveC() { SetCurrentDirectoryW(m_saved); }
    OnDriveC(const OnDriveC&) = delete;
    OnDriveC& operator=(const OnDriveC&) = delete;

private:
    wchar_t m_saved[MAX_PATH] = {};
};

// Deletes a folder ending in "\" with everything in it.
inline void RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW found;
    HANDLE find = FindFirstFileW((folder + L"*").c_str(), &found);
    if (find != INVALID_HANDLE_VALUE) {
        do {
            std::wstring name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                RemoveTree(folder + name + L"\\");
            else
                DeleteFileW((folder + name).c_str());
        } while (FindNextFileW(find, &found));
        FindClose(find);
    }
    RemoveDirectoryW(folder.c_str());
}

inline void WriteFileBytes(const std::wstring& path, const std::vector<BYTE>& bytes) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    if (!bytes.empty()) WriteFile(file, bytes.data(), (DWORD)bytes.size(), &written, nullptr);
    CloseHandle(file);
}

// A control's rectangle in its parent's client coordinates.
inline RECT RectInParent(HWND control) {
    RECT r = {};
    GetWindowRect(control, &r);
    MapWindowPoints(nullptr, GetParent(control), (POINT*)&r, 2);
    return r;
}

inline void CheckRect(const RECT& r, int x, int y, int w, int h, const char* file, int line) {
    CHECK_EQ_AT(r.left, (LONG)x, file, line);
    CHECK_EQ_AT(r.top, (LONG)y, file, line);
    CHECK_EQ_AT(r.right - r.left, (LONG)w, file, line);
    CHECK_EQ_AT(r.bottom - r.top, (LONG)h, file, line);
}

// The font a control draws with.
inline LOGFONTW FontOf(HWND control) {
    LOGFONTW lf = {};
    GetObjectW((HFONT)SendMessageW(control, WM_GETFONT, 0, 0), sizeof lf, &lf);
    return lf;
}

}  // namespace uitest
