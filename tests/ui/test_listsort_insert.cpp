// Sorting a list's items: text by the locale's sort keys, and adding to a
// sorted list by searching for the new item's place instead of sorting again.
#include <windows.h>

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "document/ValueText.h"
#include "listwindow/ListSort.h"
#include "tests/framework/ZvTest.h"

namespace {

// A deterministic stream of small numbers, so that keys repeat often and
// the tie rules decide many places.
struct Dice {
    uint32_t state;
    int Roll(int sides) {
        state = state * 1103515245u + 12345u;
        return int((state >> 16) % (uint32_t)sides);
    }
};

const wchar_t* const kWords[] = {L"apple", L"Apple", L"APPLE", L"b", L"B", L"\x00e9t\x00e9", L"ete",
                                 L"", L"co-op", L"coop", L"10", L"9"};
const wchar_t* const kNumbers[] = {L"1", L"1.0", L"-2", L"10", L"2.5", L"", L"abc", L"0", L"-0", L"1e2"};

// One cell of `type` with a value drawn from a small pool.
FieldValue CellOf(FieldType type, Dice& dice) {
    FieldValue value;
    value.storedType = type;
    switch (type) {
    case FieldType::Text: value.text = kWords[dice.Roll(12)]; break;
    case FieldType::Number: value.text = kNumbers[dice.Roll(10)]; break;
    case FieldType::Priority: {
        // The three level texts in any case, and one that is none of them.
        int pick = dice.Roll(4);
        std::wstring text = pick < 3 ? cachedChoiceText(FieldType::Priority, pick) : L"soon";
        if (dice.Roll(2)) CharUpperW(&text[0]);
        value.text = text.c_str();
        value.choice = pick;
        break;
    }
    case FieldType::Check: value.choice = dice.Roll(3) == 2 ? 5 : dice.Roll(2); break;
    default: value.time = {WORD(2020 + dice.Roll(2)), WORD(1 + dice.Roll(2)), 0, WORD(1 + dice.Roll(3)),
                           WORD(dice.Roll(2) * 12), 0, 0, 0};
    }
    return value;
}

ListItem ItemOf(FieldType type, uint32_t serial, Dice& dice) {
    ListItem item;
    item.fieldCount = 1;
    // Now and then an item without the cell: it sorts as empty.
    if (dice.Roll(9) != 0) item.values.push_back(CellOf(type, dice));
    item.serial = serial;
    return item;
}

ListItem OneCell(FieldType type, const wchar_t* text, uint32_t serial) {
    ListItem item;
    item.values.resize(1);
    item.values[0].storedType = type;
    item.values[0].text = text;
    item.serial = serial;
    return item;
}

std::vector<ListItem*> Rows(ItemList& items) {
    std::vector<ListItem*> rows;
    for (ListItem& item : items) rows.push_back(&item);
    return rows;
}

std::vector<uint32_t> SerialsOf(const ItemList& items) {
    std::vector<uint32_t> serials;
    for (const ListItem& item : items) serials.push_back(item.serial);
    return serials;
}

void CheckInsertMatchesSort(FieldType type, bool flag, uint32_t seed, int count, const char* file, int line) {
    Dice dice = {seed};
    ItemList items;
    uint32_t serial = 0;
    // Serials not in list order, as after earlier sorts and adds.
    for (int i = 0; i < count; ++i) items.push_back(ItemOf(type, (uint32_t)dice.Roll(1000) * 64 + serial++ % 64, dice));
    CHECK_AT(sortListItems(items, 0, type, flag), file, line);

    for (int round = 0; round < 12; ++round) {
        ListItem added = ItemOf(type, 1000u * 64u + (uint32_t)round, dice);
        size_t place = sortedInsertIndex(Rows(items), added, 0, type, flag);
        CHECK_AT(place <= items.size(), file, line);
        if (place > items.size()) return;

        ItemList sorted = items;
        sorted.push_back(added);
        sortListItems(sorted, 0, type, flag);

        auto before = items.begin();
        std::advance(before, (long)place);
        items.insert(before, added);
        CHECK_AT(SerialsOf(items) == SerialsOf(sorted), file, line);
    }
}

}  // namespace

// Text columns must order exactly as CompareStringW (system locale, case
// ignored) orders the same texts.
TEST_CASE(Ui_List_TextSortMatchesCompareString) {
    const wchar_t* texts[] = {L"apple", L"Apple", L"APPLE", L"apples", L"b", L"B", L"\x00e9t\x00e9", L"ete",
                              L"\x00c9T\x00c9", L"co-op", L"coop", L"co op", L"it's", L"its", L"10", L"9",
                              L"", L" ", L"a1", L"a01", L"zebra", L"\x00c5ngstr\x00f6m", L"Zulu"};
    for (const wchar_t* a : texts) {
        for (const wchar_t* b : texts) {
            ItemList items = {OneCell(FieldType::Text, a, 0), OneCell(FieldType::Text, b, 1)};
            // Flag 1 sorts text ascending; equal texts keep the later item first.
            sortListItems(items, 0, FieldType::Text, true);
            bool aFirst = CompareStringW(LOCALE_SYSTEM_DEFAULT, NORM_IGNORECASE, a, -1, b, -1) == CSTR_LESS_THAN;
            if (items.front().serial != (aFirst ? 0u : 1u))
                zvtest::Fail(ZV_HERE, "order of " + zvtest::Show(a) + " and " + zvtest::Show(b));
        }
    }
}

// On every kind of comparator and both direction flags the place found for a
// new item must give exactly the order a full stable sort gives.
TEST_CASE(Ui_List_SortedInsertMatchesFullSort) {
    const FieldType types[] = {FieldType::Text,  FieldType::Priority, FieldType::Number,
                               FieldType::Check, FieldType::Date,     FieldType::DateTime};
    for (FieldType type : types) {
        for (bool flag : {false, true}) {
            CheckInsertMatchesSort(type, flag, 7u + (uint32_t)type, 40, ZV_HERE);
            CheckInsertMatchesSort(type, flag, 99u, 1, ZV_HERE);
            CheckInsertMatchesSort(type, flag, 5u, 0, ZV_HERE);
        }
    }
}

// A number read as NaN compares with nothing: no strict order to search,
// so the caller is told to sort the whole list.
TEST_CASE(Ui_List_SortedInsertRefusesNaN) {
    ItemList items = {OneCell(FieldType::Number, L"3", 0), OneCell(FieldType::Number, L"nan", 1),
                      OneCell(FieldType::Number, L"1", 2)};
    CHECK(!sortListItems(items, 0, FieldType::Number, false));
    items.pop_front();
    ListItem added = OneCell(FieldType::Number, L"NaN", 9);
    CHECK_EQ(sortedInsertIndex(Rows(items), added, 0, FieldType::Number, false), SIZE_MAX);
}
