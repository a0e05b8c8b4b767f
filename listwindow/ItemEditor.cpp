// The item edit dialog: procedure, handlers, scrolling of long forms and the
// public entry points. The rows themselves are built in ItemEditorRows.cpp.
#include "listwindow/ItemEditor.h"

#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/Handles.h"
#include "base/ResString.h"
#include "document/ValueText.h"
#include "listwindow/ItemEditorRows.h"
#include "platform/PhoneDialog.h"
#include "program/ProgramIds.h"
#include "settings/AppSettings.h"
#include "settings/ListLook.h"

namespace {

// Everything the open dialog knows. The dialog is modal, so one instance.
struct ItemEditorState {
    ItemEditRequest* request = nullptr;
    FieldValues values;   // the working copy, written back on result 1
    std::vector<ItemEditorRow> rows;  // label, editor, up-down and spare word per field
    RowGeometry geometry;
    GdiObject<HFONT> font;            // shared by every control
    GdiObject<HBRUSH> background;     // the list's background colour
    COLORREF textColor = 0;
    int scrollPos = 0;                // pixels scrolled down
    int contentHeight = 0;            // height of all rows with margins
    int clientHeight = 0;
};

ItemEditorState g_itemEditor;

const FieldDef& FieldAt(int index) { return g_itemEditor.request->fields[index]; }
int RowCount() { return (int)g_itemEditor.rows.size(); }

// ---------------------------------------------------------------------------
// Scrolling
// ---------------------------------------------------------------------------

int RowTop(int index) { return g_itemEditor.geometry.firstTop + index * g_itemEditor.geometry.pitch; }
int MaxScroll() { return std::max(0, g_itemEditor.contentHeight - g_itemEditor.clientHeight); }

bool TopInView(int top) {
    return top + g_itemEditor.geometry.rowHeight > 0 && top < g_itemEditor.clientHeight;
}

// Puts the rows where the scroll position wants them. Moving fifty rows of
// windows at every step is slow, and a row out of sight stays out of sight
// while it is not moved, so only rows that are or will be in view move; the
// others keep a stale place until they come near (`spare` holds the top
// each row was put at).
void PlaceRows(HWND dlg, bool all) {
    HDWP defer = BeginDeferWindowPos(RowCount() * 3);
    for (int i = 0; i < RowCount(); ++i) {
        ItemEditorRow& row = g_itemEditor.rows[i];
        const int top = RowTop(i) - g_itemEditor.scrollPos;
        if (!all && (top == row.spare || (!TopInView(top) && !TopInView(row.spare)))) continue;
        PlaceItemRow(defer, row, g_itemEditor.geometry, top);
        row.spare = top;
    }
    if (defer) EndDeferWindowPos(defer);
    // The rows move without drawing; the whole form is drawn once after.
    RedrawWindow(dlg, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void ScrollTo(HWND dlg, int pos) {
    pos = std::clamp(pos, 0, MaxScroll());
    if (pos == g_itemEditor.scrollPos) return;
    g_itemEditor.scrollPos = pos;
    SetScrollPos(dlg, SB_VERT, pos, TRUE);
    PlaceRows(dlg, false);
}

// Scrolls the least needed for row `index` to be wholly in view.
void EnsureRowVisible(HWND dlg, int index) {
    if (index < 0 || index >= RowCount() || MaxScroll() == 0) return;
    const RowGeometry& g = g_itemEditor.geometry;
    const int top = RowTop(index) - g.firstTop;              // keep the first-row margin above
    const int bottom = RowTop(index) + g.rowHeight + g.firstTop;  // and the same below
    int pos = g_itemEditor.scrollPos;
    if (top < pos) pos = top;
    else if (bottom > pos + g_itemEditor.clientHeight) pos = bottom - g_itemEditor.clientHeight;
    ScrollTo(dlg, pos);
}

void SetUpScrolling(HWND dlg) {
    const int n = (int)g_itemEditor.request->fieldCount;
    RECT rc;
    GetClientRect(dlg, &rc);
    RowGeometry g = ComputeRowGeometry(rc.right);
    g_itemEditor.contentHeight = g.firstTop + n * g.pitch + g.firstTop;
    if (g_itemEditor.contentHeight > rc.bottom) {
        // The scroll bar takes part of the width: lay out in what is left.
        ShowScrollBar(dlg, SB_VERT, TRUE);
        GetClientRect(dlg, &rc);
        g = ComputeRowGeometry(rc.right);
    }
    g_itemEditor.geometry = g;
    g_itemEditor.clientHeight = rc.bottom;
    if (MaxScroll() > 0) {
        SCROLLINFO si = {sizeof(si), SIF_RANGE | SIF_PAGE | SIF_POS, 0, g_itemEditor.contentHeight - 1,
                         (UINT)g_itemEditor.clientHeight, 0, 0};
        SetScrollInfo(dlg, SB_VERT, &si, TRUE);
    }
}

// ---------------------------------------------------------------------------
// Rows and keys
// ---------------------------------------------------------------------------

void FocusRow(HWND dlg, int index) {
    if (index < 0 || index >= RowCount() || !g_itemEditor.rows[index].editor) return;
    EnsureRowVisible(dlg, index);
    SendMessageW(dlg, WM_NEXTDLGCTL, (WPARAM)g_itemEditor.rows[index].editor, TRUE);
}

bool IsPickerRow(int index) { return RowEditorKindOf(FieldAt(index).type) == RowEditorKind::Picker; }

// A picker whose part the user has chosen (Left, Right, a digit or a tap)
// is being edited, as on the phone: Up and Down change that part and the
// Action key ends the editing, after which Up and Down move between rows
// again.
bool EditingPickerPart(int index) { return IsPickerRow(index) && g_itemEditor.rows[index].pickerPartChosen; }

// Up and Down move between rows (or change the part of a picker being
// edited); Left and Right turn a list editor's spinner. Returns true when
// the key was used.
bool OnEditorKey(int index, UINT vk) {
    HWND dlg = GetParent(g_itemEditor.rows[index].editor);
    switch (vk) {
    case VK_UP:
    case VK_DOWN:
        if (EditingPickerPart(index)) return false;
        FocusRow(dlg, vk == VK_UP ? index - 1 : index + 1);
        return true;
    case VK_RETURN:
        if (!EditingPickerPart(index)) return false;
        g_itemEditor.rows[index].pickerPartChosen = false;
        return true;
    case VK_LEFT:
    case VK_RIGHT:
        if (RowEditorKindOf(FieldAt(index).type) != RowEditorKind::List) return false;
        StepListEditor(g_itemEditor.rows[index], vk == VK_RIGHT ? 1 : -1);
        return true;
    }
    return false;
}

// Typing into a picker needs one of its parts chosen first.
void EnsurePickerPart(int index) {
    ItemEditorRow& row = g_itemEditor.rows[index];
    if (row.pickerPartChosen || RowEditorKindOf(FieldAt(index).type) != RowEditorKind::Picker) return;
    row.pickerPartChosen = true;
    PrimePicker(row.editor);
}

LRESULT CALLBACK EditorKeyProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR index, DWORD_PTR) {
    if (msg == WM_NCDESTROY) RemoveWindowSubclass(hwnd, EditorKeyProc, index);
    // The rows are gone while the dialog's children are being destroyed.
    if ((int)index >= RowCount()) return DefSubclassProc(hwnd, msg, wParam, lParam);
    switch (msg) {
    case WM_GETDLGCODE: {
        LRESULT code = DefSubclassProc(hwnd, msg, wParam, lParam) | DLGC_WANTARROWS;
        const MSG* key = (const MSG*)lParam;
        if (key && key->message == WM_KEYDOWN && key->wParam == VK_RETURN && EditingPickerPart((int)index))
            code |= DLGC_WANTMESSAGE;
        return code;
    }
    case WM_KILLFOCUS:
        // Coming back to the row starts with Up and Down moving rows again.
        if (IsPickerRow((int)index)) g_itemEditor.rows[index].pickerPartChosen = false;
        break;
    case WM_LBUTTONDOWN: g_itemEditor.rows[index].pickerPartChosen = true; break;
    case WM_MOUSEWHEEL:
        // A one-entry list would scroll its entries away from the chosen
        // one; the wheel scrolls the form instead.
        if (RowEditorKindOf(FieldAt((int)index).type) == RowEditorKind::List)
            return SendMessageW(GetParent(hwnd), msg, wParam, lParam);
        break;
    case WM_CHAR:
        if (wParam == L'\r' && IsPickerRow((int)index)) return 0;
        EnsurePickerPart((int)index);
        break;
    case WM_KEYDOWN:
        if (OnEditorKey((int)index, (UINT)wParam)) return 0;
        if (wParam == VK_LEFT || wParam == VK_RIGHT) EnsurePickerPart((int)index);
        break;
    }
    return DefSubclassProc(hwnd, msg, wParam, lParam);
}

int RowOfEditor(HWND hwnd) {
    for (int i = 0; i < RowCount(); ++i)
        if (hwnd && g_itemEditor.rows[i].editor == hwnd) return i;
    return -1;
}

void CreateRows(HWND dlg) {
    const int n = g_itemEditor.request->fieldCount;
    g_itemEditor.rows.resize(n);
    for (int i = 0; i < n; ++i) {
        ItemEditorRow& row = g_itemEditor.rows[i];
        row = CreateItemRow(dlg, i, FieldAt(i), g_itemEditor.values[i], g_itemEditor.font.Get());
        // Installed after the up-down took its buddy, so this sees keys first.
        if (row.editor) SetWindowSubclass(row.editor, EditorKeyProc, (UINT_PTR)i, 0);
    }
    PlaceRows(dlg, true);
}

// ---------------------------------------------------------------------------
// Set-up
// ---------------------------------------------------------------------------

void SetUpColours() {
    g_itemEditor.background.Reset(CreateSolidBrush(ListBackColor()));
    g_itemEditor.textColor = ListTextColor();
}

void SetUpShell(HWND dlg) {
    INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_DATE_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&icc);
    std::wstring title = ResText(IDS_ITEM_EDIT_TITLE);
    SetWindowTextW(dlg, title.empty() ? L"Edit Item" : title.c_str());
}

// ---------------------------------------------------------------------------
// Done
// ---------------------------------------------------------------------------

void ShowBadNumber(HWND dlg, int index) {
    std::wstring text = ResText(IDS_NUMBER_INVALID);
    text += L" \"";
    text += fieldDisplayName(FieldAt(index)).c_str();
    text += L"\"";
    MessageBoxW(dlg, text.c_str(), ResText(IDS_ERROR_CAPTION).c_str(), MB_OK | MB_ICONEXCLAMATION);
    // The box may hand the activation elsewhere as it closes; the dialog is
    // where the user goes on typing.
    SetForegroundWindow(dlg);
    SetActiveWindow(dlg);
}

void OnDone(HWND dlg) {
    const int n = RowCount();
    for (int i = 0; i < n; ++i) ReadItemRowText(g_itemEditor.rows[i], FieldAt(i).type, g_itemEditor.values[i]);
    for (int i = 0; i < n; ++i) {
        if (FieldAt(i).type == FieldType::Number && !IsAcceptedNumberText(g_itemEditor.values[i].text.c_str())) {
            ShowBadNumber(dlg, i);
            FocusRow(dlg, i);
            return;
        }
    }
    bool anyText = false;
    for (int i = 0; i < n; ++i) {
        ReadPickerTime(g_itemEditor.rows[i], FieldAt(i).type, g_itemEditor.values[i]);
        anyText = anyText || !g_itemEditor.values[i].text.IsEmpty();
    }
    EndDialog(dlg, anyText ? 1 : 0);
}

// ---------------------------------------------------------------------------
// Message handlers
// ---------------------------------------------------------------------------

INT_PTR OnInitDialog(HWND dlg) {
    SetUpShell(dlg);
    SetUpColours();
    g_itemEditor.font.Reset(CreateFormFont(FW_NORMAL));
    SetUpScrolling(dlg);
    CreateRows(dlg);
    if (RowCount() > 0) {
        FocusRow(dlg, 0);
        return FALSE;  // the focus is set
    }
    return TRUE;
}

INT_PTR OnCommand(HWND dlg, int id, int code) {
    if (id == IDOK) {
        OnDone(dlg);
        return TRUE;
    }
    if (id == IDCANCEL) {
        EndDialog(dlg, 0);
        return TRUE;
    }
    const int label = id - kItemLabelFirstId;
    if (label >= 0 && label < RowCount() && code == STN_CLICKED) {
        FocusRow(dlg, label);
        return TRUE;
    }
    const int row = id - kItemEditorFirstId;
    if (row >= 0 && row < RowCount() && (code == EN_SETFOCUS || code == LBN_SETFOCUS)) {
        const RowEditorKind kind = RowEditorKindOf(FieldAt(row).type);
        if ((kind == RowEditorKind::Edit && code == EN_SETFOCUS) ||
            (kind == RowEditorKind::List && code == LBN_SETFOCUS))
            EnsureRowVisible(dlg, row);
    }
    return FALSE;
}

INT_PTR OnNotify(HWND dlg, const NMHDR* nm) {
    if (nm->code == NM_SETFOCUS) EnsureRowVisible(dlg, RowOfEditor(nm->hwndFrom));
    return FALSE;
}

// The overridden Back key: an edit box erases; anywhere else Back leaves
// without keeping anything, as it would had it not been overridden.
INT_PTR OnHotKey(HWND dlg, WPARAM wParam, LPARAM lParam) {
    if (HIWORD(lParam) != VK_TBACK) return FALSE;
    wchar_t cls[16] = {};
    GetClassNameW(GetFocus(), cls, 16);
    if (lstrcmpiW(cls, L"edit") == 0) SHSendBackToFocusWindow(WM_HOTKEY, wParam, lParam);
    else if (LOWORD(lParam) & MOD_KEYUP) EndDialog(dlg, 0);
    return TRUE;
}

INT_PTR OnVScroll(HWND dlg, int code) {
    const RowGeometry& g = g_itemEditor.geometry;
    int pos = g_itemEditor.scrollPos;
    switch (code) {
    case SB_LINEUP: pos -= g.pitch; break;
    case SB_LINEDOWN: pos += g.pitch; break;
    case SB_PAGEUP: pos -= g_itemEditor.clientHeight - g.pitch; break;
    case SB_PAGEDOWN: pos += g_itemEditor.clientHeight - g.pitch; break;
    case SB_TOP: pos = 0; break;
    case SB_BOTTOM: pos = MaxScroll(); break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
        SCROLLINFO si = {sizeof(si), SIF_TRACKPOS, 0, 0, 0, 0, 0};
        GetScrollInfo(dlg, SB_VERT, &si);
        pos = si.nTrackPos;
        break;
    }
    default: return TRUE;
    }
    ScrollTo(dlg, pos);
    return TRUE;
}

INT_PTR OnMouseWheel(HWND dlg, int delta) {
    ScrollTo(dlg, g_itemEditor.scrollPos - delta * 3 * g_itemEditor.geometry.pitch / WHEEL_DELTA);
    return TRUE;
}

INT_PTR OnMeasureItem(MEASUREITEMSTRUCT* mis) {
    MeasureListEntry(*mis, g_itemEditor.geometry);
    return TRUE;
}

INT_PTR OnDrawItem(const DRAWITEMSTRUCT* dis) {
    DrawListEntry(*dis);
    return TRUE;
}

INT_PTR OnCtlColor(HDC dc) {
    SetTextColor(dc, g_itemEditor.textColor);
    SetBkMode(dc, TRANSPARENT);
    return (INT_PTR)g_itemEditor.background.Get();
}

INT_PTR OnDestroy() {
    g_itemEditor.rows.clear();
    return FALSE;
}

INT_PTR CALLBACK ItemEditorProc(HWND dlg, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_INITDIALOG: return OnInitDialog(dlg);
    case WM_COMMAND: return OnCommand(dlg, LOWORD(wParam), HIWORD(wParam));
    case WM_NOTIFY: return OnNotify(dlg, (const NMHDR*)lParam);
    case WM_HOTKEY: return OnHotKey(dlg, wParam, lParam);
    case WM_VSCROLL: return OnVScroll(dlg, LOWORD(wParam));
    case WM_MOUSEWHEEL: return OnMouseWheel(dlg, GET_WHEEL_DELTA_WPARAM(wParam));
    case WM_MEASUREITEM: return OnMeasureItem((MEASUREITEMSTRUCT*)lParam);
    case WM_DRAWITEM: return OnDrawItem((const DRAWITEMSTRUCT*)lParam);
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return OnCtlColor((HDC)wParam);
    case WM_DESTROY: return OnDestroy();
    }
    return FALSE;
}

}  // namespace

int RunItemEditor(HWND owner, ItemEditRequest& request) {
    request.result = 0;
    if (!request.item || request.fieldCount < 0 || request.fieldCount > kMaxFields ||
        (request.fieldCount > 0 && !request.fields))
        return 0;
    ListItem& item = *request.item;

    g_itemEditor = ItemEditorState();
    g_itemEditor.request = &request;
    g_itemEditor.values.assign(item.values.begin(),
                               item.values.begin() + std::min<size_t>(item.values.size(), request.fieldCount));
    g_itemEditor.values.resize(request.fieldCount);

    PhoneDialogSetup setup;
    setup.menuModule = hLangModule;
    setup.menuId = IDM_ITEM_EDIT_MENUBAR;  // Back erases in the edit boxes instead of closing
    INT_PTR result = RunPhoneDialog(owner, setup, ItemEditorProc, 0);
    if (result == 1) {
        if ((int)item.values.size() < request.fieldCount) item.values.resize(request.fieldCount);
        std::move(g_itemEditor.values.begin(), g_itemEditor.values.end(), item.values.begin());
        item.fieldCount = request.fieldCount;
        request.result = 1;
    }
    g_itemEditor = ItemEditorState();
    return request.result;
}

int editItem(HWND owner, const ListDocument& document, ListItem& item) {
    ItemEditRequest request;
    request.fields = document.fields.data();
    request.fieldCount = document.fieldCount();
    request.item = &item;
    return RunItemEditor(owner, request);
}

void RebuildItemTimeTexts(const FieldDef* fields, int fieldCount, ListItem& item) {
    if (!fields) return;
    const TextLayout layout = listTextLayout();
    const int n = std::min(fieldCount, (int)item.values.size());
    for (int i = 0; i < n; ++i)
        if (IsTimeType(fields[i].type)) buildDisplayText(item.values[i], fields[i].type, layout);
}
