#include "tools/zvl/ZvlFiles.h"

#include "LangIds.h"
#include "document/ListFile.h"
#include "tools/zvl/ZvlConsole.h"
#include "tools/zvl/ZvlEnvironment.h"

namespace {

bool LoadList(const std::wstring& path, LoadedFile& file) {
    ReadListOptions options;
    options.makeBackup = false;  // describing a list must not touch its folder
    ListFileResult result = readListFile(path.c_str(), file.doc, options);
    if (result == FileStatus::Ok) return true;
    // A damaged list is named as damaged and refused: what could be read is
    // not the list, and a script must not take it for one.
    ReportDocMessage(path, result.message);
    if (result == FileStatus::CannotOpen) ReportError(path, L"cannot open: " + SystemErrorText(GetLastError()));
    return false;
}

bool LoadTemplate(const std::wstring& path, LoadedFile& file) {
    std::unique_ptr<TemplateFieldList> fields(new TemplateFieldList);
    ViewState view;
    DocMessage message;
    FileStatus status = readTemplateFile(path.c_str(), *fields, file.doc.icon, &view, &message);
    if (status == FileStatus::CannotOpen) {
        ReportError(path, L"cannot open: " + SystemErrorText(GetLastError()));
        return false;
    }
    if (status != FileStatus::Ok) {
        ReportDocMessage(path, message);
        return false;
    }
    file.doc.path = path.c_str();
    file.doc.fields.assign(fields->fields, fields->fields + fields->count);
    file.doc.sortColumn = view.sortColumn;
    file.doc.sortDescending = view.sortDescending != 0;
    return true;
}

}  // namespace

bool LoadFile(const std::wstring& path, LoadedFile& file) {
    file.path = path;
    file.kind = IsTemplatePath(path) ? FileKind::Template : FileKind::List;
    if (FolderExists(path)) {
        ReportError(path, L"is a folder, not a list or template file");
        return false;
    }
    // The readers take a file that cannot be opened for one of another
    // version (its header reads as empty); say what really went wrong.
    HANDLE probe = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
    if (probe == INVALID_HANDLE_VALUE) {
        ReportError(path, L"cannot open: " + SystemErrorText(GetLastError()));
        return false;
    }
    CloseHandle(probe);
    return file.kind == FileKind::Template ? LoadTemplate(path, file) : LoadList(path, file);
}

bool IsSameFile(const std::wstring& a, const std::wstring& b) {
    // Two names of one existing file (case, "..", 8.3 names, links) share
    // their volume and file index.
    auto identity = [](const std::wstring& path, BY_HANDLE_FILE_INFORMATION& info) {
        HANDLE h = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                               OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (h == INVALID_HANDLE_VALUE) return false;
        bool ok = GetFileInformationByHandle(h, &info);
        CloseHandle(h);
        return ok;
    };
    BY_HANDLE_FILE_INFORMATION ia, ib;
    if (identity(a, ia) && identity(b, ib))
        return ia.dwVolumeSerialNumber == ib.dwVolumeSerialNumber && ia.nFileIndexHigh == ib.nFileIndexHigh &&
               ia.nFileIndexLow == ib.nFileIndexLow;
    // Otherwise (the output does not exist yet) by full path, ignoring case.
    auto full = [](const std::wstring& path) {
        wchar_t buffer[MAX_PATH * 2];
        DWORD n = GetFullPathNameW(path.c_str(), MAX_PATH * 2, buffer, nullptr);
        return n && n < MAX_PATH * 2 ? std::wstring(buffer, n) : path;
    };
    std::wstring fa = full(a), fb = full(b);
    return CompareStringOrdinal(fa.c_str(), (int)fa.size(), fb.c_str(), (int)fb.size(), TRUE) == CSTR_EQUAL;
}

bool RefuseOwnInput(const std::wstring& input, const std::wstring& output) {
    if (!IsSameFile(input, output)) return false;
    ReportError(output, L"is the input file; choose another name for the output");
    return true;
}
