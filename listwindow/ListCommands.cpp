// The list window's commands: menu and soft-key commands, the context menu,
// check toggles, sorting, saving and leaving.
#include <windows.h>
#include <commctrl.h>

#include <string>

#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "document/ListFile.h"
#include "document/ValueText.h"
#include "dialogs/CsvDialogs.h"
#include "dialogs/MessageBoxes.h"
#include "listwindow/ItemEditor.h"
#include "listwindow/ListSort.h"
#include "listwindow/ListWindowState.h"
#include "settings/ColorPicker.h"
#include "settings/IconPicker.h"
#include "program/ProgramIds.h"

namespace {

// The Save soft key reaches the window as IDOK with this notification code.
constexpr UINT kSaveNotification = 4096;
constexpr int kColorPickerPaletteMode = ColorModePalette;

ListWindowState& S() { return g_listWindow; }

int SelectionMark() {
    return S().listView ? (int)SendMessageW(S().listView, LVM_GETSELECTIONMARK, 0, 0) : -1;
}

void SetRowColor(COLORREF color) {
    ListItem* item = SelectedItem();
    if (!item) return;
    item->backColor = color;
    S().modified = 1;
}

COLORREF RowColorOfCommand(UINT id) {
    switch (id) {
    case IDM_ROW_YELLOW: return RGB(255, 255, 181);
    case IDM_ROW_RED: return RGB(255, 206, 201);
    case IDM_ROW_GREEN: return RGB(181, 219, 181);
    case IDM_ROW_BLUE: return RGB(137, 181, 221);
    default: return kNoBackColor;
    }
}

// A new item's cells show their defaults: choice texts for choice types,
// the field's default text for the others (the editor then shows the
// pickers' own texts for dates and times).
void FillNewItemTexts(ListItem& item) {
    const ListDocument& doc = S().doc;
    for (int i = 0; i < doc.fieldCount() && i < (int)item.values.size(); ++i) {
        const FieldDef& field = doc.fields[(size_t)i];
        FieldValue& value = item.values[(size_t)i];
        if (IsChoiceType(field.type))
            buildDisplayText(value, field.type);
        else
            value.text = field.defaultText;
    }
}

// On a list already in its sorted order, a new item goes to the place a
// re-sort would give it (the same comparator and tie rules, searched instead
// of sorting ten thousand items again); the view then looks as after a
// re-sort. False, with the item untouched, when a full re-sort is needed.
const ListItem* InsertAtSortedPlace(ListItem&& item) {
    ListWindowState& s = S();
    int column = s.doc.sortColumn;
    if (!s.inResortOrder || column < 0 || column >= s.doc.fieldCount()) return nullptr;
    size_t place =
        sortedInsertIndex(s.rows, item, column, s.doc.fields[(size_t)column].type, s.doc.sortDescending);
    if (place > s.rows.size()) return nullptr;
    auto before = s.doc.items.end();
    if (place < s.rows.size()) {
        // Walk from the nearer end of the item list to the row's node.
        const ListItem* target = s.rows[place];
        if (place < s.rows.size() / 2) {
            before = s.doc.items.begin();
            while (&*before != target) ++before;
        } else {
            do --before;
            while (&*before != target);
        }
    }
    const ListItem* added = &*s.doc.items.insert(before, std::move(item));
    SyncRowCount();
    ShowResortedRows();
    return added;
}

void AddItem(HWND hwnd) {
    ListWindowState& s = S();
    ListItem item = newListItem(s.doc);
    FillNewItemTexts(item);
    if (editItem(hwnd, s.doc, item) == 0) return;
    RebuildItemTimeTexts(s.doc.fields.data(), s.doc.fieldCount(), item);
    s.modified = 1;
    if (const ListItem* added = InsertAtSortedPlace(std::move(item))) return SelectItemRow(added);
    s.doc.items.push_back(std::move(item));
    const ListItem* added = &s.doc.items.back();
    SyncRowCount();
    InvalidateRect(hwnd, nullptr, FALSE);
    if (s.doc.sortColumn >= 0) Resort();
    SelectItemRow(added);
}

void EditItem(HWND hwnd) {
    ListWindowState& s = S();
    ListItem* item = SelectedItem();
    if (!item) return;
    if (editItem(hwnd, s.doc, *item) == 0) return;
    RebuildItemTimeTexts(s.doc.fields.data(), s.doc.fieldCount(), *item);
    s.modified = 1;
    // A re-sort refills and repaints the rows itself; painting them again
    // afterwards would only repeat the same pixels.
    if (s.doc.sortColumn >= 0 && s.doc.sortColumn < s.doc.fieldCount()) {
        Resort();
        SelectItemRow(item);
    } else {
        InvalidateRect(s.listView, nullptr, TRUE);
    }
}

void DeleteItem() {
    ListWindowState& s = S();
    int mark = SelectionMark();
    if (mark < 0 || (size_t)mark >= s.rows.size()) return;
    ListItem* target = s.rows[(size_t)mark];
    for (auto it = s.doc.items.begin(); it != s.doc.items.end(); ++it) {
        if (&*it == target) {
            s.doc.items.erase(it);
            break;
        }
    }
    s.rows.erase(s.rows.begin() + mark);
    // The list view repaints the rows from the deleted one down; the rows
    // above it are unchanged and need no repaint.
    SendMessageW(s.listView, LVM_DELETEITEM, (WPARAM)mark, 0);
    s.modified = 1;
    InvalidateTitle();
}

// Removes every item whose check is exactly 1.
void DeleteCheckedItems(HWND hwnd) {
    ListWindowState& s = S();
    if (!IsCheckList()) return;
    s.modified = 1;
    s.doc.items.remove_if([](const ListItem& item) { return !item.values.empty() && item.values[0].choice == 1; });
    FillRows();
    InvalidateRect(hwnd, nullptr, FALSE);
    UpdateWindow(hwnd);
}

// Check all and uncheck all change every check without setting the modified
// flag: leaving afterwards asks nothing, so a shopping list can be reset for
// the next trip and left as it is on disk.
void SetAllChecks(HWND hwnd, int value) {
    ListWindowState& s = S();
    if (!IsCheckList()) return;
    s.inResortOrder = 0;  // checks change without a re-sort
    std::wstring text = ResText(value ? IDS_CHECKED : IDS_UNCHECKED);
    for (ListItem& item : s.doc.items) {
        if (item.values.empty()) continue;
        item.values[0].choice = value;
        item.values[0].text = text.c_str();
    }
    const ListItem* selected = SelectedItem();
    FillRows();
    SelectItemRow(selected);
    InvalidateRect(hwnd, nullptr, FALSE);
    UpdateWindow(hwnd);
}

void Unsort() {
    ListWindowState& s = S();
    s.doc.sortColumn = -1;
    s.inResortOrder = 0;
    UpdateSortMark();
}

void ChooseListIcon(HWND hwnd) {
    ListWindowState& s = S();
    if (!IconPicker::Run(hwnd, hLangModule, (INT_PTR)hInstance, IDB_PROGRAM_IMAGE_STRIP, 0, s.doc.icon)) return;
    s.modified = 1;
    InvalidateRect(hwnd, nullptr, TRUE);
}

void ChooseItemColor(HWND hwnd) {
    ListItem* item = SelectedItem();
    if (!item) return;
    CColorPicker picker(hLangModule, hInstance, TRUE, kColorPickerPaletteMode, item->backColor,
                        IDR_COLOR_PICKER_TAG, IDM_COLOR_PICKER_MENUBAR);
    int chosen = picker.Run(hwnd);
    if (chosen == ColorPickerCancelled) return;
    item->backColor = (COLORREF)chosen;
    S().modified = 1;
    InvalidateRect(S().listView, nullptr, TRUE);
}

void AutoSizeColumns() {
    ListWindowState& s = S();
    s.modified = 1;
    for (int i = 0; i < s.doc.fieldCount(); ++i) {
        FieldDef& field = s.doc.fields[(size_t)i];
        if (field.columnState < ScaleX(5)) field.columnState = ScaleX(5);
        SendMessageW(s.listView, LVM_SETCOLUMNWIDTH, i, MAKELPARAM(field.columnState + ScaleX(16), 0));
    }
}

// Writes the list and closes the window; a file that cannot be written
// leaves the window open with every change (the message is the writer's).
void Save(HWND hwnd) {
    ListWindowState& s = S();
    if (s.openedDamaged &&
        ResMessageBox(hwnd, IDS_SAVE_DAMAGED_TEXT, IDS_SAVE_DAMAGED_CAPTION, MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    for (int i = 0; i < s.doc.fieldCount(); ++i)
        s.doc.fields[(size_t)i].columnWidth = (int32_t)SendMessageW(s.listView, LVM_GETCOLUMNWIDTH, i, 0);
    ListFileResult written = writeListFile(s.request->path, s.doc);
    if (written != FileStatus::Ok) {
        ShowDocMessage(hwnd, written.message);
        return;
    }
    s.request->saved = 1;
    EndDialog(hwnd, 1);
}

void Leave(HWND hwnd) {
    ListWindowState& s = S();
    if (s.modified &&
        ResMessageBox(hwnd, IDS_LEAVE_UNSAVED_TEXT, IDS_LEAVE_UNSAVED_CAPTION, MB_YESNO | MB_ICONQUESTION) != IDYES)
        return;
    if (s.request) s.request->saved = 0;
    EndDialog(hwnd, 1);
}

// The Action key toggles the selected item's check in a check list.
void Action() {
    int mark = SelectionMark();
    ListItem* item = SelectedItem();
    if (!item || item->values.empty() || item->values[0].storedType != FieldType::Check) return;
    ToggleCheckCell(mark, 0, true);
}

}  // namespace

// Refills the rows from the item list in its new order and repaints once.
void ShowResortedRows() {
    ListWindowState& s = S();
    FillRows();
    InvalidateRect(s.dialog, nullptr, FALSE);
    UpdateWindow(s.dialog);
}

void EnableSelectionEntries(HMENU menu) {
    UINT state = SelectionMark() != -1 ? MF_ENABLED : MF_GRAYED;
    EnableMenuItem(menu, IDM_EDIT_ITEM, MF_BYCOMMAND | state);
    EnableMenuItem(menu, IDM_DELETE_ITEM, MF_BYCOMMAND | state);
    EnableMenuItem(menu, LISTWIN_POS_ROW_COLOR_POPUP, MF_BYPOSITION | state);
}

void ToggleCheckCell(int row, int column, bool fromAction) {
    ListWindowState& s = S();
    if (row < 0 || (size_t)row >= s.rows.size()) return;
    ListItem& item = *s.rows[(size_t)row];
    if (column < 0 || (size_t)column >= item.values.size()) return;
    FieldValue& value = item.values[(size_t)column];
    s.modified = 1;
    // The two paths leave opposite texts behind. A check's text is neither
    // drawn nor stored, so it shows only in an export made before the list
    // is opened again; the difference is kept so that such exports match
    // the ones existing lists and tools already produce.
    bool wasChecked = value.choice != 0;
    value.choice = wasChecked ? 0 : 1;
    UINT textId = wasChecked == fromAction ? IDS_UNCHECKED : IDS_CHECKED;
    value.text = ResText(textId).c_str();
    int sortColumn = s.doc.sortColumn;
    if (sortColumn >= 0 && sortColumn < s.doc.fieldCount() && s.doc.fields[(size_t)sortColumn].type == FieldType::Check) {
        Resort();
        return;
    }
    // The toggled cell may hold the sort key under another comparator.
    s.inResortOrder = 0;
    RECT rect = {};
    rect.left = LVIR_BOUNDS;
    if (SendMessageW(s.listView, LVM_GETITEMRECT, (WPARAM)row, (LPARAM)&rect)) InvalidateRect(s.listView, &rect, TRUE);
    SendMessageW(s.listView, LVM_REDRAWITEMS, (WPARAM)row, (LPARAM)row);
    InvalidateTitle();
}

void SortByColumn(int column, bool fromMenu) {
    ListWindowState& s = S();
    if (column < 0 || column >= s.doc.fieldCount()) return;
    FieldType type = s.doc.fields[(size_t)column].type;
    if (!fromMenu) {
        // A column click takes the comparator from the first item's cell;
        // with no items there is nothing to sort.
        if (s.doc.items.empty() || (size_t)column >= s.doc.items.front().values.size()) return;
        type = s.doc.items.front().values[(size_t)column].storedType;
    }
    s.modified = 1;
    if (fromMenu) s.headerWidthsPending = 1;
    if (column == s.doc.sortColumn) s.doc.sortDescending = !s.doc.sortDescending;
    s.doc.sortColumn = column;
    UpdateSortMark();
    bool strict = sortListItems(s.doc.items, column, type, s.doc.sortDescending);
    // A column click may sort with another comparator than a re-sort uses.
    s.inResortOrder = strict && sortKindOf(type) == sortKindOf(s.doc.fields[(size_t)column].type);
    const ListItem* selected = SelectedItem();
    ShowResortedRows();
    SelectItemRow(selected);
}

void Resort() {
    ListWindowState& s = S();
    int column = s.doc.sortColumn;
    if (column < 0 || column >= s.doc.fieldCount()) return;
    s.inResortOrder = sortListItems(s.doc.items, column, s.doc.fields[(size_t)column].type, s.doc.sortDescending);
    ShowResortedRows();
}

void OnCommand(HWND hwnd, UINT id, UINT code) {
    ListWindowState& s = S();
    int fields = s.doc.fieldCount();
    if (id >= IDM_SORT_BASE && (int)id < IDM_SORT_BASE + fields) return SortByColumn((int)id - IDM_SORT_BASE, true);
    if ((int)id == IDM_SORT_BASE + fields) return Unsort();
    switch (id) {
    case IDM_ADD_ITEM: return AddItem(hwnd);
    case IDM_EDIT_ITEM: return EditItem(hwnd);
    case IDM_DELETE_ITEM: return DeleteItem();
    case IDM_SAVE: return Save(hwnd);
    case IDM_LIST_ICON: return ChooseListIcon(hwnd);
    case IDM_ITEM_COLOR: return ChooseItemColor(hwnd);
    case IDM_AUTOSIZE_COLUMNS: return AutoSizeColumns();
    case IDM_EXPORT: exportCsv(s.doc, hwnd); return;
    case IDM_DELETE_CHECKED: return DeleteCheckedItems(hwnd);
    case IDM_ROW_YELLOW:
    case IDM_ROW_RED:
    case IDM_ROW_GREEN:
    case IDM_ROW_BLUE:
    case IDM_ROW_NONE: return SetRowColor(RowColorOfCommand(id));
    case IDM_CHECK_ALL: return SetAllChecks(hwnd, 1);
    case IDM_UNCHECK_ALL: return SetAllChecks(hwnd, 0);
    case IDOK: return code == kSaveNotification ? Save(hwnd) : Action();
    case IDCANCEL: return Leave(hwnd);
    }
}

void OnContextMenu(HWND hwnd, int x, int y) {
    ListWindowState& s = S();
    if (x == -1 && y == -1) {
        // From the keyboard: open the menu at the list's top-left corner.
        POINT corner = {0, 0};
        ClientToScreen(s.listView ? s.listView : hwnd, &corner);
        x = corner.x;
        y = corner.y;
    }
    LVHITTESTINFO hit = {};
    hit.pt = {x, y - ScaleY(40)};
    if (s.listView) {
        ScreenToClient(s.listView, &hit.pt);
        SendMessageW(s.listView, LVM_HITTEST, 0, (LPARAM)&hit);
    }
    HMENU menu = LoadMenuW(hLangModule, MAKEINTRESOURCEW(IDM_CONTEXT_MENUS));
    if (!menu) return;
    HMENU popup = GetSubMenu(menu, CTX_LIST_ITEMS);
    if (popup) {
        EnableSelectionEntries(popup);
        TrackPopupMenuEx(popup, 0, x, y, hwnd, nullptr);
    }
    DestroyMenu(menu);
}
