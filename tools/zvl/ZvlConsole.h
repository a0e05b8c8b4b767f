// Console output of zvl: UTF-8 bytes to a redirected handle, WriteConsoleW
// to a real console; one-line error reports on stderr; the document code's
// messages turned into such lines.
#pragma once
#include <string>

#include "document/DocMessages.h"

// Text written to standard output (UTF-16 in, UTF-8 or console text out).
void Out(const std::wstring& text);
void OutUtf8(const std::string& text);
// Standard error.
void Err(const std::wstring& text);

// "zvl: SUBJECT: reason" on stderr (the subject is left out when empty).
// Line breaks inside the reason become blanks so that one report is one line.
void ReportError(const std::wstring& subject, const std::wstring& reason);

// A message of the document code as ReportError's reason, with `subject`
// (usually the file being read or written); nothing for an empty message.
void ReportDocMessage(const std::wstring& subject, const DocMessage& message);

// The first error of a write to standard output, 0 when every write went
// out whole.
unsigned long OutputError();

// The system's text for a Win32 error code, without its line break.
std::wstring SystemErrorText(unsigned long code);

std::string ToUtf8(const std::wstring& text);
std::wstring FromUtf8(const std::string& text);
