// zvl export, import and new: the program's own writers, driven from the
// command line, with every message turned into a line on stderr.
#include "LangIds.h"
#include "document/CsvText.h"
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
    if (RefuseOwnInput(listPath, outPath)) return 1;
    LoadedFile file;
    if (!LoadFile(listPath, file)) return 1;
    if (file.kind != FileKind::List) {
        ReportError(listPath, L"is a template; only lists can be exported");
        return 1;
    }
    if (RefuseExisting(outPath, force)) return 1;
    // Success goes unreported: the export's "done" box is for the window.
    CsvResult result = exportCsvToFile(file.doc, outPath.c_str());
    if (result == CsvStatus::Ok) return 0;
    ReportDocMessage(outPath, result.message);
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
    if (RefuseOwnInput(textPath, listPath.c_str())) return 1;
    if (RefuseExisting(listPath.c_str(), force)) return 1;
    // The question was settled above by --force; a list that appears in the
    // meantime is replaced only with --force, and nothing is asked.
    auto askReplace = [force](const DocMessage&) { return force; };
    CeString written;
    CsvResult result = importCsvFile(textPath.c_str(), folder.c_str(), kImportClientWidth, askReplace, &written);
    if (result != CsvStatus::Ok) {
        ReportDocMessage(textPath, result.message);
        return 1;
    }
    Out(std::wstring(written.IsEmpty() ? listPath.c_str() : written.c_str()) + L"\n");
    return 0;
}

int RunNew(const std::wstring& templatePath, const std::wstring& outPath, bool force) {
    if (RefuseOwnInput(templatePath, outPath)) return 1;
    // The template is read and checked before the list is written, and the
    // list is written safely, so a template that fails leaves no list behind
    // and an existing list as it was.
    {
        std::unique_ptr<TemplateFieldList> fields(new TemplateFieldList);
        PlanarImage icon;
        DocMessage message;
        FileStatus status = readTemplateFile(templatePath.c_str(), *fields, icon, nullptr, &message);
        if (status != FileStatus::Ok) {
            ReportDocMessage(templatePath, message);
            return 1;
        }
    }
    if (RefuseExisting(outPath, force)) return 1;
    DocMessage message;
    FileStatus status = makeListFromTemplate(templatePath.c_str(), outPath.c_str(), &message);
    if (status == FileStatus::Ok) return 0;
    ReportDocMessage(status == FileStatus::CannotCreate ? outPath : templatePath, message);
    return 1;
}
