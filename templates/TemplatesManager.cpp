// The templates manager: the templates folder's templates with their icons,
// and the commands that make, change and delete them or choose another
// templates folder. Lists made from a template never change with it.
#include "templates/Templates.h"

#include <commctrl.h>

#include <cwchar>
#include <string>

#include "LangIds.h"
#include "app/RegistryConfig.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "dialogs/FileSelectDialog.h"
#include "platform/MenuBars.h"
#include "platform/PhoneDialog.h"
#include "platform/ScreenScale.h"
#include "templates/TemplateList.h"

namespace {

const wchar_t kTitle[] = L"Templates";

struct TemplatesManagerState {
    HINSTANCE module = nullptr;
    TemplateList templates;
};
TemplatesManagerState g_templatesManager;

TemplatesManagerState& S() { return g_templatesManager; }

TemplateListLook Look() {
    TemplateListLook look = {};
    look.columnCount = 2;
    look.columnTrim = ScaleX(50);
    look.lastColumn = ScaleX(10);
    look.textLeft = ScaleX(6) + ScaleX(16);
    look.textShiftUp = ScaleY(1);
    look.bottomGap = ScaleY(30);
    return look;
}

void Refill() {
    S().templates.Fill();
    SetFocus(S().templates.view);
}

// The selected template's name; false (message shown) when none is selected.
bool SelectedTemplate(HWND dlg, std::wstring& name) {
    if (!S().templates.HasSelection()) {
        ShowTemplateError(dlg, IDS_NO_TEMPLATE_SELECTED);
        return false;
    }
    name = S().templates.SelectedName();
    return true;
}

std::wstring PathOf(const std::wstring& name) { return S().templates.folder + name + L".zvt"; }

// ---------------------------------------------------------------------------
// Commands
// ---------------------------------------------------------------------------

void RunEditor(HWND dlg, TemplateEditRequest& edit) {
    edit.module = S().module;
    lstrcpynW(edit.folder, S().templates.folder.c_str(), MAX_PATH);
    RunTemplateEditor(dlg, edit);
}

void OnNewTemplate(HWND dlg) {
    TemplateEditRequest edit = {};
    edit.mode = TemplateEditNew;
    RunEditor(dlg, edit);
    if (edit.saved) Refill();
}

void OnEditTemplate(HWND dlg) {
    std::wstring name;
    if (!SelectedTemplate(dlg, name)) return;
    TemplateEditRequest edit = {};
    edit.mode = TemplateEditOpen;
    lstrcpynW(edit.name, name.c_str(), kTemplateNameChars + 1);
    lstrcpynW(edit.path, PathOf(name).c_str(), MAX_PATH);
    RunEditor(dlg, edit);
    // Saved under the same name the row stands as it was.
    if (name != edit.name) Refill();
}

void OnDeleteTemplate(HWND dlg) {
    std::wstring name;
    if (!SelectedTemplate(dlg, name)) return;
    std::wstring question = ResText(IDS_DELETE_TEMPLATE_TEXT) + L" \"" + name + L"\"";
    if (MessageBoxW(dlg, question.c_str(), ResText(IDS_DELETE_TEMPLATE_CAPTION).c_str(),
                    MB_YESNO | MB_ICONINFORMATION) != IDYES)
        return;
    DeleteFileW(PathOf(name).c_str());
    Refill();
}

void OnChooseFolder(HWND dlg) {
    FileSelectRequest choose;
    choose.mode = FileSelectFolder;
    choose.title = ResText(IDS_TEMPLATES_FOLDER_TITLE).c_str();
    choose.folder = S().templates.folder.c_str();
    if (!RunFileSelectDialog(dlg, choose)) return;
    S().templates.folder = choose.path.c_str();
    g_registryConfig.SetTemplatePath(choose.path.c_str());
    Refill();
}

// ---------------------------------------------------------------------------
// Messages
// ---------------------------------------------------------------------------

BOOL OnInitDialog(HWND dlg) {
    if (HWND bar = PhoneDialogMenuBar(dlg)) {
        SetSoftKeyText(bar, IDC_OK, ResText(IDS_DONE).c_str());
        // The right key is the menu's popup, which the bar numbers by its place (second: 2).
        SetSoftKeyText(bar, 2, ResText(IDS_CANCEL).c_str());
    }
    SetWindowTextW(dlg, kTitle);
    S().templates.Create(dlg, Look());
    S().templates.folder = TemplatesFolder();
    SetFocus(S().templates.view);
    S().templates.Fill();
    return FALSE;  // the focus is set
}

BOOL OnCommand(HWND dlg, int id) {
    switch (id) {
    case IDM_NEW_TEMPLATE:
    case IDM_NEW_TEMPLATE_CTX: OnNewTemplate(dlg); return TRUE;
    case IDM_EDIT_TEMPLATE:
    case IDM_EDIT_TEMPLATE_CTX: OnEditTemplate(dlg); return TRUE;
    case IDM_DELETE_TEMPLATE:
    case IDM_DELETE_TEMPLATE_CTX: OnDeleteTemplate(dlg); return TRUE;
    case IDM_TEMPLATES_FOLDER: OnChooseFolder(dlg); return TRUE;
    case IDC_OK:
    case IDOK:
    case IDCANCEL: EndDialog(dlg, 1); return TRUE;
    }
    return FALSE;
}

INT_PTR CALLBACK TemplatesManagerProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(dlg);
    case WM_COMMAND: return OnCommand(dlg, LOWORD(wParam));
    }
    return S().templates.HandleMessage(dlg, msg, lParam, IDS_TEMPLATES_HEADING);
}

}  // namespace

INT_PTR RunTemplatesManager(HWND owner, TemplatesManagerRequest& request) {
    S().module = request.module ? request.module : hLangModule;
    PhoneDialogSetup setup;
    setup.menuModule = S().module;
    setup.menuId = IDM_TEMPLATES_MANAGER_MENUBAR;
    setup.overrideBack = false;  // Back ends the manager (IDCANCEL)
    RunPhoneDialog(owner, setup, TemplatesManagerProc, 0);
    return 1;
}
