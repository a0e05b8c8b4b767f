// String IDs of the language module used by the document code, by their
// roles here, taken from the shared language-module header.
#pragma once
#include <windows.h>

#include "LangIds.h"

namespace docstr {
constexpr UINT kErrorCaption = IDS_ERROR_CAPTION;
constexpr UINT kYes = IDS_YES;
constexpr UINT kNo = IDS_NO;
constexpr UINT kListNotCreated = IDS_SAVE_FAILED;
constexpr UINT kWrongVersion = IDS_LIST_VERSION_BAD;
constexpr UINT kFirstTypeName = IDS_TYPE_BASE;           // + FieldType, nine names
constexpr UINT kFirstSelection = IDS_SELECTION_BASE;     // Selection 0..10
constexpr UINT kPriorityHigh = IDS_PRIORITY_HIGH;        // Priority 1
constexpr UINT kPriorityNormal = IDS_PRIORITY_NORMAL;    // Priority 0
constexpr UINT kPriorityLow = IDS_PRIORITY_LOW;          // Priority 2
constexpr UINT kFirstDateMode = IDS_DATE_MODE_BASE;      // date default modes 0..4
constexpr UINT kTimeModeNow = IDS_TIME_MODE_NOW;         // time default mode 0
constexpr UINT kUnchecked = IDS_CHECK_CLEAR;             // Check 0
constexpr UINT kChecked = IDS_CHECK_SET;                 // Check 1
constexpr UINT kExportNotCreated = IDS_EXPORT_CREATE_FAILED;
constexpr UINT kExportDone = IDS_EXPORT_DONE_TEXT;
constexpr UINT kExportDoneCaption = IDS_EXPORT_DONE_CAPTION;
constexpr UINT kImportNotOpened = IDS_IMPORT_OPEN_FAILED;
constexpr UINT kListExists = IDS_LIST_EXISTS_TEXT;         // one "%s": the list name
constexpr UINT kListExistsCaption = IDS_LIST_EXISTS_CAPTION;
constexpr UINT kFirstExtraSelection = IDS_SELECTION_EMPTY;  // Selection 11..13
}  // namespace docstr
