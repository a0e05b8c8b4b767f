// Dialogs that several screens share (the list window, the main view, the
// template dialogs). Each file's header says how to call it.
//
// Table of contents of dialogs/:
//   TextEntry.h/.cpp         the one-line text prompt (a name for a list,
//                            a template, a category)
//   FileSelectDialog.h/.cpp  the program's own file and folder selection;
//                            FileSelectList.h/.cpp its list of entries,
//                            FileSelectPaths.h/.cpp its path rules
//   CsvDialogs.h/.cpp        text export and import through the file dialog
#pragma once
#include "dialogs/CsvDialogs.h"
#include "dialogs/FileSelectDialog.h"
#include "dialogs/TextEntry.h"
