// CellText: the text of one cell, with the cell's capacity of 258 characters
// including the terminator (257 visible characters; longer input is cut).
//
// A list of 100,000 items has a million cells, so the text is kept compact:
// up to 19 characters live inside the object (every date, time, date-and-
// time and choice text of the usual languages, so reading a list allocates
// only for long free texts), longer texts in one exact-size heap block.
// The object is 44 bytes.
#pragma once
#include <cstdint>

class CellText {
public:
    static constexpr int kCapacity = 258;        // with the terminator
    static constexpr int kMaxLength = kCapacity - 1;

    CellText() noexcept { m_inline[0] = 0; }
    CellText(const wchar_t* text, int count = -1) { m_inline[0] = 0; Assign(text, count); }
    CellText(const CellText& other);
    CellText(CellText&& other) noexcept;
    ~CellText() { Free(); }
    CellText& operator=(const CellText& other);
    CellText& operator=(CellText&& other) noexcept;
    CellText& operator=(const wchar_t* text) { Assign(text, -1); return *this; }

    // Copies `count` characters (-1: up to the terminator), stopping at an
    // embedded NUL and at kMaxLength characters.
    void Assign(const wchar_t* text, int count = -1);
    void Clear() { Free(); m_inline[0] = 0; m_length = 0; }

    const wchar_t* c_str() const { return m_onHeap ? Heap() : m_inline; }
    operator const wchar_t*() const { return c_str(); }
    int Length() const { return m_length; }
    bool IsEmpty() const { return m_length == 0; }

private:
    static constexpr int kInline = 20;  // characters with the terminator
    void Free() noexcept;
    // A long text's block pointer is kept in the first bytes of m_inline
    // (copied, not aliased), so the object needs no pointer alignment.
    wchar_t* Heap() const {
        wchar_t* p;
        __builtin_memcpy(&p, m_inline, sizeof p);
        return p;
    }
    void SetHeap(wchar_t* p) { __builtin_memcpy(m_inline, &p, sizeof p); }
    wchar_t m_inline[kInline];
    uint16_t m_length = 0;
    uint16_t m_onHeap = 0;
};
