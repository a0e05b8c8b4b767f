// What zvl needs before it touches a file: the language module (texts of
// types and choices, the document code's messages), the date separator that
// follows from its name, and the resolution of device-style paths.
#pragma once
#include <string>

// Loads the language module into hLangModule and sets UseSlashDates from its
// file title, exactly as the program does at start-up. `explicitPath` (from
// --lang) wins; otherwise the installed program's "SelectedLangResFile",
// else LangEng.dll beside zvl.exe. False (with a report on stderr) when no
// module could be loaded.
bool LoadLanguageModule(const std::wstring& explicitPath);

// The path of the loaded language module ("" before loading).
const std::wstring& LanguageModulePath();

// Turns a command-line path into one the file functions take: "/" becomes
// "\", and a device-style path ("\Folder\x.zvl", rooted without a drive)
// is placed on zvl.exe's own drive, as the program places it on its own.
// Windows-style and relative paths are kept.
std::wstring ResolvePath(const std::wstring& path);

// The folder of zvl.exe, with a trailing "\".
std::wstring ProgramFolder();

bool FileExists(const std::wstring& path);
bool FolderExists(const std::wstring& path);
// The part after the last "\" (or "/").
std::wstring FileNameOf(const std::wstring& path);
// The file name without its last extension.
std::wstring FileTitleOf(const std::wstring& path);
// True when the path ends in ".zvt" (any case): such files are read as
// templates, everything else as lists.
bool IsTemplatePath(const std::wstring& path);
