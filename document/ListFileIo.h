// Whole-file reading and writing for the document code: one ReadFile of the
// entire file, writes go through writeFileSafely (SafeWrite.h). Private to document/.
#pragma once
#include <windows.h>

#include <vector>

#include "base/Handles.h"  // FileHandle
#include "document/ListFile.h"

// Largest file the readers load. A real list of 100,000 items is about
// 30 MB; anything far beyond is refused rather than read.
constexpr long long kMaxDocumentFileSize = 256LL * 1024 * 1024;

// Reads the whole file (GENERIC_READ, share read, OPEN_EXISTING). Missing
// when there is no such file, TooLarge above the limit, CannotOpen when it
// cannot be opened or read to its end.
FileStatus ReadWholeFile(const wchar_t* path, std::vector<unsigned char>& bytes);
// Reads from the current position to the end of an open file.
bool ReadRestOfFile(HANDLE file, std::vector<unsigned char>& bytes);
// Writes `count` bytes with one WriteFile; false when fewer were written.
bool WriteAll(HANDLE file, const void* data, size_t count);
