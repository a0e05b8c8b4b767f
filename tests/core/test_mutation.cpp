// Thousands of deterministic mutations of valid lists, templates, TGA images
// and text files through every reader: each must end cleanly, within the
// limits of the records, in bounded time and memory.
#include <windows.h>
#include <psapi.h>

#include <cstdint>
#include <string>

#include "document/CsvText.h"
#include "document/ListFile.h"
#include "images/PlanarImage.h"
#include "tests/core/test_doc_util.h"
#include "tests/framework/ZvTest.h"

using namespace doctest;

namespace {

struct Rng {
    uint64_t s;
    explicit Rng(uint64_t seed) : s(seed * 0x9E3779B97F4A7C15ull + 1) {}
    uint32_t Next() {
        s ^= s << 13;
        s ^= s >> 7;
        s ^= s << 17;
        return uint32_t(s >> 11);
    }
    uint32_t Below(uint32_t n) { return n ? Next() % n : 0; }
};

// Numbers that break careless readers: signs, limits, the field limit.
const uint32_t kInteresting[] = {0, 1, 7, 8, 16, 50, 51, 255, 256, 0x7FFF, 0xFFFF, 4098252, 0x7FFFFFFF,
                                 0x80000000u, 0xFFFFFFFFu, 0xFFFFFFF8u, 1007, 1008, 1234, 4321, 120};

ByteVec Mutate(const ByteVec& in, Rng& rng) {
    ByteVec v = in;
    for (int k = 0, rounds = 1 + (int)rng.Below(3); k < rounds; ++k) {
        const uint32_t n = (uint32_t)v.size();
        const uint32_t kind = rng.Below(7);
        if (kind == 0) {  // bit flips
            for (uint32_t i = 0, m = 1 + rng.Below(8); i < m && n; ++i)
                v[rng.Below(n)] ^= (unsigned char)(1u << rng.Below(8));
        } else if (kind == 1) {  // truncation
            v.resize(rng.Below(n + 1));
        } else if (kind == 2) {  // inserted bytes
            size_t at = rng.Below(n + 1);
            ByteVec extra(1 + rng.Below(24));
            for (auto& b : extra) b = (unsigned char)rng.Next();
            v.insert(v.begin() + (long)at, extra.begin(), extra.end());
        } else if (kind == 3 && n) {  // deleted bytes
            size_t at = rng.Below(n), len = 1 + rng.Below(32);
            v.erase(v.begin() + (long)at, v.begin() + (long)std::min<size_t>(n, at + len));
        } else if (kind <= 5 && n >= 4) {  // a 32-bit count or size replaced by an interesting number
            size_t at = rng.Below(n - 3);
            if (rng.Below(2)) at &= ~size_t(3);
            uint32_t value = rng.Below(4) ? kInteresting[rng.Below(sizeof kInteresting / sizeof kInteresting[0])]
                                          : rng.Next();
            for (int i = 0; i < 4; ++i) v[at + i] = (unsigned char)(value >> (8 * i));
        } else if (kind == 6 && n) {  // a duplicated range
            size_t at = rng.Below(n), len = std::min<size_t>(1 + rng.Below(64), n - at);
            ByteVec copy(v.begin() + (long)at, v.begin() + (long)(at + len));
            v.insert(v.begin() + (long)rng.Below(n), copy.begin(), copy.end());
        }
    }
    return v;
}

size_t MemoryInUse() {
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

// A list of every field type with an icon and coloured rows.
ListDocument SampleDocument() {
    ListDocument doc;
    for (int t = 0; t < kFieldTypeCount; ++t)
        doc.fields.push_back(MakeField((L"F" + std::to_wstring(t)).c_str(), t, L"dflt", 1, 30, 1, 3));
    unsigned char planes[64];
    for (int i = 0; i < 64; ++i) planes[i] = (unsigned char)i;
    SetPlanes(doc.icon, planes, planes + 16, planes + 32, planes + 48, 4, 4);
    doc.sortColumn = 3;
    for (int i = 0; i < 12; ++i) {
        ListItem item;
        item.fieldCount = kFieldTypeCount;
        item.backColor = i % 3 ? kNoBackColor : 0xB5FFFF;
        const CellText text = (L"value " + std::to_wstring(i)).c_str();
        const SYSTEMTIME time = MakeTime(2000 + i, 3, i + 1);
        for (int t = 0; t < kFieldTypeCount; ++t) item.values.push_back({text, FieldType(t), i % 3, time});
        doc.items.push_back(item);
    }
    return doc;
}

void CheckDocument(const ListDocument& doc, size_t fileSize, const char* file, int line) {
    CHECK_AT(doc.fieldCount() <= kMaxFields, file, line);
    CHECK_AT(size_t(doc.itemCount()) <= fileSize / 8 + 1, file, line);
    for (const FieldDef& f : doc.fields) {
        CHECK_AT(wcsnlen(f.name, kFieldTextCapacity) < size_t(kFieldTextCapacity), file, line);
        CHECK_AT(wcsnlen(f.defaultText, kFieldTextCapacity) < size_t(kFieldTextCapacity), file, line);
    }
    for (const ListItem& item : doc.items) {
        CHECK_AT(item.values.size() == size_t(doc.fieldCount()), file, line);
        for (const FieldValue& v : item.values) CHECK_AT(v.text.Length() <= CellText::kMaxLength, file, line);
    }
    if (!doc.icon.IsEmpty()) CHECK_AT(doc.icon.width > 0 && doc.icon.height > 0 && doc.icon.alpha, file, line);
}

// A clean result of the reader under test, written out again and reread.
void WriteBackAndReread(const ListDocument& doc) {
    ByteWriter out;
    buildListBytes(doc, out);
    ListDocument again;
    FileStatus status = parseListBytes(out.bytes.data(), out.bytes.size(), again);
    CHECK(status == FileStatus::Ok || status == FileStatus::BadFieldCount);
}

}  // namespace

TEST_CASE(Mut_ListFiles) {
    ByteWriter valid;
    buildListBytes(SampleDocument(), valid);
    const std::wstring path = ScratchDir(L"mutlist") + L"\\m.zvl";
    size_t before = MemoryInUse();
    DWORD start = GetTickCount();
    Rng rng(1);
    int parsed = 0;
    for (int round = 0; round < 6000; ++round) {
        ByteVec bytes = Mutate(valid.bytes, rng);
        ListDocument doc;
        if (parseListBytes(bytes.data(), bytes.size(), doc) == FileStatus::Ok) ++parsed;
        CheckDocument(doc, bytes.size(), ZV_HERE);
        if (round % 10 == 0) WriteBackAndReread(doc);
        if (round % 25 == 0) {
            WriteBytes(path, bytes);
            ReadListOptions quiet;
            quiet.makeBackup = false;
            ListDocument fromFile, literal;
            readListFile(path.c_str(), fromFile, quiet);
            readListFileUnbuffered(path.c_str(), literal);
            CheckDocument(literal, bytes.size(), ZV_HERE);
            CHECK_EQ(fromFile.itemCount(), literal.itemCount());
            PlanarImage icon;
            LoadListIcon(icon, path.c_str(), round % 50 == 0);
        }
    }
    CHECK(parsed > 100);  // the mutations do not all break the header
    CHECK(GetTickCount() - start < 15000);
    CHECK(MemoryInUse() < before + 64 * 1024 * 1024);
}

TEST_CASE(Mut_TemplateFiles) {
    const ListDocument sample = SampleDocument();
    const std::wstring dir = ScratchDir(L"muttpl"), path = dir + L"\\t.zvt";
    writeTemplateFile(path.c_str(), sample.fields.data(), sample.fieldCount(), sample.icon);
    const ByteVec valid = ReadBytes(path);
    Rng rng(2);
    for (int round = 0; round < 400; ++round) {
        WriteBytes(path, Mutate(valid, rng));
        TemplateFieldList back;
        PlanarImage img;
        FileStatus status = readTemplateFile(path.c_str(), back, img);
        CHECK(status != FileStatus::Ok || (back.count >= 0 && back.count <= kMaxFields));
        LoadTemplateIcon(img, path.c_str(), round % 2 == 0);
        if (!img.IsEmpty()) CHECK(img.alpha != nullptr);
        if (round % 4 == 0) makeListFromTemplate(path.c_str(), (dir + L"\\new.zvl").c_str());
    }
}

TEST_CASE(Mut_TgaImages) {
    std::vector<ByteVec> samples;
    for (int type : {2, 10}) {
        for (int bits : {24, 32}) {
            Bytes b;
            b.tgaHeader(type, 6, 5, bits, type == 2 ? 0x10 : 0, 2).u8(0xAB).u8(0xCD);  // with a 2-byte ID
            int pb = bits / 8;
            for (int row = 0; row < 5; ++row) {
                if (type == 2) {
                    for (int i = 0; i < 6 * pb; ++i) b.u8(row * 30 + i);
                } else {
                    b.u8(0x82);
                    for (int i = 0; i < pb; ++i) b.u8(row + i);
                    b.u8(0x02);
                    for (int i = 0; i < 3 * pb; ++i) b.u8(i);
                }
            }
            samples.push_back(b.v);
        }
    }
    const std::wstring path = ScratchDir(L"muttga") + L"\\m.tga";
    Rng rng(3);
    size_t before = MemoryInUse();
    for (int round = 0; round < 4000; ++round) {
        ByteVec bytes = Mutate(samples[size_t(round) % samples.size()], rng);
        PlanarImage img;
        HRESULT hr = DecodeTga(img, bytes.data(), bytes.size());
        CHECK((hr == S_OK) != img.IsEmpty());
        if (round % 50 == 0) {
            WriteBytes(path, bytes);
            LoadTgaFile(img, path.c_str());
            ReadTgaSize(path.c_str());
        }
    }
    CHECK(MemoryInUse() < before + 64 * 1024 * 1024);
}

TEST_CASE(Mut_TextImport) {
    const ByteVec marked = buildCsvBytes(SampleDocument());
    ByteVec plain;
    for (size_t i = 2; i + 1 < marked.size(); i += 2) plain.push_back(marked[i]);  // ASCII text: low bytes
    const std::wstring path = ScratchDir(L"mutcsv") + L"\\m.CSV";
    Rng rng(4);
    for (int round = 0; round < 3000; ++round) {
        ByteVec bytes = Mutate(round % 2 ? marked : plain, rng);
        // Most rounds take the text as the reader would; some read it from a file.
        std::wstring text = round % 2 ? Utf16Text(bytes, 2) : std::wstring(bytes.begin(), bytes.end());
        if (round % 20 == 0) {
            WriteBytes(path, bytes);
            CHECK(readCsvFileText(path.c_str(), text));
        }
        ListDocument doc;
        if (csvTextToDocument(text.data(), text.size(), 240, doc)) {
            CheckDocument(doc, text.size() * 8 + 8, ZV_HERE);
            if (round % 10 == 0) WriteBackAndReread(doc);
        }
    }
}
