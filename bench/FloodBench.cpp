// zvfloodbench: the memory a list read takes, for crafted floods and for a
// normal list, each read in a process of its own so that its peak is its
// own. The goal: no file makes the reader hold more than about ten times its
// size beyond the program's normal footprint, or it is refused.
//
//   zvfloodbench.exe            all cases, a markdown table
//   zvfloodbench.exe CASE       one case (used by the table)
#include <windows.h>
#include <psapi.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "base/AppGlobals.h"
#include "document/ListFile.h"

namespace {

struct Case {
    const char* name;
    const char* what;
};
const Case kCases[] = {
    {"flood0", "64 MB of 8-byte items, no fields"},
    {"flood1", "64 MB of empty 8-byte values, one field"},
    {"flood1-8", "8 MB of empty 8-byte values, one field"},
    {"flood50", "64 MB of empty values, 50 fields"},
    {"normal", "normal list, 100,000 items x 10 fields"},
    {"million", "1,000,000 items, one empty text each"},
};

void U32(std::vector<unsigned char>& v, uint32_t x) {
    for (int i = 0; i < 4; ++i) v.push_back((unsigned char)(x >> (8 * i)));
}

// A header claiming a huge count, one field definition per field, then a
// run of bare chunk headers (or of empty texts) until `bytes` is reached.
std::vector<unsigned char> Flood(int fields, size_t bytes, bool emptyTexts) {
    ListDocument doc;
    for (int i = 0; i < fields; ++i) {
        FieldDef f;
        f.type = FieldType::Text;
        doc.fields.push_back(f);
    }
    ByteWriter out;
    buildListBytes(doc, out);
    std::vector<unsigned char> v = out.bytes;
    uint32_t items = 0xFFFFFFFF;
    std::memcpy(v.data() + 12, &items, 4);
    while (v.size() + 10 <= bytes) {
        U32(v, emptyTexts ? 2 : 0);
        U32(v, 3);
        if (emptyTexts) {
            v.push_back(0);
            v.push_back(0);
        }
    }
    return v;
}

std::vector<unsigned char> Normal(int items) {
    ListDocument doc;
    for (int t = 0; t < 9; ++t) {
        FieldDef f;
        f.type = FieldType(t);
        doc.fields.push_back(f);
    }
    FieldDef extra;
    extra.type = FieldType::Text;
    doc.fields.push_back(extra);
    for (int i = 0; i < items; ++i) {
        ListItem item;
        item.fieldCount = 10;
        item.values.resize(10);
        for (int t = 0; t < 10; ++t) {
            FieldValue& v = item.values[size_t(t)];
            v.storedType = doc.fields[size_t(t)].type;
            v.choice = i % 3;
            v.time.wYear = 2024;
            v.time.wMonth = 1 + i % 12;
            v.time.wDay = 1 + i % 28;
            v.text = (L"item number " + std::to_wstring(i)).c_str();
        }
        doc.items.push_back(item);
    }
    ByteWriter out;
    buildListBytes(doc, out);
    return out.bytes;
}

std::wstring Temp(const char* name) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    std::wstring path = folder;
    for (const char* p = name; *p; ++p) path += wchar_t(*p);
    return path + L".zvl";
}

size_t Committed() {
    PROCESS_MEMORY_COUNTERS c = {};
    c.cb = sizeof c;
    GetProcessMemoryInfo(GetCurrentProcess(), &c, sizeof c);
    return c.PagefileUsage;
}

size_t PeakCommitted() {
    PROCESS_MEMORY_COUNTERS c = {};
    c.cb = sizeof c;
    GetProcessMemoryInfo(GetCurrentProcess(), &c, sizeof c);
    return c.PeakPagefileUsage;
}

std::vector<unsigned char> Build(const char* name) {
    std::vector<unsigned char> bytes;
    if (!std::strcmp(name, "flood0")) bytes = Flood(0, 64u << 20, false);
    else if (!std::strcmp(name, "flood1")) bytes = Flood(1, 64u << 20, false);
    else if (!std::strcmp(name, "flood1-8")) bytes = Flood(1, 8u << 20, false);
    else if (!std::strcmp(name, "flood50")) bytes = Flood(50, 64u << 20, true);
    else if (!std::strcmp(name, "normal")) bytes = Normal(100000);
    else if (!std::strcmp(name, "million")) {
        bytes = Flood(1, 16 + 200 + 10 * 1000000, true);
        uint32_t items = 1000000;
        std::memcpy(bytes.data() + 12, &items, 4);
    }
    return bytes;
}

// "make CASE" writes the file; "read CASE" reads it (in a fresh process, so
// the item pool holds nothing yet) and prints: size MB, status, items, peak
// growth of committed memory during the read in MB.
int RunOne(const char* phase, const char* name) {
    std::wstring path = Temp(name);
    if (!std::strcmp(phase, "make")) {
        std::vector<unsigned char> bytes = Build(name);
        HANDLE f = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(f, bytes.data(), (DWORD)bytes.size(), &written, nullptr);
        CloseHandle(f);
        return 0;
    }
    WIN32_FILE_ATTRIBUTE_DATA info = {};
    GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &info);
    double fileMb = double(info.nFileSizeLow) / 1048576.0;
    size_t base = Committed();
    ListDocument doc;
    ReadListOptions quiet;
    quiet.makeBackup = false;
    ListFileResult r = readListFile(path.c_str(), doc, quiet);
    size_t peak = PeakCommitted();
    std::printf("%.1f %d %d %.1f\n", fileMb, (int)r.code, doc.itemCount(), peak > base ? double(peak - base) / 1048576.0 : 0.0);
    DeleteFileW(path.c_str());
    return 0;
}

void RunChild(const std::wstring& self, const char* phase, const char* name, HANDLE out) {
    std::wstring command = L"\"" + self + L"\" ";
    for (const char* p = phase; *p; ++p) command += wchar_t(*p);
    command += L" ";
    for (const char* p = name; *p; ++p) command += wchar_t(*p);
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = out;
    start.hStdError = out;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process)) return;
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc > 2) {
        std::string phase, name;
        for (const wchar_t* p = argv[1]; *p; ++p) phase += char(*p);
        for (const wchar_t* p = argv[2]; *p; ++p) name += char(*p);
        return RunOne(phase.c_str(), name.c_str());
    }
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::printf("| input | file MB | status | items | peak growth MB | x file |\n|---|---|---|---|---|---|\n");
    for (const Case& c : kCases) {
        wchar_t temp[MAX_PATH];
        GetTempPathW(MAX_PATH, temp);
        std::wstring outPath = std::wstring(temp) + L"zvflood.txt";
        SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
        HANDLE out = CreateFileW(outPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS, 0, nullptr);
        RunChild(self, "make", c.name, out);
        RunChild(self, "read", c.name, out);
        CloseHandle(out);
        double mb = 0, grew = 0;
        int status = -1, items = 0;
        if (FILE* in = _wfopen(outPath.c_str(), L"r")) {
            if (std::fscanf(in, "%lf %d %d %lf", &mb, &status, &items, &grew) != 4) status = -1;
            std::fclose(in);
        }
        DeleteFileW(outPath.c_str());
        std::printf("| %s | %.1f | %d | %d | %.1f | %.1f |\n", c.what, mb, status, items, grew, mb > 0 ? grew / mb : 0);
    }
    return 0;
}
