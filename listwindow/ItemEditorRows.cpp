#include "listwindow/ItemEditorRows.h"

#include <commctrl.h>

#include <algorithm>
#include <string>

#include "platform/ScreenScale.h"
#include "document/ValueText.h"
#include "listwindow/ItemEditor.h"
#include "listwindow/PickerFace.h"

// The phone's up-down style that offers a full-screen editor for its buddy;
// the desktop control ignores the bit.
#ifndef UDS_EXPANDABLE
#define UDS_EXPANDABLE 0x0200
#endif

namespace {

constexpr int kPickerTextCapacity = 256;  // window text of a picker, with NUL
constexpr int kEditTextCapacity = 250;    // text read from an edit, with NUL

const DWORD kEditorStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
const DWORD kListUpDownStyle = WS_CHILD | WS_VISIBLE | UDS_WRAP | UDS_SETBUDDYINT | UDS_ALIGNRIGHT |
                               UDS_ARROWKEYS | UDS_HORZ | UDS_EXPANDABLE;
// The edit's spinner only exists to open the phone's full-screen editor;
// on the desktop it would be two arrows that do nothing, so it stays hidden.
const DWORD kEditUpDownStyle = WS_CHILD | UDS_EXPANDABLE;

HWND CreateChild(HWND dlg, const wchar_t* cls, const wchar_t* text, DWORD style, DWORD exStyle, int id, HFONT font) {
    HWND hwnd = CreateWindowExW(exStyle, cls, text, style, 0, 0, 0, 0, dlg, (HMENU)(INT_PTR)id,
                                GetModuleHandleW(nullptr), nullptr);
    if (hwnd && font) SendMessageW(hwnd, WM_SETFONT, (WPARAM)font, FALSE);
    return hwnd;
}

HWND CreateUpDown(HWND dlg, int index, HWND buddy, DWORD style, int count, HFONT font) {
    HWND ud = CreateChild(dlg, UPDOWN_CLASSW, L"", style, 0, kItemUpDownFirstId + index, font);
    if (!ud) return nullptr;
    SendMessageW(ud, UDM_SETBUDDY, (WPARAM)buddy, 0);
    if (count > 0) SendMessageW(ud, UDM_SETRANGE32, 0, count - 1);
    return ud;
}

void CreatePicker(HWND dlg, int index, FieldType type, FieldValue& value, HFONT font, ItemEditorRow& row) {
    const wchar_t* name = type == FieldType::Date ? L"DateTime" : L"";
    row.editor = CreateChild(dlg, DATETIMEPICK_CLASSW, name, kEditorStyle, 0, kItemEditorFirstId + index, font);
    if (!row.editor) return;
    GivePickerScaledFace(row.editor);
    SendMessageW(row.editor, DTM_SETFORMATW, 0, (LPARAM)pickerFormat(type));
    SendMessageW(row.editor, DTM_SETSYSTEMTIME, GDT_VALID, (LPARAM)&value.time);
    wchar_t shown[kPickerTextCapacity] = {};
    GetWindowTextW(row.editor, shown, kPickerTextCapacity);
    value.text = shown;
}

void CreateEdit(HWND dlg, int index, FieldValue& value, HFONT font, ItemEditorRow& row) {
    row.editor = CreateChild(dlg, L"edit", value.text.c_str(), kEditorStyle | WS_BORDER | ES_AUTOHSCROLL, 0,
                             kItemEditorFirstId + index, font);
    if (!row.editor) return;
    // What the editor can give back is what the field keeps.
    SendMessageW(row.editor, EM_LIMITTEXT, kEditTextCapacity - 1, 0);
    row.upDown = CreateUpDown(dlg, index, row.editor, kEditUpDownStyle, 0, font);
}

void AddListEntry(HWND list, const wchar_t* text, LPARAM data) {
    LRESULT at = SendMessageW(list, LB_ADDSTRING, 0, (LPARAM)text);
    if (at >= 0) SendMessageW(list, LB_SETITEMDATA, at, data);
}

void CreateList(HWND dlg, int index, FieldType type, FieldValue& value, HFONT font, ItemEditorRow& row) {
    // Drawn by the dialog: one entry fills the box, and the selection is
    // highlighted only while the box has the focus, like a phone spinner.
    row.editor = CreateChild(dlg, L"listbox", L"",
                             kEditorStyle | WS_BORDER | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | LBS_OWNERDRAWFIXED |
                                 LBS_HASSTRINGS,
                             0, kItemEditorFirstId + index, font);
    if (!row.editor) return;
    const int count = choiceCount(type);
    if (type == FieldType::YesNo) {
        // Yes first, then No; the stored choice is the position in this list.
        AddListEntry(row.editor, choiceText(type, 1).c_str(), 1);
        AddListEntry(row.editor, choiceText(type, 0).c_str(), 0);
    } else {
        for (int i = 0; i < count; ++i) AddListEntry(row.editor, choiceText(type, i).c_str(), i);
    }
    if (value.choice < 0 || value.choice >= count) value.choice = 0;
    SendMessageW(row.editor, LB_SETCURSEL, value.choice, 0);
    row.upDown = CreateUpDown(dlg, index, row.editor, kListUpDownStyle, count, font);
    if (row.upDown) SendMessageW(row.upDown, UDM_SETPOS32, 0, value.choice);
}

}  // namespace

RowEditorKind RowEditorKindOf(FieldType type) {
    if (IsTimeType(type)) return RowEditorKind::Picker;
    if (IsChoiceType(type)) return RowEditorKind::List;
    return RowEditorKind::Edit;
}

RowGeometry ComputeRowGeometry(int clientWidth) {
    RowGeometry g;
    const int third = clientWidth / 3;
    g.labelX = 0;
    g.labelWidth = third - 5;
    g.editorX = third + 3;
    g.editorWidth = (third - 10) * 2;
    g.rowHeight = ScaleY(20);
    g.firstTop = ScaleY(10) - 1;
    g.pitch = ScaleY(24);
    g.upDownWidth = ScaleX(30);
    return g;
}

ItemEditorRow CreateItemRow(HWND dlg, int index, const FieldDef& field, FieldValue& value, HFONT font) {
    ItemEditorRow row;
    value.storedType = field.type;
    if (value.text.IsEmpty()) value.text = field.defaultText;

    std::wstring label = fieldDisplayName(field).c_str();
    label += L" :";
    row.label = CreateChild(dlg, L"STATIC", label.c_str(), WS_CHILD | WS_VISIBLE | SS_RIGHT | SS_CENTERIMAGE | SS_NOTIFY | SS_NOPREFIX,
                            0, kItemLabelFirstId + index, font);

    switch (RowEditorKindOf(field.type)) {
    case RowEditorKind::Picker: CreatePicker(dlg, index, field.type, value, font, row); break;
    case RowEditorKind::List: CreateList(dlg, index, field.type, value, font, row); break;
    case RowEditorKind::Edit: CreateEdit(dlg, index, value, font, row); break;
    }
    return row;
}

void PlaceItemRow(HDWP& defer, const ItemEditorRow& row, const RowGeometry& g, int top) {
    const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_NOCOPYBITS;
    auto place = [&](HWND hwnd, int x, int y, int w, int h) {
        if (hwnd && defer) defer = DeferWindowPos(defer, hwnd, nullptr, x, y, w, h, flags);
    };
    place(row.label, g.labelX, top, g.labelWidth, g.rowHeight);
    const bool spinner = row.upDown && (GetWindowLongW(row.upDown, GWL_STYLE) & WS_VISIBLE);
    if (spinner) {
        const int listWidth = g.editorWidth - g.upDownWidth;
        place(row.editor, g.editorX, top, listWidth, g.rowHeight);
        place(row.upDown, g.editorX + listWidth, top, g.upDownWidth, g.rowHeight);
    } else {
        place(row.editor, g.editorX, top, g.editorWidth, g.rowHeight);
    }
}

void ReadItemRowText(const ItemEditorRow& row, FieldType type, FieldValue& value) {
    if (!row.editor) return;
    // The selected index is asked of every editor; only list editors answer
    // with something other than 0.
    value.choice = (int32_t)SendMessageW(row.editor, LB_GETCURSEL, 0, 0);
    switch (RowEditorKindOf(type)) {
    case RowEditorKind::List: {
        wchar_t text[CellText::kCapacity] = {};
        LRESULT len = value.choice >= 0 ? SendMessageW(row.editor, LB_GETTEXTLEN, value.choice, 0) : LB_ERR;
        if (len >= 0 && len < CellText::kCapacity) SendMessageW(row.editor, LB_GETTEXT, value.choice, (LPARAM)text);
        value.text = text;
        break;
    }
    case RowEditorKind::Edit: {
        wchar_t text[kEditTextCapacity] = {};
        GetWindowTextW(row.editor, text, kEditTextCapacity);
        value.text = text;
        break;
    }
    case RowEditorKind::Picker: break;
    }
}

void ReadPickerTime(const ItemEditorRow& row, FieldType type, FieldValue& value) {
    if (!row.editor || RowEditorKindOf(type) != RowEditorKind::Picker) return;
    SYSTEMTIME t = {};
    if (SendMessageW(row.editor, DTM_GETSYSTEMTIME, 0, (LPARAM)&t) == GDT_VALID) value.time = t;
}

bool IsAcceptedNumberText(const wchar_t* text) {
    if (!text) return true;
    for (const wchar_t* p = text; *p; ++p) {
        const bool numeric = (*p >= L'0' && *p <= L'9') || *p == L'.';
        // A leading minus sign lets the whole text through.
        if (!numeric && text[0] != L'-') return false;
    }
    return true;
}

void StepListEditor(const ItemEditorRow& row, int delta) {
    if (!row.editor) return;
    const int count = (int)SendMessageW(row.editor, LB_GETCOUNT, 0, 0);
    if (count <= 0) return;
    int at = (int)SendMessageW(row.editor, LB_GETCURSEL, 0, 0);
    at = at < 0 ? 0 : ((at + delta) % count + count) % count;
    SendMessageW(row.editor, LB_SETCURSEL, at, 0);
    if (row.upDown) SendMessageW(row.upDown, UDM_SETPOS32, 0, at);
}

void MeasureListEntry(MEASUREITEMSTRUCT& mis, const RowGeometry& g) {
    mis.itemHeight = std::max(1, g.rowHeight - 2 * GetSystemMetrics(SM_CYBORDER));
}

void DrawListEntry(const DRAWITEMSTRUCT& dis) {
    if (dis.itemID == (UINT)-1) return;
    const bool lit = (dis.itemState & ODS_SELECTED) && (dis.itemState & ODS_FOCUS);
    SetBkColor(dis.hDC, GetSysColor(lit ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    SetTextColor(dis.hDC, GetSysColor(lit ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    ExtTextOutW(dis.hDC, 0, 0, ETO_OPAQUE, &dis.rcItem, nullptr, 0, nullptr);
    wchar_t text[CellText::kCapacity] = {};
    LRESULT len = SendMessageW(dis.hwndItem, LB_GETTEXTLEN, dis.itemID, 0);
    if (len >= 0 && len < CellText::kCapacity) SendMessageW(dis.hwndItem, LB_GETTEXT, dis.itemID, (LPARAM)text);
    RECT rc = dis.rcItem;
    rc.left += ScaleX(2);
    DrawTextW(dis.hDC, text, -1, &rc, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void PrimePicker(HWND picker) {
    RECT rc;
    GetClientRect(picker, &rc);
    const LPARAM at = MAKELPARAM(ScaleX(5), rc.bottom / 2);
    SendMessageW(picker, WM_LBUTTONDOWN, MK_LBUTTON, at);
    SendMessageW(picker, WM_LBUTTONUP, 0, at);
}
