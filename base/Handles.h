// Owners of Win32 handles: each releases its handle when it goes out of
// scope, so no function releases a handle by hand on each of its paths.
//
//   GdiObject<T>     a font, brush, pen or bitmap (DeleteObject)
//   SelectedObject   an object selected into a DC, put back at the end
//   MemoryDC         a DC compatible with another (DeleteDC)
//   RegKey           an open registry key (RegCloseKey)
//   FileHandle       a file opened with CreateFileW (CloseHandle)
//   FindHandle       a FindFirstFileW search (FindClose)
//   IconHandle       an icon handed out by the shell or an image list (DestroyIcon)
#pragma once
#include <windows.h>

// One owned handle; `Traits` says what an empty handle is and how to free one.
template <typename Handle, typename Traits>
class UniqueHandle {
public:
    UniqueHandle() = default;
    explicit UniqueHandle(Handle h) : handle_(h) {}
    ~UniqueHandle() { Reset(); }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }

    Handle Get() const { return handle_; }
    operator Handle() const { return handle_; }
    bool IsValid() const { return handle_ != Traits::Empty(); }
    explicit operator bool() const { return IsValid(); }

    // Frees the current handle and takes `h`.
    void Reset(Handle h = Traits::Empty()) {
        if (IsValid()) Traits::Free(handle_);
        handle_ = h;
    }
    // Gives the handle up without freeing it.
    Handle Release() {
        Handle h = handle_;
        handle_ = Traits::Empty();
        return h;
    }
    // For calls that write a handle through a pointer (RegOpenKeyExW...).
    Handle* Receive() {
        Reset();
        return &handle_;
    }

private:
    Handle handle_ = Traits::Empty();
};

template <typename T>
struct GdiTraits {
    static T Empty() { return nullptr; }
    static void Free(T h) { DeleteObject(h); }
};
template <typename T>
using GdiObject = UniqueHandle<T, GdiTraits<T>>;
using FontHandle = GdiObject<HFONT>;
using BrushHandle = GdiObject<HBRUSH>;
using PenHandle = GdiObject<HPEN>;
using BitmapHandle = GdiObject<HBITMAP>;

struct MemoryDcTraits {
    static HDC Empty() { return nullptr; }
    static void Free(HDC h) { DeleteDC(h); }
};
// A memory DC compatible with `reference` (the screen when NULL).
class MemoryDC : public UniqueHandle<HDC, MemoryDcTraits> {
public:
    explicit MemoryDC(HDC reference) : UniqueHandle(CreateCompatibleDC(reference)) {}
};

struct RegKeyTraits {
    static HKEY Empty() { return nullptr; }
    static void Free(HKEY h) { RegCloseKey(h); }
};
using RegKey = UniqueHandle<HKEY, RegKeyTraits>;

struct FileHandleTraits {
    static HANDLE Empty() { return INVALID_HANDLE_VALUE; }
    static void Free(HANDLE h) { CloseHandle(h); }
};
using FileHandle = UniqueHandle<HANDLE, FileHandleTraits>;

struct FindHandleTraits {
    static HANDLE Empty() { return INVALID_HANDLE_VALUE; }
    static void Free(HANDLE h) { FindClose(h); }
};
using FindHandle = UniqueHandle<HANDLE, FindHandleTraits>;

struct IconHandleTraits {
    static HICON Empty() { return nullptr; }
    static void Free(HICON h) { DestroyIcon(h); }
};
using IconHandle = UniqueHandle<HICON, IconHandleTraits>;

// Selects `object` into `dc` and selects the previous object back at the end.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) : dc_(dc), old_(object ? SelectObject(dc, object) : nullptr) {}
    ~SelectedObject() {
        if (old_) SelectObject(dc_, old_);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC dc_;
    HGDIOBJ old_;
};

// A WM_PAINT handler's BeginPaint/EndPaint, with the client area filled
// white first, as the program's forms are.
class WhitePaint {
public:
    explicit WhitePaint(HWND hwnd) : hwnd_(hwnd), dc(BeginPaint(hwnd, &ps_)) {
        GetClientRect(hwnd, &client);
        FillRect(dc, &client, (HBRUSH)GetStockObject(WHITE_BRUSH));
    }
    ~WhitePaint() { EndPaint(hwnd_, &ps_); }
    WhitePaint(const WhitePaint&) = delete;
    WhitePaint& operator=(const WhitePaint&) = delete;

private:
    HWND hwnd_;
    PAINTSTRUCT ps_;

public:
    HDC dc;
    RECT client;
};
