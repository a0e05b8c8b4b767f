// zvl export, import and new: the program's own writers, driven from the
// command line, with every message box turned into a line on stderr.
#include "LangIds.h"
#include "document/CsvText.h"
#include "document/DocMessages.h"
#include "document/ListFile.h"
#include "tools/zvl/ZvlCommands.h"
#include "tools/zvl/ZvlConsole.h"
#include "tools/zvl/ZvlEnvironment.h"
#include "tools/zvl/ZvlFiles.h"

namespace {
// The list window's width on the phone's 240-pixel screen: imported columns
// share it equally, as the main window's import gives them.
constexpr int kImportClientWidth = 240;

bool RefuseExisting(const std::wstring& path, bool force) {
    if (force || !FileExists(path)) return false;
    ReportError(path, L"already exists (use --force to replace it)");
    return true;
}
}  // namespace

int RunExport(const std::wstring& listPath, const std::wstring& outPath, bool force) {
    LoadedFile file;
    if (!LoadFile(listPath, file)) return 1;
    if (file.kind != FileKind::List) {
        ReportError(listPath, L"is a template; only lists can be exported");
        return 1;
    }
    if (RefuseExisting(outPath, force)) return 1;
    CaptureDocMessages(outPath, IDNO);
    if (exportCsvToFile(file.doc, outPath.c_str(), nullptr, false) == CsvStatus::Ok) return 0;
    showDocMessage(nullptr, IDS_EXPORT_CREATE_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
    return 1;
}

int RunImport(const std::wstring& textPath, const std::wstring& folder, bool force) {
    if (!FolderExists(folder)) {
        ReportError(folder, L"no such folder");
        return 1;
    }
    if (FolderExists(textPath)) {
        ReportError(textPath, L"is a folder, not a text file");
        return 1;
    }
    CeString listPath = importListPath(textPath.c_str(), folder.c_str());
    if (RefuseExisting(listPath.c_str(), force)) return 1;
    // The overwrite question was answered above; a file that appears in the
    // meantime is replaced only with --force.
    CaptureDocMessages(textPath, force ? IDYES : IDNO);
    CeString written;
    CsvStatus status = importCsvFile(textPath.c_str(), folder.c_str(), kImportClientWidth, nullptr, &written);
    if (status != CsvStatus::Ok) return 1;
    Out(std::wstring(written.IsEmpty() ? listPath.c_str() : written.c_str()) + L"\n");
    return 0;
}

int RunNew(const std::wstring& templatePath, const std::wstring& outPath, bool force) {
    CaptureDocMessages(templatePath, IDNO);
    // Check the template first, so that a refused template leaves no empty
    // list behind (the dialog creates the list before it opens the template).
    {
        std::unique_ptr<TemplateFieldList> fields(new TemplateFieldList);
        PlanarImage icon;
        FileStatus status = readTemplateFile(templatePath.c_str(), *fields, icon);
        if (status == FileStatus::CannotOpen) {
            showDocMessage(nullptr, IDS_TEMPLATE_OPEN_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
            return 1;
        }
        if (status != FileStatus::Ok) {
            showDocMessage(nullptr, IDS_TEMPLATE_VERSION_BAD, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
            return 1;
        }
    }
    if (RefuseExisting(outPath, force)) return 1;
    FileStatus status = makeListFromTemplate(templatePath.c_str(), outPath.c_str());
    switch (status) {
    case FileStatus::Ok: return 0;
    case FileStatus::CannotCreate:
        CaptureDocMessages(outPath, IDNO);
        showDocMessage(nullptr, IDS_LIST_CREATE_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
        return 1;
    case FileStatus::CannotOpen:
        showDocMessage(nullptr, IDS_TEMPLATE_OPEN_FAILED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
        break;
    default:
        showDocMessage(nullptr, IDS_TEMPLATE_VERSION_BAD, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION);
        break;
    }
    // The template changed under us after the check: remove the empty list.
    DeleteFileW(outPath.c_str());
    return 1;
}
