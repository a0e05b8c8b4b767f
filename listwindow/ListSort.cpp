#include "listwindow/ListSort.h"

#include <oleauto.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cwchar>
#include <string>
#include <vector>

#include "document/ValueText.h"

SortKind sortKindOf(FieldType type) {
    switch (type) {
    case FieldType::Date:
    case FieldType::Time:
    case FieldType::DateTime: return SortKind::Moment;
    case FieldType::Priority: return SortKind::Rank;
    case FieldType::Number: return SortKind::Number;
    case FieldType::Check: return SortKind::Check;
    default: return SortKind::Text;
    }
}

namespace {

using ItemIterator = ItemList::iterator;

struct SortEntry {
    double key;            // every kind but Text
    std::string textKey;   // Text: the system locale's sort key, ignoring case
    uint32_t serial;
    ItemIterator item;
};

constexpr DWORD kTextCompareFlags = NORM_IGNORECASE;

// The sort key orders texts exactly as CompareStringW with the same locale
// and flags does, but is made once per item instead of once per comparison
// (a text sort of ten thousand items compares some 130,000 times).
std::string TextKeyOf(const wchar_t* text) {
    // Most keys fit a small buffer: one call instead of asking the size first.
    WCHAR buffer[128];
    int size = LCMapStringW(LOCALE_SYSTEM_DEFAULT, LCMAP_SORTKEY | kTextCompareFlags, text, -1, buffer,
                            (int)sizeof buffer);
    if (size > 0) return std::string((const char*)buffer, (size_t)size);
    size = LCMapStringW(LOCALE_SYSTEM_DEFAULT, LCMAP_SORTKEY | kTextCompareFlags, text, -1, nullptr, 0);
    if (size <= 0) return std::string();
    std::string key((size_t)size, '\0');
    LCMapStringW(LOCALE_SYSTEM_DEFAULT, LCMAP_SORTKEY | kTextCompareFlags, text, -1, (LPWSTR)&key[0], size);
    return key;
}

bool SameIgnoringCase(const wchar_t* a, const wchar_t* b) {
    return CompareStringW(LOCALE_SYSTEM_DEFAULT, kTextCompareFlags, a, -1, b, -1) == CSTR_EQUAL;
}

// Priority texts rank by meaning, not by spelling: the three choice texts of
// the language module, matched without regard to case.
double RankOf(const wchar_t* text) {
    if (SameIgnoringCase(text, cachedChoiceText(FieldType::Priority, 1))) return 3;  // high
    if (SameIgnoringCase(text, cachedChoiceText(FieldType::Priority, 0))) return 2;  // normal
    if (SameIgnoringCase(text, cachedChoiceText(FieldType::Priority, 2))) return 1;  // low
    return 0;
}

double MomentOf(const SYSTEMTIME& time) {
    SYSTEMTIME copy = time;
    double moment = 0;
    if (!SystemTimeToVariantTime(&copy, &moment)) return 0;
    return moment;
}

double KeyOf(const FieldValue& value, SortKind kind) {
    switch (kind) {
    case SortKind::Moment: return MomentOf(value.time);
    case SortKind::Rank: return RankOf(value.text.c_str());
    case SortKind::Number: return wcstod(value.text.c_str(), nullptr);
    case SortKind::Check: return value.choice;
    case SortKind::Text: return 0;
    }
    return 0;
}

int CompareKeys(const SortEntry& a, const SortEntry& b, SortKind kind) {
    if (kind == SortKind::Text) {
        int r = a.textKey.compare(b.textKey);
        return r < 0 ? -1 : r > 0 ? 1 : 0;
    }
    return a.key < b.key ? -1 : a.key > b.key ? 1 : 0;
}

// Whether `a` goes before `b`.
bool Precedes(const SortEntry& a, const SortEntry& b, SortKind kind, bool flag) {
    int c = CompareKeys(a, b, kind);
    bool textual = kind == SortKind::Text || kind == SortKind::Rank;
    bool descending = textual ? !flag : flag;
    if (c != 0) return descending ? c > 0 : c < 0;
    bool laterFirst = textual ? flag : kind == SortKind::Moment;
    return laterFirst ? a.serial > b.serial : a.serial < b.serial;
}

const FieldValue& CellOf(const ListItem& item, int column) {
    static const FieldValue kEmpty;
    return (size_t)column < item.values.size() ? item.values[(size_t)column] : kEmpty;
}

SortEntry EntryOf(const ListItem& item, int column, SortKind kind, ItemIterator position) {
    const FieldValue& value = CellOf(item, column);
    return {KeyOf(value, kind), kind == SortKind::Text ? TextKeyOf(value.text.c_str()) : std::string(), item.serial,
            position};
}

}  // namespace

bool sortListItems(ItemList& items, int column, FieldType comparatorType, bool directionFlag) {
    if (column < 0) return false;
    SortKind kind = sortKindOf(comparatorType);
    std::vector<SortEntry> entries;
    entries.reserve(items.size());
    bool strict = true;
    for (ItemIterator it = items.begin(); it != items.end(); ++it) {
        entries.push_back(EntryOf(*it, column, kind, it));
        if (std::isnan(entries.back().key)) strict = false;
    }
    if (entries.size() < 2) return strict;
    // The merge sort moves indexes, not the entries with their text keys.
    std::vector<uint32_t> order(entries.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = (uint32_t)i;
    std::stable_sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) {
        return Precedes(entries[a], entries[b], kind, directionFlag);
    });
    // Relink the nodes in the new order; no item is copied or moved in memory.
    for (uint32_t i : order) items.splice(items.end(), items, entries[i].item);
    return strict;
}

size_t sortedInsertIndex(const std::vector<ListItem*>& rows, const ListItem& item, int column,
                         FieldType comparatorType, bool directionFlag) {
    if (column < 0) return SIZE_MAX;
    SortKind kind = sortKindOf(comparatorType);
    SortEntry added = EntryOf(item, column, kind, ItemIterator());
    if (std::isnan(added.key)) return SIZE_MAX;
    // The first row that the new item precedes; every row before it
    // precedes the new item, as the order is strict.
    size_t low = 0, high = rows.size();
    while (low < high) {
        size_t middle = low + (high - low) / 2;
        SortEntry row = EntryOf(*rows[middle], column, kind, ItemIterator());
        if (Precedes(row, added, kind, directionFlag))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}
