// Reading a list or a template for the commands that describe it.
#pragma once
#include <memory>
#include <string>

#include "document/ListDocument.h"

enum class FileKind { List, Template };

struct LoadedFile {
    FileKind kind = FileKind::List;
    std::wstring path;          // as resolved
    ListDocument doc;           // a template's fields land here, with no items
};

// Reads `path` (a template when it ends in ".zvt", else a list) without
// making the program's backup copy. On failure reports one line on stderr
// (the program's own refusal text for a wrong version) and returns false.
bool LoadFile(const std::wstring& path, LoadedFile& file);

// True when both paths name one file (by identity when both exist, else by
// full path ignoring case).
bool IsSameFile(const std::wstring& a, const std::wstring& b);
// Reports and returns true when `output` is `input`: a command never
// writes over the file it reads.
bool RefuseOwnInput(const std::wstring& input, const std::wstring& output);
