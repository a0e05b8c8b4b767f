#include "base/CeString.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <new>

// A block is: reference count, length, the characters, a terminating zero.
struct CeString::Block {
    LONG refs;
    LONG length;
    wchar_t chars[1];
};

namespace {
// The one empty string: never counted, never freed.
struct EmptyBlock {
    LONG refs = 0;
    LONG length = 0;
    wchar_t chars[1] = {0};
} g_emptyBlock;

wchar_t* EmptyChars() { return g_emptyBlock.chars; }
}  // namespace

CeString::Block* CeString::BlockOf(const wchar_t* chars) {
    return reinterpret_cast<Block*>(reinterpret_cast<char*>(const_cast<wchar_t*>(chars)) - offsetof(Block, chars));
}

wchar_t* CeString::NewBlock(int length) {
    void* mem = std::malloc((size_t(length) + 5) * sizeof(wchar_t));
    if (!mem) throw std::bad_alloc();
    Block* block = static_cast<Block*>(mem);
    block->refs = 1;
    block->length = length;
    block->chars[length] = 0;
    return block->chars;
}

CeString::CeString() : m_chars(EmptyChars()) {}

CeString::CeString(const wchar_t* text, int count) : m_chars(EmptyChars()) { Assign(text, count); }

CeString::CeString(const CeString& other) : m_chars(EmptyChars()) { *this = other; }

CeString::~CeString() { Release(); }

int CeString::Length() const { return BlockOf(m_chars)->length; }

int CeString::RefCount() const { return BlockOf(m_chars)->refs; }

void CeString::Release() {
    if (m_chars != EmptyChars()) {
        Block* block = BlockOf(m_chars);
        if (InterlockedDecrement(&block->refs) < 1) std::free(block);
        m_chars = EmptyChars();
    }
}

int CeString::Assign(const wchar_t* text, int count) {
    if (count == -1 && text) count = (int)wcslen(text);
    if (!text || count <= 0) {
        Release();
        return 0;
    }
    wchar_t* chars = NewBlock(count);
    std::memcpy(chars, text, size_t(count) * sizeof(wchar_t));
    Release();
    m_chars = chars;
    return count;
}

CeString& CeString::operator=(const wchar_t* text) {
    Release();
    Assign(text, -1);
    return *this;
}

CeString& CeString::operator=(const CeString& other) {
    if (m_chars == other.m_chars) return *this;
    Release();
    m_chars = other.m_chars;
    if (Length() != 0) InterlockedIncrement(&BlockOf(m_chars)->refs);
    return *this;
}

void CeString::Append(const wchar_t* text, int count) {
    if (!text) return;
    if (count == -1) count = (int)wcslen(text);
    if (count <= 0) return;
    int length = Length();
    if (length == 0) {
        Assign(text, count);
        return;
    }
    wchar_t* chars = NewBlock(length + count);
    std::memcpy(chars, m_chars, size_t(length) * sizeof(wchar_t));
    std::memcpy(chars + length, text, size_t(count) * sizeof(wchar_t));
    Release();
    m_chars = chars;
}

CeString CeString::operator+(const wchar_t* text) const {
    CeString result(*this);
    result.Append(text, -1);
    return result;
}

void CeString::Truncate(int n) {
    int length = Length();
    if (n < 0 || n >= length) return;
    if (n == 0) {
        Release();
        return;
    }
    wchar_t* chars = NewBlock(n);
    std::memcpy(chars, m_chars, size_t(n) * sizeof(wchar_t));
    Release();
    m_chars = chars;
}

void CeString::MakeUnique() {
    int length = Length();
    if (length == 0 || BlockOf(m_chars)->refs <= 1) return;
    wchar_t* chars = NewBlock(length);
    std::memcpy(chars, m_chars, size_t(length) * sizeof(wchar_t));
    InterlockedDecrement(&BlockOf(m_chars)->refs);
    m_chars = chars;
}
