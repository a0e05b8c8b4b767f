// The list and template parser, written once for any byte source: the
// in-memory ByteReader of ListFile.h and the one-call-per-read file reader
// of ListFileUnbuffered.cpp. Private to document/.
//
// A source provides: bool ChunkHeader(uint32_t& size, uint32_t& tag) (false
// at the end of the data), size_t Bytes(void*, size_t) (zero-fills what is
// missing, returns what was read), void Skip(size_t), bool AtEnd(),
// size_t Remaining(), and bool Overrun(): whether anything asked for ran
// past the end of the data (a chunk cut short).
#pragma once
#include <cstring>
#include <cwchar>

#include "document/ListFile.h"
#include "document/ValueText.h"

namespace listparse {

// The bytes of a text payload, cut to `capacity` characters (with the
// terminator) and stopped at the first NUL; the rest of the payload is
// skipped. Returns the length.
template <class Source>
int ReadText(Source& in, uint32_t size, wchar_t* out, int capacity) {
    size_t chars = size / 2;
    size_t take = chars < size_t(capacity - 1) ? chars : size_t(capacity - 1);
    size_t got = in.Bytes(out, take * 2);
    in.Skip(size - got);
    size_t n = 0;
    size_t have = got / 2;
    while (n < have && out[n]) ++n;
    out[n] = 0;
    return (int)n;
}

// A fixed-size payload read into `out` (zeros where the payload is short),
// the excess skipped.
template <class Source>
void ReadFixed(Source& in, uint32_t size, void* out, size_t outSize) {
    std::memset(out, 0, outSize);
    size_t take = size < outSize ? size : outSize;
    size_t got = in.Bytes(out, take);
    in.Skip(size - got);
}

template <class Source>
int32_t ReadInt(Source& in, uint32_t size) {
    int32_t v = 0;
    ReadFixed(in, size, &v, sizeof v);
    return v;
}

// The icon: 8-byte size payload, then four plane chunks whatever their tags.
// Planes larger than the data left in the file are not allocated; an icon
// whose planes are incomplete is dropped.
template <class Source>
void ReadIcon(Source& in, uint32_t size, PlanarImage& icon) {
    int32_t dims[2];
    ReadFixed(in, size, dims, sizeof dims);
    icon.Release();
    int w = dims[0], h = dims[1];
    bool usable = w > 0 && h > 0 && w <= kMaxImageSide && h <= kMaxImageSide &&
                  size_t(w) * size_t(h) * 4 <= in.Remaining();
    if (usable && !icon.Allocate(w, h)) usable = false;
    size_t planeSize = usable ? size_t(w) * size_t(h) : 0;
    unsigned char* planes[4] = {icon.red, icon.green, icon.blue, icon.alpha};
    bool complete = usable;
    for (int p = 0; p < 4; ++p) {
        uint32_t planeBytes = 0, tag = 0;
        if (!in.ChunkHeader(planeBytes, tag)) {
            complete = false;
            break;
        }
        size_t take = planeBytes < planeSize ? planeBytes : planeSize;
        size_t got = usable ? in.Bytes(planes[p], take) : 0;
        if (got < planeSize) complete = false;
        in.Skip(planeBytes - got);
    }
    if (!complete) icon.Release();
}

// Reads the list-wide chunks and the field definitions; returns how many
// fields were read to their end marker (fieldCount for a whole section; the
// caller also checks Overrun()), or -1 when the data ends before the first
// field starts.
template <class Source>
int ReadHeaderChunks(Source& in, FieldDef* fields, int fieldCount, PlanarImage& icon, ViewState& view) {
    uint32_t size = 0, tag = 0;
    // List-wide chunks, up to the first field start.
    for (;;) {
        // A list without fields has no field start to end this section.
        if (!in.ChunkHeader(size, tag)) return fieldCount == 0 && !in.Overrun() ? 0 : -1;
        if (tag == kTagFieldStart) break;
        if (tag == kTagIcon) {
            ReadIcon(in, size, icon);
        } else if (tag == kTagViewState) {
            ReadFixed(in, size, &view, sizeof view);
        } else {
            in.Skip(size);
        }
    }
    // Field definitions, each ended by 1234.
    for (int f = 0; f < fieldCount; ++f) {
        FieldDef& field = fields[f];
        field.defaultText[0] = 0;
        field.columnState = 0;
        for (;;) {
            if (!in.ChunkHeader(size, tag)) return f;
            if (tag == kTagFieldEnd) break;
            switch (tag) {
            case kTagColumnWidth: field.columnWidth = ReadInt(in, size); break;
            case kTagFieldType: field.type = FieldType(ReadInt(in, size)); break;
            case kTagDefaultText: ReadText(in, size, field.defaultText, kFieldTextCapacity); break;
            case kTagFieldName: ReadText(in, size, field.name, kFieldTextCapacity); break;
            case kTagDateMode: field.dateDefaultMode = ReadInt(in, size); break;
            case kTagTimeMode: field.timeDefaultMode = ReadInt(in, size); break;
            case kTagDefaultChoice: field.defaultChoice = ReadInt(in, size); break;
            case kTagFieldStart: break;  // the start marker carries nothing
            default: in.Skip(size); break;
            }
            if (in.Overrun()) return f;
        }
    }
    return fieldCount;
}

// One value chunk into `value`; the tag becomes the stored type.
template <class Source>
void ReadValue(Source& in, uint32_t size, uint32_t tag, FieldValue& value, const TextLayout& layout) {
    value.storedType = FieldType(int32_t(tag));
    switch (tag) {
    case 0:
    case 1:
    case 7:
        ReadFixed(in, size, &value.time, sizeof value.time);
        buildDisplayText(value, value.storedType, layout);
        break;
    case 2:
    case 4:
    case 6:
    case 8:
        value.choice = ReadInt(in, size);
        buildDisplayText(value, value.storedType, layout);
        break;
    case 3:
    case 5: {
        wchar_t text[CellText::kCapacity];
        int n = ReadText(in, size, text, CellText::kCapacity);
        value.text.Assign(text, n);
        break;
    }
    default:
        in.Skip(size);  // unknown: skipped, text left as it was
        break;
    }
}

// What memory an item costs once read: its list node and its cells, as the
// item pool rounds them. Texts beyond the inline part are added per cell.
inline size_t PooledBytes(size_t bytes) { return (bytes + 15) / 16 * 16; }
inline size_t ItemRecordCost(int fieldCount) {
    return PooledBytes(sizeof(ListItem) + 2 * sizeof(void*)) + PooledBytes(size_t(fieldCount) * sizeof(FieldValue));
}

// What reading the items would cost, walked over the chunk headers alone
// (a copy of the source, nothing allocated): lets a reader refuse a flood
// of tiny items before it takes the memory, not after.
template <class Source>
size_t ItemsCost(Source in, int fieldCount, uint32_t itemCount, size_t stopAbove) {
    const size_t recordCost = ItemRecordCost(fieldCount);
    size_t cost = 0;
    uint32_t size = 0, tag = 0;
    for (uint32_t index = 0; index < itemCount && !in.AtEnd() && cost <= stopAbove; ++index) {
        cost += recordCost;
        if (!in.ChunkHeader(size, tag)) break;
        if (tag == kTagBackColor) {
            in.Skip(size);
            if (fieldCount == 0) continue;
            if (!in.ChunkHeader(size, tag)) break;
        }
        for (int i = 0; i < fieldCount; ++i) {
            if (i > 0 && !in.ChunkHeader(size, tag)) return cost;
            // Texts beyond the inline part take a block of their own.
            if ((tag == 3 || tag == 5) && size >= 40 && size / 2 <= size_t(CellText::kCapacity))
                cost += PooledBytes(size);
            in.Skip(size);
        }
    }
    return cost;
}

struct ItemsRead {
    uint32_t count = 0;    // whole items kept
    bool whole = true;     // every promised item read whole
    bool tooLarge = false; // stopped because the memory budget ran out
};

// Items until the count is reached, the data is exhausted or an item is
// damaged (a chunk past the end, fewer values than fields); a damaged item is dropped with everything after it, since
// nothing after it can be trusted. Memory is charged against `budget`
// before it is taken, so no header count or flood of tiny chunks makes the
// document hold more than the caller allows.
template <class Source>
ItemsRead ReadItems(Source& in, ListDocument& doc, uint32_t itemCount, const TextLayout& layout, size_t budget) {
    ItemsRead result;
    const int fieldCount = doc.fieldCount();
    const size_t recordCost = ItemRecordCost(fieldCount);
    size_t spent = 0;
    for (uint32_t index = 0; index < itemCount; ++index) {
        if (in.AtEnd()) {
            // A list without fields stores nothing for an item without a
            // colour, so running out of data there is no damage.
            result.whole = fieldCount == 0;
            break;
        }
        if (recordCost > budget - spent) {
            result.whole = false;
            result.tooLarge = true;
            break;
        }
        spent += recordCost;
        doc.items.emplace_back();
        ListItem& item = doc.items.back();
        item.fieldCount = fieldCount;
        item.ordinal = (int32_t)index;
        item.serial = doc.nextSerial++;
        item.values.resize(size_t(fieldCount));
        uint32_t size = 0, tag = 0;
        bool whole = in.ChunkHeader(size, tag);
        if (whole && tag == kTagBackColor) {
            item.backColor = (COLORREF)ReadInt(in, size);
            whole = size == 4 && (fieldCount == 0 || in.ChunkHeader(size, tag));
        } else {
            item.backColor = kNoBackColor;
        }
        for (int i = 0; whole && i < fieldCount; ++i) {
            FieldValue& value = item.values[size_t(i)];
            if (i > 0) whole = in.ChunkHeader(size, tag);
            if (!whole) break;
            ReadValue(in, size, tag, value, layout);
            if (value.text.Length() >= 20) spent += PooledBytes(size_t(value.text.Length() + 1) * 2);
        }
        if (!whole || in.Overrun()) {
            doc.items.pop_back();
            --doc.nextSerial;
            result.whole = false;
            break;
        }
        ++result.count;
    }
    return result;
}

// Version text "1.7" with its terminator, exactly.
inline bool IsCurrentVersion(const wchar_t version[4]) {
    return version[0] == L'1' && version[1] == L'.' && version[2] == L'7' && version[3] == 0;
}

// A version text of some other release ("1.6", "2.0"): digits and dots
// ended by a NUL. Anything else in those bytes is damage, not a version.
inline bool IsOtherVersion(const wchar_t version[4]) {
    if (version[0] < L'0' || version[0] > L'9') return false;
    for (int i = 1; i < 4; ++i) {
        if (version[i] == 0) return true;
        if (version[i] != L'.' && (version[i] < L'0' || version[i] > L'9')) return false;
    }
    return false;
}

// What the first bytes of a file say: Ok for "1.7", BadVersion for another
// release's version, Empty for no bytes, Damaged for anything else.
inline FileStatus CheckVersion(const unsigned char* bytes, size_t size) {
    if (size == 0) return FileStatus::Empty;
    if (size < 8) return FileStatus::Damaged;
    wchar_t version[4];
    std::memcpy(version, bytes, sizeof version);
    if (IsCurrentVersion(version)) return FileStatus::Ok;
    return IsOtherVersion(version) ? FileStatus::BadVersion : FileStatus::Damaged;
}

// How much memory the items of a file of `fileSize` bytes may take: ten
// times the file, plus what a million one-field items need beyond that (a
// legitimate list of one empty text per item costs 144 bytes an item for
// 10 bytes of file).
constexpr size_t kItemMemoryAllowance = 48u << 20;
inline size_t ItemMemoryBudget(size_t fileSize) { return fileSize * 10 + kItemMemoryAllowance; }

}  // namespace listparse
