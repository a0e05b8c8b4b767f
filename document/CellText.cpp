#include "document/CellText.h"

#include <cstring>
#include <new>

void CellText::Free() noexcept {
    if (m_onHeap) {
        delete[] Heap();
        m_onHeap = 0;
    }
}

void CellText::Assign(const wchar_t* text, int count) {
    int n = 0;
    if (text) {
        // Measure up to the terminator, the count and the capacity, whichever
        // comes first: a payload longer than the cell is cut.
        int limit = (count < 0 || count > kMaxLength) ? kMaxLength : count;
        while (n < limit && text[n]) ++n;
    }
    if (n < kInline) {
        wchar_t copy[kInline];
        if (n) std::memcpy(copy, text, size_t(n) * sizeof(wchar_t));
        Free();
        std::memcpy(m_inline, copy, size_t(n) * sizeof(wchar_t));
        m_inline[n] = 0;
    } else {
        wchar_t* block = new wchar_t[size_t(n) + 1];
        std::memcpy(block, text, size_t(n) * sizeof(wchar_t));
        block[n] = 0;
        Free();
        SetHeap(block);
        m_onHeap = 1;
    }
    m_length = (uint16_t)n;
}

CellText::CellText(const CellText& other) {
    m_inline[0] = 0;
    Assign(other.c_str(), other.m_length);
}

CellText::CellText(CellText&& other) noexcept {
    std::memcpy(m_inline, other.m_inline, sizeof m_inline);  // also moves a heap pointer
    m_length = other.m_length;
    m_onHeap = other.m_onHeap;
    other.m_onHeap = 0;
    other.m_inline[0] = 0;
    other.m_length = 0;
}

CellText& CellText::operator=(const CellText& other) {
    if (this != &other) Assign(other.c_str(), other.m_length);
    return *this;
}

CellText& CellText::operator=(CellText&& other) noexcept {
    if (this != &other) {
        Free();
        std::memcpy(m_inline, other.m_inline, sizeof m_inline);
        m_length = other.m_length;
        m_onHeap = other.m_onHeap;
        other.m_onHeap = 0;
        other.m_inline[0] = 0;
        other.m_length = 0;
    }
    return *this;
}
