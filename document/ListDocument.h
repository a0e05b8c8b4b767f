// The list document in memory: field definitions (columns), items (rows) and
// the list-wide settings. A template is the same field set without items.
//
// Table of contents of document/:
//   ListDocument.h  records, type names, choice texts, new-item defaults
//   CellText.h      the compact text of one cell (capacity 258 with NUL)
//   ValueText.h     display texts, date-time picker formats, parsing back
//   ListFile.h      reading and writing list and template files
//   CsvText.h       tab-separated text export and import
//   DocMessages.h   what the user is to be told, returned with each result
//   DocStrings.h    string IDs of the language module used here
#pragma once
#include <windows.h>

#include <cstdint>
#include <list>
#include <vector>

#include "base/CeString.h"
#include "document/CellText.h"
#include "document/ItemPool.h"
#include "images/PlanarImage.h"

// The nine field types. The numeric values are stored in files and are the
// tags of value chunks, so they never change. A stored type read from a file
// may lie outside 0..8; such a value is kept but never written.
enum class FieldType : int32_t {
    Date = 0,
    Time = 1,
    Priority = 2,
    Text = 3,
    YesNo = 4,
    Number = 5,
    Check = 6,
    DateTime = 7,
    Selection = 8,
};
constexpr int kFieldTypeCount = 9;
inline bool IsKnownType(FieldType t) { return int(t) >= 0 && int(t) < kFieldTypeCount; }
// Types whose value is the `choice` member (Priority, YesNo, Check, Selection).
bool IsChoiceType(FieldType t);
// Types whose value is the `time` member (Date, Time, DateTime).
bool IsTimeType(FieldType t);

constexpr int kMaxFields = 50;              // a list has at most 50 fields
constexpr int kFieldTextCapacity = 250;     // name and defaultText, with NUL
constexpr int kSelectionChoiceCount = 14;   // Selection choices 0..13
constexpr int kEmptySelection = 11;         // Selection value of an empty text
constexpr int kDateDefaultModeCount = 5;    // date default modes 0..4
constexpr int kTimeDefaultModeCount = 49;   // 0 = now, 1..48 half-hours
constexpr COLORREF kNoBackColor = 0xFFFFFFFF;  // an item without row colour

// One column definition. Plain record; the file format copies its members.
struct FieldDef {
    wchar_t name[kFieldTextCapacity] = {};         // empty: shown as the type name
    FieldType type = FieldType::Date;
    wchar_t defaultText[kFieldTextCapacity] = {};  // default of Text, Number, YesNo
    int32_t defaultChoice = 0;                     // default of choice types
    int32_t columnWidth = 0;                       // pixels; 0 = compute
    int32_t dateDefaultMode = 0;                   // 0..4, see newItemDate
    int32_t timeDefaultMode = 0;                   // 0..48, see newItemTime
    int32_t columnState = 0;  // run-time only (list window), reset to 0 at load
    int32_t spare = 0;        // run-time only, never stored

    // Copy text into name / defaultText, cut to 249 characters.
    void SetName(const wchar_t* text, int count = -1);
    void SetDefaultText(const wchar_t* text, int count = -1);
};

// One cell. `text` is what is drawn, searched, sorted and exported; for
// choice and time types it is the display text built from the typed member
// (ValueText.h), for Text and Number it is the value itself.
struct FieldValue {
    CellText text;
    FieldType storedType = FieldType::Date;  // chunk tag read; chooses the encoding on write
    int32_t choice = 0;                       // Priority, YesNo, Check, Selection
    SYSTEMTIME time = {};                     // Date, Time, DateTime
};

using FieldValues = std::vector<FieldValue, ItemPoolAllocator<FieldValue>>;

// One row. Only the used slots exist: values.size() == fieldCount, which is
// the document's field count (at most 50).
struct ListItem {
    FieldValues values;
    int32_t fieldCount = 0;
    int32_t ordinal = 0;     // position in the file when loaded (0-based)
    uint32_t serial = 0;     // creation order (load or add); ties in sorting
    COLORREF backColor = kNoBackColor;
};

using ItemList = std::list<ListItem, ItemPoolAllocator<ListItem>>;

// The list open in the list window (a template: fields and icon, no items).
struct ListDocument {
    CeString path;
    std::vector<FieldDef> fields;  // in column order; fieldCount() of them
    ItemList items;                // display order; new items go at the end
    PlanarImage icon;              // empty when the list has no icon
    int32_t sortColumn = -1;       // -1 = unsorted
    bool sortDescending = false;
    uint32_t nextSerial = 0;       // serial of the next item created

    int fieldCount() const { return (int)fields.size(); }
    int itemCount() const { return (int)items.size(); }
    // Frees everything and returns to the empty state.
    void Clear();
};

// Resource string 8111 + type: the display name of a type; empty for a type
// outside 0..8.
CeString fieldTypeName(FieldType type);
// The field's name, or its type's display name when the name is empty.
CeString fieldDisplayName(const FieldDef& field);
// The text of choice `index` of a choice type; empty outside the table or for
// a non-choice type. Priority 0 -> 8136, 1 -> 8135, 2 -> 8137; YesNo 1 -> 8089,
// 0 -> 8090; Check 0 -> 8144, 1 -> 8145; Selection 0..10 -> 8124..8134,
// 11..13 -> 8187..8189.
CeString choiceText(FieldType type, int index);
// The string ID behind choiceText (0 when there is none).
UINT choiceTextId(FieldType type, int index);
// Number of choices of a choice type (Priority 3, YesNo 2, Check 2,
// Selection 14); 0 for the others.
int choiceCount(FieldType type);
// Texts of the date default modes 0..4 (strings 8138..8142) and of time
// default mode 0 (string 8143); other indexes give an empty string.
CeString dateDefaultModeText(int index);
CeString timeDefaultModeText(int index);
// The list text of time default mode m (1..48): the half-hour formatted by
// GetTimeFormatW (user default locale, no seconds); mode 0 gives
// timeDefaultModeText(0); anything else an empty string.
CeString timeDefaultModeListText(int mode);

// Column alignment: Priority, Number, Check and Selection are centred (list
// view format 2 = LVCFMT_CENTER), the others left-aligned (format 0).
bool isCentredColumn(FieldType type);
int columnFormat(FieldType type);

// New-item defaults. `now` is the current local time (GetLocalTime).
// Time default mode 0 = now; m in 1..48 = (m-1) half-hours after midnight
// through an OLE automation date, minute forced to 0 (odd m) or 30 (even m).
SYSTEMTIME newItemTime(int timeDefaultMode, const SYSTEMTIME& now);
// Date default mode 0 today, 1 +1 day, 2 +7 days, 3 +28 days (through OLE
// automation dates), 4 the year plus one (29 February stays), other: today.
SYSTEMTIME newItemDate(int dateDefaultMode, const SYSTEMTIME& now);
// Fills `item` as the list window's add command does before the item editor
// opens it: backColor none, one slot per field with storedType = field type,
// choice = defaultChoice, time from the default modes, empty text.
void initNewItem(ListItem& item, const FieldDef* fields, int fieldCount, const SYSTEMTIME& now);
// The same with the current local time; gives the item the document's next
// serial number. The item is not added to the document.
ListItem newListItem(ListDocument& doc);
