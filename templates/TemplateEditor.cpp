// "Edit Template": the ordered fields of one template (a Name and Type row
// each), the template's icon, and saving under a name the user gives.
#include "templates/Templates.h"

#include <commctrl.h>

#include <cwchar>
#include <string>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/Handles.h"
#include "base/ResString.h"
#include "dialogs/MessageBoxes.h"
#include "dialogs/TextEntry.h"
#include "document/ListFile.h"
#include "platform/PhoneDialog.h"
#include "platform/ScreenScale.h"
#include "program/ProgramIds.h"
#include "settings/IconPicker.h"
#include "templates/TemplateList.h"

namespace {

const wchar_t kTitle[] = L"Edit Template";
const wchar_t kNamePrompt[] = L"Please insert template name: ";

struct TemplateEditorState {
    TemplateEditRequest* request = nullptr;
    TemplateFieldList fields;  // the working set, in column order
    PlanarImage icon;          // empty: the template has none
    std::wstring folder;       // where a save goes, ending in "\"
    HWND list = nullptr;
    FontHandle font;
    bool damaged = false;      // the file was read only in part
};
TemplateEditorState g_templateEditor;

TemplateEditorState& S() { return g_templateEditor; }

// ---------------------------------------------------------------------------
// The field list
// ---------------------------------------------------------------------------

void InsertRow(int index, const FieldDef& field) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = index;
    item.pszText = (LPWSTR)field.name;
    int row = (int)SendMessageW(S().list, LVM_INSERTITEMW, 0, (LPARAM)&item);
    CeString type = fieldTypeName(field.type);
    item.iItem = row;
    item.iSubItem = 1;
    item.pszText = (LPWSTR)type.c_str();
    SendMessageW(S().list, LVM_SETITEMTEXTW, row, (LPARAM)&item);
}

void SelectRow(int row) {
    LVITEMW state = {};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(S().list, LVM_SETITEMSTATE, row, (LPARAM)&state);
    SendMessageW(S().list, LVM_SETSELECTIONMARK, 0, row);
    SendMessageW(S().list, LVM_ENSUREVISIBLE, row, FALSE);
}

void FillRows() {
    SendMessageW(S().list, LVM_DELETEALLITEMS, 0, 0);
    for (int i = 0; i < S().fields.count; ++i) InsertRow(i, S().fields.fields[i]);
}

int SelectedRow() {
    return (int)SendMessageW(S().list, LVM_GETNEXTITEM, (WPARAM)-1, LVNI_SELECTED);
}

void AddColumn(int index, const wchar_t* title, int width) {
    LVCOLUMNW column = {};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = (LPWSTR)title;
    column.cx = width;
    column.iSubItem = index;
    SendMessageW(S().list, LVM_INSERTCOLUMNW, index, (LPARAM)&column);
}

// ---------------------------------------------------------------------------
// Commands
// ---------------------------------------------------------------------------

void OnAddField(HWND dlg) {
    // The 51st field is refused before the user fills it in.
    if (S().fields.count >= kMaxFields) {
        ShowTemplateError(dlg, IDS_TOO_MANY_FIELDS);
        return;
    }
    FieldDef field;
    if (!editField(dlg, field) || !S().fields.Add(field)) return;
    const int row = S().fields.count - 1;
    InsertRow(row, field);
    SelectRow(row);
}

void OnDeleteField() {
    const int row = SelectedRow();
    if (row < 0 || row >= S().fields.count) return;
    SendMessageW(S().list, LVM_DELETEITEM, row, 0);
    S().fields.Remove(row);
    if (S().fields.count > 0) SelectRow(row < S().fields.count ? row : S().fields.count - 1);
}

void OnDeleteAll() {
    SendMessageW(S().list, LVM_DELETEALLITEMS, 0, 0);
    S().fields.Clear();
}

void OnMoveUp() {
    const int row = SelectedRow();
    if (row <= 0 || !S().fields.Swap(row, row - 1)) return;
    FillRows();
    SelectRow(row - 1);
}

void OnMoveDown() {
    const int row = SelectedRow();
    if (row < 0 || !S().fields.Swap(row, row + 1)) return;
    FillRows();
}

void OnChooseIcon(HWND dlg) {
    if (IconPicker::Run(dlg, hLangModule, (INT_PTR)hInstance, IDB_PROGRAM_IMAGE_STRIP, 0, S().icon))
        InvalidateRect(dlg, nullptr, TRUE);
}

// The one place the editor writes a file: the old file stays until the new
// one is whole. False (message shown, with its cause) when it failed.
bool WriteTemplate(HWND dlg, const std::wstring& path) {
    DocMessage message;
    if (writeTemplateFile(path.c_str(), S().fields, S().icon, &message) == FileStatus::Ok) return true;
    if (message.IsEmpty()) message = TemplateError(IDS_TEMPLATE_CREATE_FAILED);
    ShowDocMessage(dlg, message);
    return false;
}

void OnSave(HWND dlg) {
    TextEntryRequest prompt = {};
    prompt.module = hInstance;
    prompt.prompt = kNamePrompt;
    lstrcpynW(prompt.text, S().request->name, kTextEntryMaxChars + 1);
    if (!RunTextEntryDialog(dlg, prompt)) return;
    if (!prompt.text[0]) {
        ShowTemplateError(dlg, IDS_TEMPLATE_NAME_EMPTY);
        return;
    }
    // A template read only in part loses its other fields when saved.
    if (S().damaged && ResMessageBox(dlg, IDS_SAVE_DAMAGED_TEMPLATE_TEXT, IDS_SAVE_DAMAGED_CAPTION,
                                     MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    wchar_t path[MAX_PATH * 2] = {};
    _snwprintf(path, MAX_PATH * 2 - 1, L"%s%s.zvt", S().folder.c_str(), prompt.text);
    if (!WriteTemplate(dlg, path)) return;  // the editor stays open: another name may work
    lstrcpynW(S().request->name, prompt.text, kTemplateNameChars + 1);
    S().request->saved = 1;
    S().icon.Release();
    EndDialog(dlg, 1);
}

void OnClose(HWND dlg) {
    S().icon.Release();
    EndDialog(dlg, 1);
}

// ---------------------------------------------------------------------------
// Messages
// ---------------------------------------------------------------------------

BOOL OnInitDialog(HWND dlg) {
    SetWindowTextW(dlg, kTitle);
    LOGFONTW lf = {};
    lf.lfHeight = -ScaleY(12);
    lf.lfWeight = FW_BOLD;
    lstrcpyW(lf.lfFaceName, L"Tahoma");
    S().font.Reset(CreateFontIndirectW(&lf));

    std::wstring heading = ResText(IDS_TEMPLATE_FIELDS_HEADING);
    HWND caption = CreateWindowExW(0, L"STATIC", heading.c_str(), WS_CHILD | WS_VISIBLE | SS_CENTER, ScaleX(10),
                                   ScaleY(10), ScaleX(301), ScaleY(18), dlg, (HMENU)(INT_PTR)kTemplateCaptionId,
                                   hInstance, nullptr);
    SendMessageW(caption, WM_SETFONT, (WPARAM)S().font.Get(), FALSE);

    RECT client;
    GetClientRect(dlg, &client);
    S().list = CreateWindowExW(0, WC_LISTVIEWW, L"ListView2",
                               WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL |
                                   LVS_SHOWSELALWAYS,
                               ScaleX(5), ScaleY(30), client.right - ScaleX(10), client.bottom - ScaleY(35), dlg,
                               (HMENU)(INT_PTR)kTemplateFieldListId, hInstance, nullptr);
    SendMessageW(S().list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    const int width = client.right - ScaleX(10) - GetSystemMetrics(SM_CXVSCROLL) - ScaleX(4);
    AddColumn(0, L"Name", width / 2);
    AddColumn(1, L"Type", width - width / 2);
    FillRows();
    if (S().fields.count > 0) SelectRow(0);
    SetFocus(S().list);
    return FALSE;  // the focus is set
}

// The template's icon beside the caption, so a chosen icon shows at once.
BOOL OnPaint(HWND dlg) {
    WhitePaint paint(dlg);
    if (S().icon.IsDrawable()) DrawImage(S().icon, paint.dc, ScaleX(2), ScaleY(2));
    return TRUE;
}

BOOL OnCtlColorStatic(HDC dc) {
    SetBkMode(dc, TRANSPARENT);
    return (BOOL)(INT_PTR)GetStockObject(WHITE_BRUSH);
}

BOOL OnCommand(HWND dlg, int id) {
    switch (id) {
    case IDC_OK: OnSave(dlg); return TRUE;
    case IDM_ADD_FIELD: OnAddField(dlg); return TRUE;
    case IDM_DELETE_FIELD: OnDeleteField(); return TRUE;
    case IDM_DELETE_ALL_FIELDS: OnDeleteAll(); return TRUE;
    case IDM_FIELD_UP: OnMoveUp(); return TRUE;
    case IDM_FIELD_DOWN: OnMoveDown(); return TRUE;
    case IDM_TEMPLATE_ICON: OnChooseIcon(dlg); return TRUE;
    case IDCANCEL:
    case IDC_CANCEL: OnClose(dlg); return TRUE;
    }
    return FALSE;
}

INT_PTR CALLBACK TemplateEditorProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(dlg);
    case WM_PAINT: return OnPaint(dlg);
    case WM_CTLCOLORSTATIC: return OnCtlColorStatic((HDC)wParam);
    case WM_COMMAND: return OnCommand(dlg, LOWORD(wParam));
    }
    return FALSE;
}

// The name of a template file: between the last "\" and the first "." after it.
std::wstring TitleOfPath(const wchar_t* path) {
    const wchar_t* slash = wcsrchr(path, L'\\');
    std::wstring title = slash ? slash + 1 : path;
    return title.substr(0, title.find(L'.'));
}

// The one place the editor reads a file. False (message shown) when the
// template is refused.
bool ReadTemplate(HWND owner, const wchar_t* path) {
    DocMessage message;
    FileStatus status = readTemplateFile(path, S().fields, S().icon, nullptr, &message);
    if (status == FileStatus::Ok) return true;
    ShowDocMessage(owner, message);
    if (status == FileStatus::PartlyRead) {
        S().damaged = true;  // the fields read whole are kept; a save asks first
        return true;
    }
    S().fields.Clear();
    S().icon.Release();
    return false;
}

}  // namespace

INT_PTR RunTemplateEditor(HWND owner, TemplateEditRequest& request) {
    // The working set is large and the editor opens from inside the new list
    // dialog and the manager: it is reset for every run.
    S().fields.Clear();
    S().icon.Release();
    S().request = &request;
    S().damaged = false;
    request.saved = 0;
    request.name[kTemplateNameChars] = 0;
    S().folder = request.folder[0] ? request.folder : TemplatesFolder().c_str();
    if (S().folder.back() != L'\\') S().folder += L'\\';
    if (request.mode == TemplateEditOpen) {
        if (!ReadTemplate(owner, request.path)) return 0;
        lstrcpynW(request.name, TitleOfPath(request.path).c_str(), kTemplateNameChars + 1);
    }
    PhoneDialogSetup setup;
    setup.menuModule = request.module ? request.module : hLangModule;
    setup.menuId = IDM_TEMPLATE_EDITOR_MENUBAR;
    setup.overrideBack = false;  // Back closes without saving (IDCANCEL)
    INT_PTR result = RunPhoneDialog(owner, setup, TemplateEditorProc, 0);
    S().icon.Release();
    S().list = nullptr;
    S().font.Reset();
    S().request = nullptr;
    return result < 0 ? 0 : result;
}
