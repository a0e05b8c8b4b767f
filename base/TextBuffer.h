// TextBuffer: a plain growable wide-character buffer for paths, registry
// values and resource strings. Capacity and length are 16-bit; the owner
// calls Release() when done (there is no destructor).
#pragma once
#include <cstdint>
#include <cwchar>

struct TextBuffer {
    wchar_t* text;
    uint16_t capacity;
    uint16_t length;

    void Init();
    const wchar_t* Assign(const wchar_t* chars);
    const wchar_t* Append(const wchar_t* chars);
    const wchar_t* Text() const { return text; }
    const wchar_t* Format(const wchar_t* format, ...);
    void Release();
};

// A TextBuffer that releases itself, for local use.
struct ScopedTextBuffer : TextBuffer {
    ScopedTextBuffer() { Init(); }
    ~ScopedTextBuffer() { Release(); }
    ScopedTextBuffer(const ScopedTextBuffer&) = delete;
    ScopedTextBuffer& operator=(const ScopedTextBuffer&) = delete;
};
