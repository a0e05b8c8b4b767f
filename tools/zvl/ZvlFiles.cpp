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
    ReportDocMessage(path, result.message);
    if (result == FileStatus::CannotOpen) ReportError(path, L"cannot open: " + SystemErrorText(GetLastError()));
    return false;
}

bool LoadTemplate(const std::wstring& path, LoadedFile& file) {
    std::unique_ptr<TemplateFieldList> fields(new TemplateFieldList);
    ViewState view;
    FileStatus status = readTemplateFile(path.c_str(), *fields, file.doc.icon, &view);
    if (status == FileStatus::CannotOpen) {
        ReportError(path, L"cannot open: " + SystemErrorText(GetLastError()));
        return false;
    }
    if (status != FileStatus::Ok) {
        ReportDocMessage(path, {IDS_TEMPLATE_VERSION_BAD, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, {}});
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
