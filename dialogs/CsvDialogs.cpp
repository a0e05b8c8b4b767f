#include "dialogs/CsvDialogs.h"

#include "dialogs/FileSelectDialog.h"
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
    return exportCsvToFile(document, path.c_str(), owner) == CsvStatus::Ok;
}

bool importCsv(HWND owner, const wchar_t* categoryPath, CeString* listPathOut) {
    CeString path;
    if (!AskForFile(owner, FileSelectLoad, path)) return false;
    RECT client = {};
    if (owner) GetClientRect(owner, &client);
    return importCsvFile(path.c_str(), categoryPath, client.right, owner, listPathOut) == CsvStatus::Ok;
}
