// Sorting the items of a list by one column. No window is involved: the
// list window calls this and then shows the new order.
//
// The comparator follows the column's type: dates and times by their moment,
// priorities by rank (high 3, normal 2, low 1, anything else 0), numbers as
// read by wcstod, checks by value, everything else as text compared without
// regard to case in the system locale.
//
// The direction flag does not mean the same on every kind of column: on text
// and priority columns flag 1 sorts ascending and flag 0 descending, on
// number, check and date columns flag 0 sorts ascending. Lists saved by
// earlier versions carry flags meant this way, so the asymmetry stays.
// Equal keys keep a fixed order by creation (serial number): text and
// priority columns put the earlier item first with flag 0 and the later one
// first with flag 1; number and check columns always the earlier one first;
// date columns always the later one first.
#pragma once
#include <cstddef>
#include <list>
#include <vector>

#include "document/ListDocument.h"

enum class SortKind { Moment, Rank, Number, Check, Text };

SortKind sortKindOf(FieldType type);

// Reorders `items` by cell `column` with the comparator of `comparatorType`
// and the direction flag. A stable merge sort; items whose cell is missing
// sort as empty. Returns whether every key was comparable (no number read
// as NaN): only then is the order a strict one that sortedInsertIndex can
// search.
bool sortListItems(ItemList& items, int column, FieldType comparatorType, bool directionFlag);

// The index at which `item` lands when `rows`, already in the order
// sortListItems gives with the same column, comparator and flag (and a
// strict one: it returned true), is sorted again with `item` appended. The
// item must be newer (a higher serial) than every row. Binary search with
// the sort's own comparator and tie rules, so adding one item to a sorted
// list of ten thousand compares some fourteen times instead of sorting.
// Returns SIZE_MAX when the item's own key is not comparable (NaN): the
// caller then sorts the whole list.
size_t sortedInsertIndex(const std::vector<ListItem*>& rows, const ListItem& item, int column,
                         FieldType comparatorType, bool directionFlag);
