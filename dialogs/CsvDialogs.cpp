#include "dialogs/CsvDialogs.h"

#include "dialogs/FileSelectDialog.h"
#include "dialogs/MessageBoxes.h"
#include "document/CsvText.h"

namespace {

constexpr wchar_t kDialogTitle[] = L"File Select";
constexpr wchar_t kFilterName[] = L"CSV File";
constexpr wchar_t kExtension[] = L".CSV";

bool AskForFile(HWND owner, int mode, CeString& path) {
    FileSelectRequest request;
    request.mode = mode;
    request.title = kDialogTitle;
    request.filterText = kFilterName;
    request.extension = kExtension;
    if (!RunFileSelectDialog(owner, request)) return false;
    path = request.path;
    return !path.IsEmpty();
}

}  // namespace

bool exportCsv(const ListDocument& document, HWND owner) {
    CeString path;
    if (!AskForFile(owner, FileSelectSave, path)) return false;
    CsvResult result = exportCsvToFile(document, path.c_str());
    ShowDocMessage(owner, result.message);
    return result == CsvStatus::Ok;
}

bool importCsv(HWND owner, const wchar_t* categoryPath, CeString* listPathOut) {
    CeString path;
    if (!AskForFile(owner, FileSelectLoad, path)) return false;
    RECT client = {};
    if (owner) GetClientRect(owner, &client);
    auto askReplace = [owner](const DocMessage& question) { return ShowDocMessage(owner, question) == IDYES; };
    CsvResult result = importCsvFile(path.c_str(), categoryPath, client.right, askReplace, listPathOut);
    ShowDocMessage(owner, result.message);
    return result == CsvStatus::Ok;
}
