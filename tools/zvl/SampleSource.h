// A readable source for a list or template file (UTF-8 text), turned into a
// document by `zvl make` and `zvl samples`:
//
//   # comment lines start with "#"
//   kind: list                  or: template
//   icon: travel                icons\travel.txt (IconText.h), or a .tga file
//   sort: Departs, ascending    a field name and the order the rows are in
//
//   columns:
//   # name    | type     | default        | width
//   Flight    | Text     |                | 60
//   Departs   | DateTime | tomorrow, 08:00| 100
//
//   items:
//   Flight    | Departs          | @color
//   LH 401    | 2007-03-12 07:45 | green
//
// Cells are separated by "|" and trimmed; "\|" is a bar inside a cell. The
// first line of the items block names the columns (it must match the
// fields) and may end with "@color", a row colour: blue, green, red, yellow
// (the list window's four highlights) or a COLORREF as 0xBBGGRR. Rows are
// stored in the order given, which is the order the list window saves.
//
// Values by type: Date 2007-03-31; Time 14:30; DateTime 2007-03-31 14:30;
// Priority high / normal (or empty) / low; YesNo yes / no (or empty); Check
// x (or yes) / empty (or no); Selection 0% to 100% in steps of 10, on hold, cancelled, empty
// (the empty choice 11) or #N for choice N; Text and Number as written.
// Defaults: Date today / tomorrow / in 1 week / in 4 weeks / in 1 year;
// Time now or a half hour (08:30); DateTime "DATE, TIME"; choices as values;
// Text and Number the default text. Widths in pixels, or auto.
#pragma once
#include <string>

#include "document/ListDocument.h"

struct SampleSource {
    bool isTemplate = false;
    std::wstring icon;  // as written after "icon:", empty for none
    ListDocument doc;   // fields, items in order, sort column and flag
};

// Parses `utf8`. False with "line N: reason" in `error` when it is malformed.
// Default texts are taken from the loaded language module, as the field
// editor stores them.
bool ParseSampleSource(const std::string& utf8, SampleSource& source, std::wstring& error);
