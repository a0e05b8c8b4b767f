// String IDs of the language module used by the document code. Kept here,
// named, until the shared language-module header lists them all.
#pragma once
#include <windows.h>

namespace docstr {
constexpr UINT kErrorCaption = 8068;
constexpr UINT kYes = 8089;
constexpr UINT kNo = 8090;
constexpr UINT kListNotCreated = 8093;
constexpr UINT kWrongVersion = 8096;
constexpr UINT kFirstTypeName = 8111;      // 8111 + FieldType, nine names
constexpr UINT kFirstSelection = 8124;     // Selection 0..10: 8124..8134
constexpr UINT kPriorityHigh = 8135;       // Priority 1
constexpr UINT kPriorityNormal = 8136;     // Priority 0
constexpr UINT kPriorityLow = 8137;        // Priority 2
constexpr UINT kFirstDateMode = 8138;      // date default modes 0..4: 8138..8142
constexpr UINT kTimeModeNow = 8143;        // time default mode 0
constexpr UINT kUnchecked = 8144;          // Check 0
constexpr UINT kChecked = 8145;            // Check 1
constexpr UINT kExportNotCreated = 8166;
constexpr UINT kExportDone = 8167;
constexpr UINT kExportDoneCaption = 8168;
constexpr UINT kImportNotOpened = 8169;
constexpr UINT kListExists = 8183;         // holds one "%s": the list name
constexpr UINT kListExistsCaption = 8184;
constexpr UINT kFirstExtraSelection = 8187;  // Selection 11..13: 8187..8189
}  // namespace docstr
