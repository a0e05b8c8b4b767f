// The Colors page: four swatches, each showing one colour setting; a tap or
// the action key on a swatch opens the colour picker, and the colour chosen
// goes into g_appSettings at once.
#include <windows.h>

#include "LangIds.h"
#include "base/AppGlobals.h"
#include "base/Handles.h"
#include "platform/ScreenScale.h"
#include "settings/AppSettings.h"
#include "settings/ColorPicker.h"
#include "settings/PickerGdi.h"
#include "settings/SettingsWindow.h"

namespace {

// The rows from top to bottom. The labels' indices do not follow the rows:
// the first row's label is control 2 and the second's control 0.
struct ColorRow {
    int labelIndex;
    int swatchIndex;
    UINT labelId;
    CNumericSetting CAppSettings::*setting;
};
const ColorRow kColorRows[] = {
    {2, kSwatchMainViewCategory, IDS_COLOR_CATEGORY_TEXT, &CAppSettings::MainViewCategory},
    {0, kSwatchMainViewList, IDS_COLOR_LIST_NAME_TEXT, &CAppSettings::MainViewList},
    {4, kSwatchListViewBack, IDS_COLOR_LIST_BACK, &CAppSettings::ListViewBack},
    {6, kSwatchListViewText, IDS_COLOR_LIST_TEXT, &CAppSettings::ListViewText},
};

const ColorRow* RowOfSwatch(int swatchIndex) {
    for (const ColorRow& row : kColorRows)
        if (row.swatchIndex == swatchIndex) return &row;
    return nullptr;
}

}  // namespace

UINT CColorsSettingsWindow::GetTabTitle(int) { return IDS_PAGE_COLORS; }

void CColorsSettingsWindow::CreateControls(HWND hwnd) {
    int top = ScaleX(8);
    for (const ColorRow& row : kColorRows) {
        AddColorRow(hwnd, row.labelIndex, row.swatchIndex, top, row.labelId);
        top += ScaleY(24) + 10;
    }
}

void CColorsSettingsWindow::ShowTab(HWND, int showCommand) { ShowControls(0, 7, showCommand); }

BOOL CColorsSettingsWindow::OnDrawItem(HWND, const DRAWITEMSTRUCT* item) {
    if (!(item->itemAction & (ODA_DRAWENTIRE | ODA_SELECT | ODA_FOCUS))) return FALSE;
    const ColorRow* row = RowOfSwatch((int)item->CtlID - 1);
    if (!row) return FALSE;
    HDC dc = item->hDC;
    RECT whole = item->rcItem;
    RECT frame = whole;
    InflateRect(&frame, -ScaleX(1), -ScaleY(1));
    RECT swatch = whole;
    InflateRect(&swatch, -ScaleX(2), -ScaleY(2));
    picker::Fill(dc, whole, RGB(255, 255, 255));
    picker::Fill(dc, frame, RGB(0, 0, 0));
    // The focused swatch stands in a thicker black frame.
    if (item->itemState & ODS_FOCUS) picker::Fill(dc, whole, RGB(0, 0, 0));
    DWORD color = (g_appSettings.*(row->setting)).value;
    if (!IsDefaultColor(color)) {
        picker::Fill(dc, swatch, color);
        return TRUE;
    }
    picker::Fill(dc, swatch, RGB(255, 255, 255));
    // The list background's word is centred on the whole button, the others
    // on the swatch: a deliberate difference kept from the device.
    RECT textRect = row->swatchIndex == kSwatchListViewBack ? whole : swatch;
    SelectedObject font(dc, normalFont);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0, 0, 0));
    DrawTextW(dc, Text(IDS_DEFAULT_COLOR), -1, &textRect, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    return TRUE;
}

BOOL CColorsSettingsWindow::OnCommand(HWND hwnd, WPARAM wParam, LPARAM lParam) {
    int index = -1;
    if (LOWORD(wParam) == IDOK) index = IndexOf(GetFocus());  // the action key on a swatch
    else if (HIWORD(wParam) == BN_CLICKED) index = IndexOf((HWND)lParam);
    const ColorRow* row = RowOfSwatch(index);
    if (!row) return FALSE;
    CNumericSetting& setting = g_appSettings.*(row->setting);
    CColorPicker picker(stringModule, resourceModule, TRUE, ColorModePalette, setting.value, kColorPickerResource,
                        IDM_COLOR_PICKER_MENUBAR);
    int chosen = picker.Run(hwnd);
    if (chosen != ColorPickerCancelled) {
        setting.Set((DWORD)chosen);
        InvalidateRect(controls[row->swatchIndex], nullptr, TRUE);
    }
    return TRUE;
}
