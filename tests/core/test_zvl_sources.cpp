// zvl's readable sources: sample lists and templates, and icons drawn as text.
#include <string>
#include <vector>

#include "tests/framework/ZvTest.h"
#include "tools/zvl/IconText.h"
#include "tools/zvl/SampleSource.h"
#include "tools/zvl/ZvlDescribe.h"

namespace {

// A row as its cells read: dates and times "y-m-d h:m", choices their number,
// other values their text; then the row colour.
std::wstring Row(const ListDocument& doc, int index) {
    auto item = doc.items.begin();
    std::advance(item, index);
    std::wstring out;
    for (const FieldValue& v : item->values) {
        const SYSTEMTIME& t = v.time;
        if (v.storedType == FieldType::Date || v.storedType == FieldType::Time || v.storedType == FieldType::DateTime)
            out += std::to_wstring(t.wYear) + L"-" + std::to_wstring(t.wMonth) + L"-" + std::to_wstring(t.wDay) + L" " +
                   std::to_wstring(t.wHour) + L":" + std::to_wstring(t.wMinute);
        else out += IsChoiceType(v.storedType) ? std::to_wstring(v.choice) : std::wstring(v.text.c_str());
        out += L"; ";
    }
    wchar_t colour[16];
    swprintf(colour, 16, L"%06X", (unsigned)item->backColor);
    return out + colour;
}

// Parses `text` and expects it refused with a message holding `part`.
void CheckRefused(const char* text, const wchar_t* part, const char* file, int line) {
    SampleSource source;
    std::wstring error;
    CHECK_AT(!ParseSampleSource(text, source, error), file, line);
    if (error.find(part) == std::wstring::npos) CHECK_EQ_AT(error, std::wstring(part), file, line);
}

const char kEveryType[] =
    "\xEF\xBB\xBF# every type\n"
    "kind: list\n"
    "icon: plane\n"
    "sort: When, descending\n"
    "columns:\n"
    "When   | Date      | in 4 weeks     | 60\n"
    "At     | Time      | 08:30          | 30\n"
    "Prio   | Priority  | high           | 20\n"
    "What   | Text      | something      | auto\n"
    "Paid   | YesNo     | no             | 30\n"
    "Cost   | Number    | -1.5           | 30\n"
    "Done   | Check     | x              | 24\n"
    "Leaves | DateTime  | tomorrow, 23:30| 90\n"
    "Share  | Selection |                | 40\n"
    "\n"
    "items:\n"
    "When | At | Prio | What | Paid | Cost | Done | Leaves | Share | @color\n"
    "2007-03-01 | 09:05 | low | a \\| b | yes | 12.50 | x | 2008-02-29 23:59 | 50% | red\n"
    "2007-12-25 | 00:00 | normal | caf\xC3\xA9 |  no | 3 |  | 2007-01-01 00:00 | cancelled | 0x123456\n"
    "2007-01-02 | 12:00 | high | short row |  |  |  | 2007-01-02 12:00\n";

}  // namespace

// Per field: type, date mode, time mode (08:30 is the 18th half hour of the
// day), default choice (the field editor lists "No" first and stores that row
// as choice 1) and width, from the source's columns. Rows in the order given;
// a time alone is on 30 December 1899; missing cells are empty text, choice
// 0, and for a Selection the empty choice 11.
TEST_CASE(Zvl_SampleSource_FieldsAndValues) {
    SampleSource source;
    std::wstring error;
    CHECK(ParseSampleSource(kEveryType, source, error));
    CHECK_EQ(error, std::wstring());
    const ListDocument& doc = source.doc;
    CHECK(!source.isTemplate);
    CHECK_EQ(source.icon, std::wstring(L"plane"));
    const wchar_t* kFields[] = {L"0 3 0 0 60", L"1 0 18 0 30", L"2 0 0 1 20", L"3 0 0 0 0",   L"4 0 0 1 30",
                                L"5 0 0 0 30", L"6 0 0 1 24",  L"7 1 48 0 90", L"8 0 0 11 40"};
    CHECK_EQ(doc.fieldCount(), 9);
    CHECK_EQ(doc.itemCount(), 3);
    if (doc.fieldCount() != 9 || doc.itemCount() != 3) return;
    auto n = [](int v) { return std::to_wstring(v); };
    for (int i = 0; i < 9; ++i) {
        const FieldDef& f = doc.fields[i];
        CHECK_EQ(n((int)f.type) + L" " + n(f.dateDefaultMode) + L" " + n(f.timeDefaultMode) + L" " +
                     n(f.defaultChoice) + L" " + n(f.columnWidth), std::wstring(kFields[i]));
    }
    CHECK_EQ((const wchar_t*)doc.fields[0].defaultText, dateDefaultModeText(3).c_str());
    CHECK_EQ((const wchar_t*)doc.fields[3].defaultText, L"something");
    CHECK_EQ((const wchar_t*)doc.fields[4].defaultText, choiceText(FieldType::YesNo, 0).c_str());
    CHECK_EQ(DefaultDescription(doc.fields[4]), std::wstring(choiceText(FieldType::YesNo, 0).c_str()));
    CHECK_EQ((const wchar_t*)doc.fields[5].defaultText, L"-1.5");
    // A date column sorted descending stores flag 1.
    CHECK_EQ(doc.sortColumn, 0);
    CHECK(doc.sortDescending);
    CHECK_EQ(Row(doc, 0), L"2007-3-1 0:0; 1899-12-30 9:5; 2; a | b; 1; 12.50; 1; 2008-2-29 23:59; 5; C9CEFF");
    CHECK_EQ(Row(doc, 1), L"2007-12-25 0:0; 1899-12-30 0:0; 0; caf\x00e9; 0; 3; 0; 2007-1-1 0:0; 13; 123456");
    CHECK_EQ(Row(doc, 2), L"2007-1-2 0:0; 1899-12-30 12:0; 1; short row; 0; ; 0; 2007-1-2 12:0; 11; FFFFFFFF");
    CHECK_EQ((int)doc.items.front().values[0].time.wDayOfWeek, 4);  // a Thursday
    CHECK_EQ(doc.items.back().ordinal, 2);
    for (const ListItem& item : doc.items)
        for (int i = 0; i < 9; ++i) CHECK_EQ((int)item.values[i].storedType, (int)doc.fields[i].type);
}

TEST_CASE(Zvl_SampleSource_SortFlagFollowsColumnType) {
    // Text columns: flag 1 sorts ascending; number columns: flag 0 does.
    const char text[] = "kind: list\nsort: Name, ascending\ncolumns:\nName | Text\nQty | Number\n";
    const char number[] = "kind: list\nsort: Qty, ascending\ncolumns:\nName | Text\nQty | Number\n";
    SampleSource a, b;
    std::wstring error;
    CHECK(ParseSampleSource(text, a, error));
    CHECK(ParseSampleSource(number, b, error));
    CHECK_EQ(a.doc.sortColumn, 0);
    CHECK(a.doc.sortDescending);
    CHECK_EQ(b.doc.sortColumn, 1);
    CHECK(!b.doc.sortDescending);
    CHECK(SortIsAscending(FieldType::Text, true));
    CHECK(!SortIsAscending(FieldType::DateTime, true));
    CHECK(SortIsAscending(FieldType::Check, false));
}

TEST_CASE(Zvl_SampleSource_Refusals) {
    CheckRefused("columns:\nA | Text\n", L"kind", ZV_HERE);
    CheckRefused("kind: lists\n", L"line 1: kind is list or template", ZV_HERE);
    CheckRefused("kind: list\ncolour: red\n", L"line 2: unknown setting", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Txt\n", L"line 3: \"Txt\" is not a field type", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Date | soon\n", L"line 3: \"soon\" is not a date default", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Time | 08:15\n", L"half hour", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Number | 1a\n", L"not a number", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Text | | wide\n", L"not a width", ZV_HERE);
    CheckRefused("kind: list\nitems:\n", L"items: comes before columns:", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Text\nitems:\nB\n", L"line 5: the first line of items:", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Text\nitems:\nA\nx | y\n", L"line 6: the row has 2 cells", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Date\nitems:\nA\n2007-02-29\n", L"line 6: A: \"2007-02-29\" is not a date",
                 ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Priority\nitems:\nA\nurgent\n", L"not a priority", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Selection\nitems:\nA\n15%\n", L"not a selection", ZV_HERE);
    CheckRefused("kind: list\ncolumns:\nA | Text\nitems:\nA | @color\nx | pink\n", L"not a row colour", ZV_HERE);
    CheckRefused("kind: list\nsort: B, ascending\ncolumns:\nA | Text\n", L"not a column", ZV_HERE);
    CheckRefused("kind: template\ncolumns:\nA | Text\nitems:\nA\nx\n", L"a template has no items", ZV_HERE);
    CheckRefused("kind: template\nsort: A, ascending\ncolumns:\nA | Text\n", L"a template is not sorted", ZV_HERE);
    std::string many = "kind: list\ncolumns:\n";
    for (int i = 0; i < 51; ++i) many += "F" + std::to_string(i) + " | Text\n";
    CheckRefused(many.c_str(), L"line 53: a list has at most 50 fields", ZV_HERE);
}

TEST_CASE(Zvl_IconText_RendersPlanes) {
    const char art[] =
        "# two by two\n"
        "palette\n"
        ". none\n"
        "r #ff0000\n"
        "b 0000ff80\n"
        "pixels\n"
        "r.\n"
        "bb\n";
    PlanarImage image;
    std::wstring error;
    CHECK(RenderIconText(art, 2, image, error));
    CHECK_EQ(image.width, 2);
    CHECK_EQ(image.height, 2);
    if (image.IsEmpty()) return;
    using Plane = std::vector<unsigned char>;
    CHECK_BYTES(Plane(image.red, image.red + 4), (Plane{255, 0, 0, 0}));
    CHECK_BYTES(Plane(image.green, image.green + 4), (Plane{0, 0, 0, 0}));
    CHECK_BYTES(Plane(image.blue, image.blue + 4), (Plane{0, 0, 255, 255}));
    CHECK_BYTES(Plane(image.alpha, image.alpha + 4), (Plane{255, 0, 128, 128}));
}

TEST_CASE(Zvl_IconText_DoublesWithScale2x) {
    // A slanted edge doubled by the Scale2x rules: a corner takes the key of
    // two agreeing neighbours, so the edge climbs in finer steps (2, 3, 3,
    // 5, 6, 6 pixels) than plain pixel doubling would give (2, 2, 4, 4, 6, 6).
    const char art[] = "palette\n. none\nk 000000\npixels\nk..\nkk.\nkkk\n";
    PlanarImage image;
    std::wstring error;
    CHECK(RenderIconText(art, 6, image, error));
    CHECK_EQ(image.width, 6);
    if (image.IsEmpty()) return;
    const char* want[6] = {"kk....", "kkk...", "kkk...", "kkkkk.", "kkkkkk", "kkkkkk"};
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x) CHECK_EQ((int)image.alpha[y * 6 + x], want[y][x] == 'k' ? 255 : 0);
    // A grid given for the large size is used as it is.
    const char both[] = "palette\n. none\nk 000000\npixels\nk\npixels 32:\n.k\nk.\n";
    CHECK(RenderIconText(both, 2, image, error));
    if (!image.IsEmpty()) CHECK_EQ((int)image.alpha[0], 0);
}

TEST_CASE(Zvl_IconText_Refusals) {
    const struct {
        const char* art;
        int size;
        const wchar_t* part;
    } kRows[] = {{"palette\n. none\npixels\n..\n.\n", 2, L"square"},
                 {"palette\n. none\npixels\n.x\n..\n", 2, L"'x'"},
                 {"palette\n. blue\npixels\n.\n", 1, L"line 2"},
                 {"palette\n. none\npixels\n..\n..\n", 16, L"cannot make 16"}};
    for (const auto& row : kRows) {
        PlanarImage image;
        std::wstring error;
        CHECK(!RenderIconText(row.art, row.size, image, error));
        if (error.find(row.part) == std::wstring::npos) CHECK_EQ(error, std::wstring(row.part));
        CHECK(image.IsEmpty());
    }
}
