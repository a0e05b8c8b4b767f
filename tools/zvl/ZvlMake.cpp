// zvl make and zvl samples: list and template files built from readable
// sources with the program's own writers.
#include <vector>

#include "document/ListFile.h"
#include "tools/zvl/IconText.h"
#include "tools/zvl/SampleSource.h"
#include "tools/zvl/ZvlCommands.h"
#include "tools/zvl/ZvlConsole.h"
#include "tools/zvl/ZvlFiles.h"
#include "tools/zvl/ZvlEnvironment.h"

namespace {

// The two screen variants of the samples: low-density phones get 16-pixel
// icons, high-density ones 32-pixel icons.
struct Variant {
    const wchar_t* folder;
    int iconSize;
};
const Variant kVariants[] = {{L"qvga", 16}, {L"vga", 32}};

bool ReadWholeFile(const std::wstring& path, std::string& out) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        ReportError(path, L"cannot open: " + SystemErrorText(GetLastError()));
        return false;
    }
    LARGE_INTEGER size = {};
    bool ok = GetFileSizeEx(file, &size) && size.QuadPart < (64 << 20);
    if (ok) {
        out.resize((size_t)size.QuadPart);
        DWORD read = 0;
        ok = out.empty() || (ReadFile(file, &out[0], (DWORD)out.size(), &read, nullptr) && read == out.size());
    }
    CloseHandle(file);
    if (!ok) ReportError(path, L"cannot read the file");
    return ok;
}

std::wstring FolderOf(const std::wstring& path) {
    size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring::npos ? std::wstring() : path.substr(0, slash + 1);
}

bool HasSuffix(const std::wstring& text, const wchar_t* suffix) {
    size_t n = wcslen(suffix);
    return text.size() >= n && _wcsicmp(text.c_str() + text.size() - n, suffix) == 0;
}

// A source's "icon:" is a .tga file (relative to the source) or the name of
// an icon text in `iconFolder`.
bool LoadIcon(const std::wstring& name, const std::wstring& sourcePath, const std::wstring& iconFolder, int size,
              PlanarImage& icon) {
    if (HasSuffix(name, L".tga")) {
        std::wstring path = name.size() > 1 && (name[0] == L'\\' || name[1] == L':') ? name : FolderOf(sourcePath) + name;
        if (FAILED(LoadTgaFile(icon, path.c_str()))) {
            ReportError(path, L"cannot be read as a TGA image");
            return false;
        }
        return true;
    }
    std::wstring path = iconFolder + name + L".txt";
    std::string text;
    if (!ReadWholeFile(path, text)) return false;
    std::wstring error;
    if (!RenderIconText(text, size, icon, error)) {
        ReportError(path, error);
        return false;
    }
    return true;
}

bool WriteSource(SampleSource& source, const std::wstring& sourcePath, const std::wstring& outPath, int iconSize,
                 const std::wstring& iconFolder) {
    if (!source.icon.empty() && !LoadIcon(source.icon, sourcePath, iconFolder, iconSize, source.doc.icon)) return false;
    // Widths are written for a 96-dpi screen, as the 16-pixel icons are; the
    // copy for high-density screens gets both at twice the size.
    for (FieldDef& field : source.doc.fields) field.columnWidth = field.columnWidth * iconSize / 16;
    FileStatus status;
    DocMessage message;
    if (source.isTemplate) {
        status = writeTemplateFile(outPath.c_str(), source.doc.fields.data(), source.doc.fieldCount(), source.doc.icon,
                                   &message);
    } else {
        ListFileResult result = writeListFile(outPath.c_str(), source.doc);
        message = result.message;
        status = result.code;
    }
    if (status == FileStatus::Ok) return true;
    ReportDocMessage(outPath, message);
    return false;
}

bool ParseSourceFile(const std::wstring& path, SampleSource& source) {
    std::string text;
    if (!ReadWholeFile(path, text)) return false;
    std::wstring error;
    if (ParseSampleSource(text, source, error)) return true;
    ReportError(path, error);
    return false;
}

bool MakeFolders(const std::wstring& folder) {
    for (size_t i = 0; i <= folder.size(); ++i) {
        if (i < folder.size() && folder[i] != L'\\') continue;
        std::wstring part = folder.substr(0, i);
        if (part.empty() || (part.size() == 2 && part[1] == L':') || FolderExists(part)) continue;
        if (!CreateDirectoryW(part.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
            ReportError(part, L"cannot create the folder: " + SystemErrorText(GetLastError()));
            return false;
        }
    }
    return true;
}

std::vector<std::wstring> List(const std::wstring& pattern, bool folders) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW data;
    HANDLE find = FindFirstFileW(pattern.c_str(), &data);
    if (find == INVALID_HANDLE_VALUE) return names;
    do {
        bool isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isFolder != folders || data.cFileName[0] == L'.') continue;
        names.push_back(data.cFileName);
    } while (FindNextFileW(find, &data));
    FindClose(find);
    return names;
}

struct SampleJob {
    std::wstring source;    // the readable source
    std::wstring relative;  // lists\<Category>\<name>.zvl or templates\<name>.zvt
    bool isTemplate;
};

std::vector<SampleJob> FindSamples(const std::wstring& root) {
    std::vector<SampleJob> jobs;
    for (const std::wstring& category : List(root + L"lists\\*", true))
        for (const std::wstring& name : List(root + L"lists\\" + category + L"\\*.txt", false))
            jobs.push_back({root + L"lists\\" + category + L"\\" + name,
                            L"lists\\" + category + L"\\" + FileTitleOf(name) + L".zvl", false});
    for (const std::wstring& name : List(root + L"templates\\*.txt", false))
        jobs.push_back({root + L"templates\\" + name, L"templates\\" + FileTitleOf(name) + L".zvt", true});
    return jobs;
}

std::wstring WithSlash(const std::wstring& folder) {
    return folder.empty() || folder.back() == L'\\' ? folder : folder + L"\\";
}

}  // namespace

int RunMake(const std::wstring& sourcePath, const std::wstring& outPath, int iconSize, const std::wstring& iconFolder,
            bool force) {
    if (RefuseOwnInput(sourcePath, outPath)) return 1;
    SampleSource source;
    if (!ParseSourceFile(sourcePath, source)) return 1;
    if (!force && FileExists(outPath)) {
        ReportError(outPath, L"already exists (use --force to replace it)");
        return 1;
    }
    std::wstring icons = iconFolder.empty() ? FolderOf(sourcePath) : WithSlash(iconFolder);
    return WriteSource(source, sourcePath, outPath, iconSize, icons) ? 0 : 1;
}

int RunSamples(const std::wstring& sourceFolder, const std::wstring& outFolder) {
    std::wstring root = WithSlash(sourceFolder);
    std::wstring out = WithSlash(outFolder);
    std::vector<SampleJob> jobs = FindSamples(root);
    if (jobs.empty()) {
        ReportError(sourceFolder, L"holds no samples (lists\\<Category>\\*.txt, templates\\*.txt)");
        return 1;
    }
    for (const SampleJob& job : jobs) {
        for (const Variant& variant : kVariants) {
            SampleSource source;
            if (!ParseSourceFile(job.source, source)) return 1;
            if (source.isTemplate != job.isTemplate) {
                ReportError(job.source, job.isTemplate ? L"is in templates but says kind: list"
                                                       : L"is in lists but says kind: template");
                return 1;
            }
            std::wstring target = out + variant.folder + L"\\" + job.relative;
            if (!MakeFolders(FolderOf(target))) return 1;
            if (!WriteSource(source, job.source, target, variant.iconSize, root + L"icons\\")) return 1;
        }
    }
    return 0;
}
