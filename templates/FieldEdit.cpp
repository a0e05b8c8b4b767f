// "Field Edit": the type, name and default of one template field. Lists are
// one-entry spinners (a list box with an up-down buddy): Left and Right turn
// them, Up and Down move between the controls, as on the phone's pad.
#include "templates/Templates.h"

#include <commctrl.h>

#include <string>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/Handles.h"
#include "base/ResString.h"
#include "listwindow/ItemEditorRows.h"
#include "platform/PhoneDialog.h"
#include "platform/ScreenScale.h"
#include "settings/ListLook.h"

// The phone's up-down style that offers a full-screen editor for its buddy;
// the desktop control ignores the bit.
#ifndef UDS_EXPANDABLE
#define UDS_EXPANDABLE 0x0200
#endif

namespace {

const wchar_t kTitle[] = L"Field Edit";
// Drawn by the dialog: one entry fills the box, and the selection is lit
// only while the box has the focus, like a phone spinner.
const DWORD kListStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT |
                         LBS_OWNERDRAWFIXED | LBS_HASSTRINGS;
const DWORD kUpDownStyle = WS_CHILD | WS_VISIBLE | UDS_WRAP | UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ARROWKEYS |
                           UDS_HORZ | UDS_EXPANDABLE;
const int kUpDownOffset = 10;  // the up-down of list n has ID n + 10
const int kTextChars = 255;    // what the name and default boxes give back

struct FieldEditState {
    FieldDef* field = nullptr;
    FontHandle font;
    FieldType shownType = FieldType::Date;  // the type whose default controls are shown
};
FieldEditState g_fieldEdit;

HWND Control(HWND dlg, int id) { return GetDlgItem(dlg, id); }

// ---------------------------------------------------------------------------
// Spinners
// ---------------------------------------------------------------------------

int Selected(HWND list) { return (int)SendMessageW(list, LB_GETCURSEL, 0, 0); }

std::wstring SelectedText(HWND list) {
    int at = Selected(list);
    if (at < 0) return std::wstring();
    LRESULT len = SendMessageW(list, LB_GETTEXTLEN, at, 0);
    if (len <= 0) return std::wstring();
    std::wstring text((size_t)len + 1, L'\0');
    SendMessageW(list, LB_GETTEXT, at, (LPARAM)&text[0]);
    text.resize((size_t)len);
    return text;
}

// Selects entry `at` of a list and keeps its up-down in step.
void Select(HWND dlg, int listId, int at) {
    HWND list = Control(dlg, listId);
    SendMessageW(list, LB_SETCURSEL, at, 0);
    HWND upDown = Control(dlg, listId + kUpDownOffset);
    int count = (int)SendMessageW(list, LB_GETCOUNT, 0, 0);
    SendMessageW(upDown, UDM_SETRANGE32, 0, count > 0 ? count - 1 : 0);
    SendMessageW(upDown, UDM_SETPOS32, 0, at);
}

void Fill(HWND dlg, int listId, const std::vector<CeString>& entries, int selected) {
    HWND list = Control(dlg, listId);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const CeString& entry : entries) SendMessageW(list, LB_ADDSTRING, 0, (LPARAM)entry.c_str());
    Select(dlg, listId, selected);
}

std::vector<CeString> DateModes() {
    std::vector<CeString> texts;
    for (int i = 0; i < kDateDefaultModeCount; ++i) texts.push_back(dateDefaultModeText(i));
    return texts;
}

std::vector<CeString> TimeModes() {
    std::vector<CeString> texts;
    for (int i = 0; i < kTimeDefaultModeCount; ++i) texts.push_back(timeDefaultModeListText(i));
    return texts;
}

// YesNo shows "No" (choice 0) first; saving stores the inverse of the position.
std::vector<CeString> Choices(FieldType type) {
    std::vector<CeString> texts;
    for (int i = 0; i < choiceCount(type); ++i) texts.push_back(choiceText(type, i));
    return texts;
}

// ---------------------------------------------------------------------------
// The type and its default controls
// ---------------------------------------------------------------------------

FieldType SelectedType(HWND dlg) {
    std::wstring text = SelectedText(Control(dlg, kFieldTypeListId));
    for (int i = 0; i < kFieldTypeCount; ++i)
        if (text == fieldTypeName((FieldType)i).c_str()) return (FieldType)i;
    return FieldType::Date;
}

void ShowDefaults(HWND dlg, bool text, bool list, bool dateTime) {
    const int shown[][2] = {{kFieldDefaultEditId, text},        {kFieldDefaultListId, list},
                            {kFieldDefaultUpDownId, list},      {kFieldDateDefaultListId, dateTime},
                            {kFieldDateUpDownId, dateTime},     {kFieldTimeDefaultListId, dateTime},
                            {kFieldTimeUpDownId, dateTime}};
    for (const auto& row : shown) ShowWindow(Control(dlg, row[0]), row[1] ? SW_SHOW : SW_HIDE);
}

void OnTypeChanged(HWND dlg) {
    FieldType type = SelectedType(dlg);
    g_fieldEdit.shownType = type;
    if (type == FieldType::Text || type == FieldType::Number) {
        ShowDefaults(dlg, true, false, false);
        return;
    }
    const bool dateTime = type == FieldType::DateTime;
    ShowDefaults(dlg, false, !dateTime, dateTime);
    switch (type) {
    case FieldType::Date: Fill(dlg, kFieldDefaultListId, DateModes(), 0); break;
    case FieldType::Time: Fill(dlg, kFieldDefaultListId, TimeModes(), 0); break;
    case FieldType::Priority: Fill(dlg, kFieldDefaultListId, Choices(type), 1); break;
    case FieldType::DateTime:
        // The single default list is not used; emptied, it gives no default text.
        Fill(dlg, kFieldDefaultListId, {}, -1);
        Fill(dlg, kFieldDateDefaultListId, DateModes(), 0);
        Fill(dlg, kFieldTimeDefaultListId, TimeModes(), 0);
        break;
    default: Fill(dlg, kFieldDefaultListId, Choices(type), 0); break;
    }
}

void StepList(HWND dlg, int listId, int delta) {
    HWND list = Control(dlg, listId);
    int count = (int)SendMessageW(list, LB_GETCOUNT, 0, 0);
    if (count <= 0) return;
    int at = Selected(list);
    at = at < 0 ? 0 : ((at + delta) % count + count) % count;
    Select(dlg, listId, at);
    if (listId == kFieldTypeListId) OnTypeChanged(dlg);
}

// The controls Up and Down walk through, top to bottom; hidden ones are skipped.
void MoveFocus(HWND dlg, int fromId, int delta) {
    const int order[] = {kFieldTypeListId, kFieldNameEditId, kFieldDefaultEditId, kFieldDefaultListId,
                         kFieldDateDefaultListId, kFieldTimeDefaultListId};
    const int n = sizeof order / sizeof order[0];
    int at = 0;
    while (at < n && order[at] != fromId) ++at;
    for (int i = at + delta; i >= 0 && i < n; i += delta) {
        HWND next = Control(dlg, order[i]);
        if (IsWindowVisible(next)) {
            SendMessageW(dlg, WM_NEXTDLGCTL, (WPARAM)next, TRUE);
            return;
        }
    }
}

LRESULT CALLBACK ControlKeyProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
    if (msg == WM_NCDESTROY) RemoveWindowSubclass(hwnd, ControlKeyProc, id);
    if (msg == WM_GETDLGCODE) return DefSubclassProc(hwnd, msg, wParam, lParam) | DLGC_WANTARROWS;
    if (msg == WM_KEYDOWN) {
        HWND dlg = GetParent(hwnd);
        const bool isList = id != kFieldNameEditId && id != kFieldDefaultEditId;
        switch (wParam) {
        case VK_UP: MoveFocus(dlg, (int)id, -1); return 0;
        case VK_DOWN: MoveFocus(dlg, (int)id, 1); return 0;
        case VK_LEFT:
        case VK_RIGHT:
            if (!isList) break;
            StepList(dlg, (int)id, wParam == VK_RIGHT ? 1 : -1);
            return 0;
        }
    }
    return DefSubclassProc(hwnd, msg, wParam, lParam);
}

// ---------------------------------------------------------------------------
// Set-up
// ---------------------------------------------------------------------------

HWND CreateChild(HWND dlg, const wchar_t* cls, DWORD style, int id, int x, int y, int w, int h) {
    HWND child = CreateWindowExW(0, cls, L"", style, ScaleX(x), ScaleY(y), w, ScaleY(h), dlg, (HMENU)(INT_PTR)id,
                                 hInstance, nullptr);
    SendMessageW(child, WM_SETFONT, (WPARAM)g_fieldEdit.font.Get(), FALSE);
    SetWindowSubclass(child, ControlKeyProc, (UINT_PTR)id, 0);
    return child;
}

// A list with its up-down; `x` and `width` are in device pixels (they come
// from the client width).
void CreateSpinner(HWND dlg, int id, int x, int y, int width, int height) {
    HWND list = CreateWindowExW(0, L"listbox", L"", kListStyle, x, ScaleY(y), width, ScaleY(height), dlg,
                                (HMENU)(INT_PTR)id, hInstance, nullptr);
    SendMessageW(list, WM_SETFONT, (WPARAM)g_fieldEdit.font.Get(), FALSE);
    HWND upDown = CreateWindowExW(0, UPDOWN_CLASSW, L"", kUpDownStyle, 0, 0, 0, 0, dlg,
                                  (HMENU)(INT_PTR)(id + kUpDownOffset), hInstance, nullptr);
    SendMessageW(upDown, UDM_SETBUDDY, (WPARAM)list, 0);
    // The arrows take the right end of the box at the size of the screen's
    // other controls (the up-down alone keeps the system's 96-dpi width).
    const int arrows = ScaleX(16);
    MoveWindow(list, x, ScaleY(y), width - arrows, ScaleY(height), FALSE);
    MoveWindow(upDown, x + width - arrows, ScaleY(y), arrows, ScaleY(height), FALSE);
    // Installed after the up-down took its buddy, so this sees the keys first.
    SetWindowSubclass(list, ControlKeyProc, (UINT_PTR)id, 0);
}

BOOL OnInitDialog(HWND dlg, FieldDef* field) {
    g_fieldEdit.field = field;
    g_fieldEdit.font.Reset(CreateFormFont(FW_NORMAL));
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&icc);
    SetWindowTextW(dlg, kTitle);

    RECT client;
    GetClientRect(dlg, &client);
    const int w = client.right;
    const int full = w - ScaleX(20), half = w / 2;
    const int left = ScaleX(10);
    CreateSpinner(dlg, kFieldTypeListId, left, 20, full, 20);
    HWND name = CreateChild(dlg, L"edit", WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL,
                            kFieldNameEditId, 10, 60, full, 20);
    SendMessageW(name, EM_LIMITTEXT, kFieldTextCapacity - 1, 0);
    CreateSpinner(dlg, kFieldDefaultListId, left, 100, full, 20);
    CreateSpinner(dlg, kFieldDateDefaultListId, left, 100, half - ScaleX(10), 25);
    CreateSpinner(dlg, kFieldTimeDefaultListId, left + half, 100, half - ScaleX(20), 25);
    HWND text = CreateChild(dlg, L"edit", WS_CHILD | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, kFieldDefaultEditId,
                            10, 100, full, 20);
    SendMessageW(text, EM_LIMITTEXT, kFieldTextCapacity - 1, 0);

    std::vector<CeString> types;
    for (int i = 0; i < kFieldTypeCount; ++i) types.push_back(fieldTypeName((FieldType)i));
    Fill(dlg, kFieldTypeListId, types, IsKnownType(field->type) ? (int)field->type : 0);
    SetWindowTextW(name, field->name);
    OnTypeChanged(dlg);
    if (field->type == FieldType::Text || field->type == FieldType::Number) SetWindowTextW(text, field->defaultText);
    SetFocus(Control(dlg, kFieldTypeListId));
    return FALSE;  // the focus is set
}

// ---------------------------------------------------------------------------
// Saving
// ---------------------------------------------------------------------------

std::wstring WindowText(HWND hwnd) {
    wchar_t text[kTextChars + 1] = {};
    GetWindowTextW(hwnd, text, kTextChars + 1);
    return text;
}

void ShowBadNumber(HWND dlg, const std::wstring& name) {
    std::wstring text = ResText(IDS_NUMBER_INVALID) + L" \"" + name + L"\"";
    MessageBoxW(dlg, text.c_str(), ResText(IDS_ERROR_CAPTION).c_str(), MB_OK | MB_ICONEXCLAMATION);
}

void OnSave(HWND dlg) {
    const FieldType type = SelectedType(dlg);
    const std::wstring name = WindowText(Control(dlg, kFieldNameEditId));
    FieldDef result = *g_fieldEdit.field;
    result.type = type;
    result.SetName(name.c_str());
    if (type == FieldType::Text || type == FieldType::Number) {
        std::wstring text = WindowText(Control(dlg, kFieldDefaultEditId));
        if (type == FieldType::Number && !IsAcceptedNumberText(text.c_str())) {
            ShowBadNumber(dlg, name);
            return;
        }
        result.SetDefaultText(text.c_str());
    } else {
        HWND list = Control(dlg, kFieldDefaultListId);
        const int at = Selected(list);
        switch (type) {
        case FieldType::YesNo: result.defaultChoice = at == 0 ? 1 : 0; break;
        case FieldType::Time: result.timeDefaultMode = at; break;
        case FieldType::Date: result.dateDefaultMode = at; break;
        case FieldType::DateTime:
            result.dateDefaultMode = Selected(Control(dlg, kFieldDateDefaultListId));
            result.timeDefaultMode = Selected(Control(dlg, kFieldTimeDefaultListId));
            break;
        default: result.defaultChoice = at; break;  // Priority, Check, Selection
        }
        result.SetDefaultText(SelectedText(list).c_str());
    }
    *g_fieldEdit.field = result;
    EndDialog(dlg, 1);
}

// ---------------------------------------------------------------------------
// Messages
// ---------------------------------------------------------------------------

BOOL OnCommand(HWND dlg, int id, int code) {
    switch (id) {
    case IDC_OK:
    case IDOK:  // the action key saves as the left soft key does
        OnSave(dlg);
        return TRUE;
    case IDCANCEL:
    case IDC_CANCEL: EndDialog(dlg, 0); return TRUE;
    case kFieldTypeListId:
    case kFieldDefaultListId:
    case kFieldDateDefaultListId:
    case kFieldTimeDefaultListId:
        if (code == LBN_SELCHANGE) {
            // A tap in the list: the up-down follows, and a new type refills.
            Select(dlg, id, Selected(Control(dlg, id)));
            if (id == kFieldTypeListId) OnTypeChanged(dlg);
        }
        return TRUE;
    }
    return FALSE;
}

// A tap on an up-down arrow has already moved its list; a new type refills.
BOOL OnHScroll(HWND dlg, HWND from) {
    if (from == Control(dlg, kFieldTypeUpDownId) && SelectedType(dlg) != g_fieldEdit.shownType) OnTypeChanged(dlg);
    return TRUE;
}

BOOL OnPaint(HWND dlg) {
    WhitePaint paint(dlg);
    SelectedObject font(paint.dc, g_fieldEdit.font.Get());
    SetBkMode(paint.dc, TRANSPARENT);
    SetTextColor(paint.dc, GetSysColor(COLOR_WINDOWTEXT));
    const struct { UINT id; int top; } labels[] = {
        {IDS_FIELD_TYPE_LABEL, 0}, {IDS_FIELD_NAME_LABEL, 40}, {IDS_FIELD_DEFAULT_LABEL, 80}};
    for (const auto& label : labels) {
        RECT band = {ScaleX(10), ScaleY(label.top), paint.client.right - ScaleX(10), ScaleY(label.top + 20)};
        std::wstring text = ResText(label.id);
        DrawTextW(paint.dc, text.c_str(), (int)text.size(), &band, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    }
    return TRUE;
}

BOOL OnMeasureItem(MEASUREITEMSTRUCT* mis) {
    const int boxHeight = (mis->CtlID == kFieldDateDefaultListId || mis->CtlID == kFieldTimeDefaultListId) ? 25 : 20;
    mis->itemHeight = ScaleY(boxHeight) - 2 * GetSystemMetrics(SM_CYBORDER);
    return TRUE;
}

BOOL OnDrawItem(const DRAWITEMSTRUCT* dis) {
    DrawListEntry(*dis);
    return TRUE;
}

BOOL OnHotKey(WPARAM wParam, LPARAM lParam) {
    if (HIWORD(lParam) == VK_ESCAPE) SHSendBackToFocusWindow(WM_HOTKEY, wParam, lParam);
    return TRUE;
}

INT_PTR CALLBACK FieldEditProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(dlg, (FieldDef*)lParam);
    case WM_COMMAND: return OnCommand(dlg, LOWORD(wParam), HIWORD(wParam));
    case WM_HSCROLL: return OnHScroll(dlg, (HWND)lParam);
    case WM_PAINT: return OnPaint(dlg);
    case WM_HOTKEY: return OnHotKey(wParam, lParam);
    case WM_MEASUREITEM: return OnMeasureItem((MEASUREITEMSTRUCT*)lParam);
    case WM_DRAWITEM: return OnDrawItem((const DRAWITEMSTRUCT*)lParam);
    }
    return FALSE;
}

}  // namespace

int editField(HWND owner, FieldDef& field) {
    g_fieldEdit = FieldEditState();
    PhoneDialogSetup setup;
    setup.menuModule = hLangModule;
    setup.menuId = IDM_OK_CANCEL_MENUBAR;  // Back erases in the boxes instead of closing
    INT_PTR result = RunPhoneDialog(owner, setup, FieldEditProc, (LPARAM)&field);
    g_fieldEdit = FieldEditState();
    return result == 1 ? 1 : 0;
}
