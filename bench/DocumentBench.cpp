// zvbench: times the document core on generated lists of 1,000, 10,000 and
// 100,000 items x 10 fields of mixed types, and prints a markdown table.
//
//   zvbench.exe [sizes...]     default: 1000 10000 100000
//
// For each size: write (one buffered WriteFile), read (one ReadFile, parsed
// in memory), the literal reader (one ReadFile per chunk header and per
// payload), text export, text import (parse and write the new list), and
// TGA decoding. Memory columns: "held" is the process's committed memory
// (PagefileUsage) kept by the result, "peak+" the growth of the peak
// working set during the step.
#include <windows.h>
#include <psapi.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/AppGlobals.h"
#include "document/CsvText.h"
#include "document/DocMessages.h"
#include "document/ListFile.h"
#include "images/PlanarImage.h"

namespace {

double Now() {
    static LARGE_INTEGER frequency = {};
    if (!frequency.QuadPart) QueryPerformanceFrequency(&frequency);
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return double(t.QuadPart) * 1000.0 / double(frequency.QuadPart);
}

struct Memory {
    size_t committed, peakWorkingSet;
};

Memory Sample() {
    PROCESS_MEMORY_COUNTERS c = {};
    c.cb = sizeof c;
    GetProcessMemoryInfo(GetCurrentProcess(), &c, sizeof c);
    return {c.PagefileUsage, c.PeakWorkingSetSize};
}

// CPU time of this thread in milliseconds: unlike wall time it does not
// count the time other processes hold the processor.
double ThreadCpuMs() {
    FILETIME created, exited, kernel, user;
    GetThreadTimes(GetCurrentThread(), &created, &exited, &kernel, &user);
    ULARGE_INTEGER k, u;
    k.LowPart = kernel.dwLowDateTime;
    k.HighPart = kernel.dwHighDateTime;
    u.LowPart = user.dwLowDateTime;
    u.HighPart = user.dwHighDateTime;
    return double(k.QuadPart + u.QuadPart) / 10000.0;
}

double Mb(long long bytes) { return double(bytes) / (1024.0 * 1024.0); }

struct Row {
    std::string step;
    int items;
    double ms;
    double cpuMs;
    double heldMb;
    double peakMb;
    std::string note;
};
std::vector<Row> g_rows;

// Runs `step` and records its time and memory: memory from the first run,
// time as the best of a few runs (the machine is shared, so the best run is
// the one least disturbed by others).
int g_repeats = 10;
template <class F>
void Measure(const char* step, int items, F&& body, const std::string& note = "") {
    Memory before = Sample();
    double start = Now();
    body();
    double ms = Now() - start;
    Memory after = Sample();
    int repeats = items > 10000 ? 1 : g_repeats;
    double cpuStart = ThreadCpuMs();
    for (int i = 0; i < repeats; ++i) {
        double again = Now();
        body();
        again = Now() - again;
        if (again < ms) ms = again;
    }
    double cpuMs = (ThreadCpuMs() - cpuStart) / repeats;
    g_rows.push_back({step, items, ms, cpuMs, Mb((long long)after.committed - (long long)before.committed),
                      Mb((long long)after.peakWorkingSet - (long long)before.peakWorkingSet), note});
}

const wchar_t* kWords[] = {L"milk", L"bread", L"a longer note about the weekend trip", L"apples", L"tea",
                           L"call the garage before Friday", L"x", L"paint"};

ListDocument Generate(int itemCount) {
    ListDocument doc;
    const FieldType types[10] = {FieldType::Text,     FieldType::Date,      FieldType::Number, FieldType::Check,
                                 FieldType::Priority, FieldType::Time,      FieldType::YesNo,  FieldType::DateTime,
                                 FieldType::Selection, FieldType::Text};
    for (int i = 0; i < 10; ++i) {
        FieldDef f;
        f.SetName((L"Field " + std::to_wstring(i)).c_str());
        f.type = types[i];
        f.columnWidth = 24;
        doc.fields.push_back(f);
    }
    TextLayout layout;
    unsigned seed = 12345;
    for (int n = 0; n < itemCount; ++n) {
        ListItem item;
        item.fieldCount = 10;
        item.ordinal = n;
        item.serial = doc.nextSerial++;
        item.backColor = n % 7 == 0 ? 0xB5DBB5 : kNoBackColor;
        item.values.resize(10);
        for (int i = 0; i < 10; ++i) {
            seed = seed * 1103515245u + 12345u;
            FieldValue& v = item.values[size_t(i)];
            v.storedType = types[i];
            v.choice = int((seed >> 16) % 3);
            v.time.wYear = WORD(2000 + (seed >> 8) % 30);
            v.time.wMonth = WORD(1 + (seed >> 4) % 12);
            v.time.wDay = WORD(1 + (seed >> 12) % 28);
            v.time.wHour = WORD((seed >> 20) % 24);
            v.time.wMinute = WORD((seed >> 3) % 60);
            if (types[i] == FieldType::Text) v.text = kWords[(seed >> 17) % 8];
            else if (types[i] == FieldType::Number) v.text = std::to_wstring((seed >> 10) % 100000).c_str();
            else buildDisplayText(v, types[i], layout);
        }
        doc.items.push_back(std::move(item));
    }
    return doc;
}

// The heap bytes an open document holds, counted from its records (each
// heap block with a 16-byte header): the committed-memory figure of the
// process cannot separate the document from blocks freed by earlier steps.
size_t DocumentBytes(const ListDocument& doc) {
    const size_t block = 16;
    size_t total = doc.fields.capacity() * sizeof(FieldDef) + block;
    for (const ListItem& item : doc.items) {
        total += sizeof(ListItem) + 2 * sizeof(void*) + block;  // the list node
        total += item.values.capacity() * sizeof(FieldValue) + block;
        for (const FieldValue& v : item.values)
            if (v.text.Length() >= 20) total += size_t(v.text.Length() + 1) * sizeof(wchar_t) + block;
    }
    return total;
}

std::vector<unsigned char> MakeTga(int side, bool runLength) {
    std::vector<unsigned char> b(18, 0);
    b[2] = runLength ? 10 : 2;
    b[12] = (unsigned char)(side & 0xFF);
    b[13] = (unsigned char)(side >> 8);
    b[14] = b[12];
    b[15] = b[13];
    b[16] = 32;
    b[17] = 0x10;
    for (int y = 0; y < side; ++y) {
        if (runLength) {
            for (int x = 0; x < side; x += 8) {
                b.push_back(0x87);
                for (int k = 0; k < 4; ++k) b.push_back((unsigned char)(x + y + k));
            }
        } else {
            for (int x = 0; x < side * 4; ++x) b.push_back((unsigned char)(x ^ y));
        }
    }
    return b;
}

bool AnswerYes(const DocMessage&) { return true; }

std::wstring TempFolder() {
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    std::wstring dir = std::wstring(temp) + L"zvbench";
    CreateDirectoryW(dir.c_str(), nullptr);
    return dir;
}

long long FileSize(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return 0;
    return ((long long)data.nFileSizeHigh << 32) | data.nFileSizeLow;
}

void BenchSize(int items, const std::wstring& dir) {
    std::wstring list = dir + L"\\bench.zvl";
    std::wstring text = dir + L"\\bench.CSV";
    ListDocument doc = Generate(items);
    FileStatus status = FileStatus::Ok;
    Measure("write list", items, [&] { status = writeListFile(list.c_str(), doc).code; },
            std::to_string(FileSize(list) / 1024) + " KB");
    g_rows.back().note = std::to_string(FileSize(list) / 1024) + " KB";
    if (status != FileStatus::Ok) std::printf("write failed\n");

    {
        ByteWriter bytes;
        Measure("  build list bytes (memory only)", items, [&] {
            bytes.bytes.clear();
            buildListBytes(doc, bytes);
        });
        std::vector<ListDocument> parsed(size_t(items > 10000 ? 1 : g_repeats) + 1);
        size_t next = 0;
        Measure("  parse list bytes (memory only)", items,
                [&] { parseListBytes(bytes.bytes.data(), bytes.bytes.size(), parsed[next++]); });
    }
    ReadListOptions quiet;
    quiet.makeBackup = false;
    // Each run reads into a fresh document, as opening a list does; the
    // documents are freed after the timing.
    {
        std::vector<ListDocument> docs(size_t(items > 10000 ? 1 : g_repeats) + 1);
        size_t next = 0;
        Measure("read list (buffered)", items, [&] { readListFile(list.c_str(), docs[next++], quiet); },
                "held: one open document");
        if (docs[0].itemCount() != items) std::printf("read %d of %d items\n", docs[0].itemCount(), items);
        char note[80];
        std::snprintf(note, sizeof note, "document %.1f MB", Mb((long long)DocumentBytes(docs[0])));
        g_rows.back().note = note;
    }
    {
        std::vector<ListDocument> docs(size_t(items > 10000 ? 1 : g_repeats) + 1);
        size_t next = 0;
        Measure("read list (literal, per chunk)", items, [&] { readListFileUnbuffered(list.c_str(), docs[next++]); });
    }
    Measure("export text", items, [&] { exportCsvToFile(doc, text.c_str()); });
    g_rows.back().note = std::to_string(FileSize(text) / 1024) + " KB";
    doc.Clear();
    Measure("import text (parse + write list)", items,
            [&] { importCsvFile(text.c_str(), dir.c_str(), 240, AnswerYes); });
    DeleteFileW(list.c_str());
    DeleteFileW(text.c_str());
}

void BenchTga() {
    std::vector<unsigned char> raw32 = MakeTga(32, false), rle32 = MakeTga(32, true), raw256 = MakeTga(256, false);
    PlanarImage img;
    Measure("TGA decode 32x32 raw x1000", 1000, [&] {
        for (int i = 0; i < 1000; ++i) DecodeTga(img, raw32.data(), raw32.size());
    });
    Measure("TGA decode 32x32 RLE x1000", 1000, [&] {
        for (int i = 0; i < 1000; ++i) DecodeTga(img, rle32.data(), rle32.size());
    });
    Measure("TGA decode 256x256 raw x10", 10, [&] {
        for (int i = 0; i < 10; ++i) DecodeTga(img, raw256.data(), raw256.size());
    });
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    hLangModule = LoadLibraryW(L"LangEng.dll");
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i) sizes.push_back(_wtoi(argv[i]));
    if (sizes.empty()) sizes = {1000, 10000, 100000};
    std::wstring dir = TempFolder();
    for (int items : sizes) BenchSize(items, dir);
    BenchTga();
    std::printf("| step | items | best wall (ms) | CPU (ms) | held (MB) | peak+ (MB) | note |\n");
    std::printf("|---|---:|---:|---:|---:|---:|---|\n");
    for (const Row& r : g_rows)
        std::printf("| %s | %d | %.2f | %.1f | %.1f | %.1f | %s |\n", r.step.c_str(), r.items, r.ms, r.cpuMs, r.heldMb,
                    r.peakMb, r.note.c_str());
    return 0;
}
