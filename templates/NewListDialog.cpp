// The new list dialog: the templates of the templates folder with their
// icons; the chosen one (or one made on the spot) becomes an empty list in
// the caller's category, which opens at once in the list window.
#include "templates/Templates.h"

#include <commctrl.h>

#include <cstdio>
#include <string>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/MessageBoxes.h"
#include "dialogs/TextEntry.h"
#include "document/ListFile.h"
#include "listwindow/ListWindow.h"
#include "platform/PhoneDialog.h"
#include "platform/ScreenScale.h"
#include "templates/TemplateList.h"

namespace {

const wchar_t kNamePrompt[] = L"Please insert list name: ";

struct NewListState {
    NewListRequest* request = nullptr;
    HINSTANCE module = nullptr;
    TemplateList templates;
    bool newTemplate = false;       // the template was made through 40061
    std::wstring newTemplateName;
};
NewListState g_newList;

NewListState& S() { return g_newList; }

TemplateListLook Look() {
    TemplateListLook look = {};
    look.columnCount = 1;
    look.textLeft = ScaleX(2) + ScaleX(16) + 2;
    look.bottomGap = ScaleY(25);
    return look;
}

void SelectTemplate(const std::wstring& name) {
    HWND view = S().templates.view;
    LVFINDINFOW find = {};
    find.flags = LVFI_STRING;
    find.psz = name.c_str();
    int row = (int)SendMessageW(view, LVM_FINDITEMW, (WPARAM)-1, (LPARAM)&find);
    if (row < 0) return;
    LVITEMW state = {};
    state.stateMask = state.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(view, LVM_SETITEMSTATE, row, (LPARAM)&state);
    SendMessageW(view, LVM_SETSELECTIONMARK, 0, row);
    SendMessageW(view, LVM_ENSUREVISIBLE, row, FALSE);
}

// ---------------------------------------------------------------------------
// Creating the list
// ---------------------------------------------------------------------------

// The one place the dialog writes a list file. The list is written only
// once the template read whole, so a list the user chose to replace stays as
// it was when the template fails. A name that was free keeps the empty file
// the device leaves there (it creates the list before it reads the template).
// False when it failed, with `message` telling which part did.
bool MakeListFile(const std::wstring& templatePath, const std::wstring& listPath, DocMessage& message) {
    const bool listExisted = GetFileAttributesW(listPath.c_str()) != INVALID_FILE_ATTRIBUTES;
    FileStatus status = makeListFromTemplate(templatePath.c_str(), listPath.c_str(), &message);
    if (status == FileStatus::Ok) return true;
    // Looked at only now, so a list made without trouble opens its template once.
    FileHandle probe(CreateFileW(templatePath.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL, nullptr));
    const bool templateOpens = probe.IsValid();
    probe.Reset();
    if (!listExisted && status != FileStatus::CannotCreate && status != FileStatus::WriteFailed)
        FileHandle(CreateFileW(listPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!templateOpens || status == FileStatus::CannotOpen || status == FileStatus::Missing)
        message = TemplateError(IDS_TEMPLATE_OPEN_FAILED);
    else if (message.IsEmpty())
        message = TemplateError(IDS_TEMPLATE_VERSION_BAD);
    return false;
}

bool FileOpensForReading(const std::wstring& path) {
    FILE* file = _wfopen(path.c_str(), L"r");
    if (!file) return false;
    fclose(file);
    return true;
}

bool MakeTemplateFirst(HWND dlg) {
    TemplateEditRequest edit = {};
    edit.module = S().module;
    edit.mode = TemplateEditNew;
    lstrcpynW(edit.folder, S().templates.folder.c_str(), MAX_PATH);
    RunTemplateEditor(dlg, edit);
    if (!edit.saved) return false;
    S().newTemplate = true;
    S().newTemplateName = edit.name;
    // The new template is listed and chosen, so a later try that starts
    // from the list picks what the flag would pick.
    S().templates.Fill();
    SelectTemplate(edit.name);
    return true;
}

// Runs the new list in the list window; the file goes again when the user
// never saved it (with the backup the window made of it on opening).
void OpenNewList(HWND dlg, const std::wstring& path) {
    ListOpenRequest open = {};
    open.module = hInstance;
    lstrcpynW(open.path, path.c_str(), MAX_PATH);
    ShowWindow(dlg, SW_HIDE);
    if (RunListWindow(dlg, open) != 0) {
        S().request->created = open.saved;
        if (!open.saved) {
            DeleteFileW(path.c_str());
            DeleteFileW(backupPathOf(path.c_str()).c_str());
        }
    }
    EndDialog(dlg, 1);
}

void CreateList(HWND dlg, bool templateFirst) {
    if (templateFirst && !MakeTemplateFirst(dlg)) return;

    TextEntryRequest prompt = {};
    prompt.module = hInstance;
    prompt.prompt = kNamePrompt;
    if (!RunTextEntryDialog(dlg, prompt)) return;
    const std::wstring name = prompt.text;
    if (name.empty()) {
        ShowTemplateError(dlg, IDS_LIST_NAME_EMPTY);
        return;
    }
    std::wstring listPath = std::wstring(S().request->categoryFolder) + name + L".zvl";
    if (FileOpensForReading(listPath)) {
        wchar_t question[1024 + kTemplateNameChars] = {};
        _snwprintf(question, sizeof question / sizeof question[0] - 1, ResText(IDS_LIST_EXISTS_TEXT).c_str(),
                   name.c_str());
        if (MessageBoxW(dlg, question, ResText(IDS_LIST_EXISTS_CAPTION).c_str(), MB_YESNO | MB_ICONQUESTION) !=
            IDYES)
            return;
    }
    std::wstring templateName = S().newTemplate ? S().newTemplateName : S().templates.SelectedName();
    if (!S().newTemplate && !S().templates.HasSelection()) {
        ShowTemplateError(dlg, IDS_NO_TEMPLATE_SELECTED);
        return;
    }
    const std::wstring templatePath = S().templates.folder + templateName + L".zvt";
    listPath = normalizePath(listPath.c_str()).c_str();
    DocMessage failure;
    if (!MakeListFile(templatePath, listPath, failure)) {
        ShowDocMessage(dlg, failure);
        return;
    }
    S().newTemplate = false;
    lstrcpynW(S().request->listName, name.c_str(), kTemplateNameChars + 1);
    lstrcpynW(S().request->listPath, listPath.c_str(), MAX_PATH);
    OpenNewList(dlg, listPath);
}

// ---------------------------------------------------------------------------
// Messages
// ---------------------------------------------------------------------------

BOOL OnInitDialog(HWND dlg) {
    S().templates.Create(dlg, Look());
    S().templates.folder = TemplatesFolder();
    S().templates.Fill();
    SetFocus(S().templates.view);
    return FALSE;  // the focus is set
}

BOOL OnCommand(HWND dlg, int id) {
    switch (id) {
    case IDOK:
    case IDM_CREATE_LIST: CreateList(dlg, false); return TRUE;
    case IDM_NEW_TEMPLATE_FOR_LIST: CreateList(dlg, true); return TRUE;
    case IDCANCEL:
        S().request->created = 0;
        EndDialog(dlg, 1);
        return TRUE;
    }
    return FALSE;
}

INT_PTR CALLBACK NewListProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(dlg);
    case WM_COMMAND: return OnCommand(dlg, LOWORD(wParam));
    }
    return S().templates.HandleMessage(dlg, msg, lParam, IDS_NEW_LIST_HEADING);
}

}  // namespace

INT_PTR RunNewListDialog(HWND owner, NewListRequest& request) {
    S().request = &request;
    S().module = request.module ? request.module : hLangModule;
    S().newTemplate = false;
    S().newTemplateName.clear();
    request.created = 0;
    PhoneDialogSetup setup;
    setup.menuModule = S().module;
    setup.menuId = IDM_NEW_LIST_MENUBAR;
    setup.overrideBack = false;  // Back cancels (IDCANCEL)
    RunPhoneDialog(owner, setup, NewListProc, 0);
    S().request = nullptr;
    return 1;
}
