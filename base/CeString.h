// CeString: a shared, reference-counted string whose characters never change
// once written. Every change builds a fresh block of exactly the needed size,
// so copies are cheap and a block can be handed between threads.
#pragma once
#include <cwchar>

class CeString {
public:
    CeString();
    CeString(const wchar_t* text, int count = -1);
    CeString(const CeString& other);
    virtual ~CeString();

    CeString& operator=(const CeString& other);
    CeString& operator=(const wchar_t* text);

    // Copies count characters (-1: up to the terminator). Returns the length.
    int Assign(const wchar_t* text, int count);
    void Append(const wchar_t* text, int count = -1);
    CeString operator+(const wchar_t* text) const;
    void Truncate(int n);
    void MakeUnique();
    void Release();

    const wchar_t* c_str() const { return m_chars; }
    operator const wchar_t*() const { return m_chars; }
    int Length() const;
    bool IsEmpty() const { return Length() == 0; }
    int RefCount() const;  // 0 for the shared empty string

private:
    struct Block;
    static Block* BlockOf(const wchar_t* chars);
    static wchar_t* NewBlock(int length);
    wchar_t* m_chars;
};
