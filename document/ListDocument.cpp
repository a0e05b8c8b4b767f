#include "document/ListDocument.h"

#include <oleauto.h>

#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "document/DocStrings.h"
#include "document/ValueText.h"

bool IsChoiceType(FieldType t) {
    return t == FieldType::Priority || t == FieldType::YesNo || t == FieldType::Check || t == FieldType::Selection;
}

bool IsTimeType(FieldType t) { return t == FieldType::Date || t == FieldType::Time || t == FieldType::DateTime; }

static void CopyCapped(wchar_t* dest, const wchar_t* text, int count) {
    int n = 0;
    if (text) {
        int limit = (count < 0 || count > kFieldTextCapacity - 1) ? kFieldTextCapacity - 1 : count;
        while (n < limit && text[n]) {
            dest[n] = text[n];
            ++n;
        }
    }
    dest[n] = 0;
}

void FieldDef::SetName(const wchar_t* text, int count) { CopyCapped(name, text, count); }
void FieldDef::SetDefaultText(const wchar_t* text, int count) { CopyCapped(defaultText, text, count); }

void ListDocument::Clear() {
    path.Release();
    fields.clear();
    items.clear();
    icon.Release();
    sortColumn = -1;
    sortDescending = false;
    nextSerial = 0;
}

CeString fieldTypeName(FieldType type) { return CeString(cachedTypeName(type)); }

CeString fieldDisplayName(const FieldDef& field) {
    return field.name[0] ? CeString(field.name) : fieldTypeName(field.type);
}

int choiceCount(FieldType type) {
    switch (type) {
    case FieldType::Priority: return 3;
    case FieldType::YesNo: return 2;
    case FieldType::Check: return 2;
    case FieldType::Selection: return kSelectionChoiceCount;
    default: return 0;
    }
}

UINT choiceTextId(FieldType type, int index) {
    if (index < 0 || index >= choiceCount(type)) return 0;
    switch (type) {
    case FieldType::Priority: {
        // Not in value order: the stored values keep their old meaning.
        static const UINT ids[3] = {docstr::kPriorityNormal, docstr::kPriorityHigh, docstr::kPriorityLow};
        return ids[index];
    }
    case FieldType::YesNo: return index == 1 ? docstr::kYes : docstr::kNo;
    case FieldType::Check: return index == 1 ? docstr::kChecked : docstr::kUnchecked;
    case FieldType::Selection:
        return index <= 10 ? docstr::kFirstSelection + index : docstr::kFirstExtraSelection + (index - 11);
    default: return 0;
    }
}

CeString choiceText(FieldType type, int index) { return CeString(cachedChoiceText(type, index)); }

static CeString LoadText(UINT id) { return CeString(ResText(id).c_str()); }

CeString dateDefaultModeText(int index) {
    if (index < 0 || index >= kDateDefaultModeCount) return CeString();
    return LoadText(docstr::kFirstDateMode + index);
}

CeString timeDefaultModeText(int index) { return index == 0 ? LoadText(docstr::kTimeModeNow) : CeString(); }

// A time of day from half-hour mode m (1..48): (m - 1) half-hours after
// midnight as an OLE automation date. The conversion may round, so the
// minute is set afterwards from the mode itself.
static SYSTEMTIME HalfHourTime(int mode) {
    SYSTEMTIME t = {};
    if (!VariantTimeToSystemTime((mode - 1) * 0.020833333333333332, &t)) t = SYSTEMTIME{};
    t.wMinute = (mode % 2) ? 0 : 30;
    return t;
}

CeString timeDefaultModeListText(int mode) {
    if (mode == 0) return timeDefaultModeText(0);
    if (mode < 1 || mode >= kTimeDefaultModeCount) return CeString();
    SYSTEMTIME t = HalfHourTime(mode);
    wchar_t buffer[64];
    int n = GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &t, nullptr, buffer, 64);
    return CeString(buffer, n > 0 ? n - 1 : 0);
}

bool isCentredColumn(FieldType type) {
    return type == FieldType::Priority || type == FieldType::Number || type == FieldType::Check ||
           type == FieldType::Selection;
}

int columnFormat(FieldType type) { return isCentredColumn(type) ? 2 : 0; }

SYSTEMTIME newItemTime(int timeDefaultMode, const SYSTEMTIME& now) {
    if (timeDefaultMode == 0) return now;
    return HalfHourTime(timeDefaultMode);
}

static SYSTEMTIME AddDays(const SYSTEMTIME& now, double days) {
    SYSTEMTIME copy = now;
    double variant = 0;
    SYSTEMTIME result = now;
    if (SystemTimeToVariantTime(&copy, &variant) && VariantTimeToSystemTime(variant + days, &result)) return result;
    return now;
}

SYSTEMTIME newItemDate(int dateDefaultMode, const SYSTEMTIME& now) {
    switch (dateDefaultMode) {
    case 1: return AddDays(now, 1.0);
    case 2: return AddDays(now, 7.0);
    case 3: return AddDays(now, 28.0);
    case 4: {
        // Only the year moves: 29 February stays 29 February.
        SYSTEMTIME next = now;
        next.wYear = (WORD)(next.wYear + 1);
        return next;
    }
    default: return now;
    }
}

void initNewItem(ListItem& item, const FieldDef* fields, int fieldCount, const SYSTEMTIME& now) {
    if (fieldCount < 0) fieldCount = 0;
    if (fieldCount > kMaxFields) fieldCount = kMaxFields;
    item.backColor = kNoBackColor;
    item.fieldCount = fieldCount;
    item.values.assign(size_t(fieldCount), FieldValue());
    for (int i = 0; i < fieldCount; ++i) {
        const FieldDef& field = fields[i];
        FieldValue& value = item.values[size_t(i)];
        value.storedType = field.type;
        value.choice = field.defaultChoice;
        SYSTEMTIME timeOfDay = {};
        if (field.type == FieldType::Time || field.type == FieldType::DateTime) {
            timeOfDay = newItemTime(field.timeDefaultMode, now);
            value.time = timeOfDay;
        }
        if (field.type == FieldType::Date || field.type == FieldType::DateTime) {
            value.time = newItemDate(field.dateDefaultMode, now);
            if (field.type == FieldType::DateTime) {
                value.time.wHour = timeOfDay.wHour;
                value.time.wMinute = timeOfDay.wMinute;
            }
        }
    }
}

ListItem newListItem(ListDocument& doc) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    ListItem item;
    initNewItem(item, doc.fields.data(), doc.fieldCount(), now);
    item.serial = doc.nextSerial++;
    item.ordinal = doc.itemCount();
    return item;
}
