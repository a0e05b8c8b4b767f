#include "base/TextBuffer.h"

#include <cstdarg>
#include <cstdlib>
#include <new>

namespace {
// Growth keeps a margin of 4 characters and leaves room for 64 more.
const unsigned kGrowMargin = 4;
const unsigned kGrowSlack = 64;
wchar_t g_formatBuffer[1024];

wchar_t* Allocate(unsigned characters) {
    wchar_t* p = static_cast<wchar_t*>(std::malloc(characters * sizeof(wchar_t)));
    if (!p) throw std::bad_alloc();
    return p;
}
}  // namespace

void TextBuffer::Init() {
    text = Allocate(64);
    text[0] = 0;
    capacity = 64;
    length = 0;
}

const wchar_t* TextBuffer::Assign(const wchar_t* chars) {
    unsigned n = (unsigned)wcslen(chars);
    if (n + kGrowMargin > capacity) {
        std::free(text);
        capacity = (uint16_t)(n + kGrowSlack);
        text = Allocate(capacity);
    }
    wcscpy(text, chars);
    length = (uint16_t)n;
    return text;
}

const wchar_t* TextBuffer::Append(const wchar_t* chars) {
    unsigned n = (unsigned)wcslen(chars);
    if (length + n + kGrowMargin > capacity) {
        capacity = (uint16_t)(length + n + kGrowSlack);
        wchar_t* grown = Allocate(capacity);
        wcscpy(grown, text);
        std::free(text);
        text = grown;
    }
    wcscat(text, chars);
    length = (uint16_t)(length + n);
    return text;
}

const wchar_t* TextBuffer::Format(const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    vswprintf(g_formatBuffer, sizeof g_formatBuffer / sizeof g_formatBuffer[0], format, args);
    va_end(args);
    return Assign(g_formatBuffer);
}

void TextBuffer::Release() {
    std::free(text);
    text = nullptr;
    capacity = 0;
    length = 0;
}
