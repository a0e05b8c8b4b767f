// Owner drawing of the list window's rows and the header's sort mark.
#include <windows.h>
#include <commctrl.h>

#include "ImageIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "listwindow/ListWindowState.h"
#include "program/ProgramIds.h"
#include "settings/ListLook.h"

namespace {

constexpr COLORREF kTransparentGreen = RGB(0, 255, 0);
constexpr UINT kTextFlags = DT_END_ELLIPSIS | DT_NOPREFIX | DT_SINGLELINE | DT_VCENTER;

ListWindowState& S() { return g_listWindow; }

void Fill(HDC dc, const RECT& rect, COLORREF color) {
    SetBkColor(dc, color);
    ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
}

// The widest text seen in a column is what Auto-size fits it to.
void RaiseMeasuredWidth(int column, int width) {
    ListDocument& doc = S().doc;
    if (column < 0 || column >= doc.fieldCount()) return;
    FieldDef& field = doc.fields[(size_t)column];
    if (width > field.columnState) field.columnState = width;
}

int TextWidth(HDC dc, const wchar_t* text) {
    RECT r = {0, 0, 0, 0};
    DrawTextW(dc, text, -1, &r, DT_CALCRECT | DT_NOPREFIX | DT_SINGLELINE);
    return r.right - r.left;
}

// Header names count towards the measured widths once after load and after
// each choice of a sort column (the sort mark needs room too).
void MeasureHeaderWidths(HDC dc) {
    ListWindowState& s = S();
    for (int i = 0; i < s.doc.fieldCount(); ++i) {
        const FieldDef& field = s.doc.fields[(size_t)i];
        int width = TextWidth(dc, field.name);
        if (i == s.doc.sortColumn && field.name[0]) width += ScaleX(20);
        RaiseMeasuredWidth(i, width);
    }
    s.headerWidthsPending = 0;
}

// Copies the box's pixels that are not the key colour into the row buffer:
// what a transparent blit of the same size does, without the mask bitmap
// and the device contexts that a blit makes for every box on every row.
void CopyBoxIntoRowBuffer(const CheckBitmap& box, int x, int y) {
    ListWindowState& s = S();
    const DWORD key = (DWORD)((GetRValue(kTransparentGreen) << 16) | (GetGValue(kTransparentGreen) << 8) |
                              GetBValue(kTransparentGreen));
    GdiFlush();  // what GDI drew into the buffer so far is in its pixels
    int top = y - s.rowBufferTop;
    for (int row = 0; row < box.size.cy; ++row) {
        int line = top + row;
        if (line < 0 || line >= s.rowBufferSize.cy) continue;
        DWORD* out = s.rowBufferBits + (size_t)line * (size_t)s.rowBufferSize.cx;
        const DWORD* in = box.pixels.data() + (size_t)row * (size_t)box.size.cx;
        for (int column = 0; column < box.size.cx; ++column) {
            int at = x + column;
            if (at < 0 || at >= s.rowBufferSize.cx) continue;
            DWORD pixel = in[column] & 0x00FFFFFF;
            if (pixel != key) out[at] = pixel;
        }
    }
}

void DrawCheckBox(HDC dc, const RECT& cell, bool checked) {
    const CheckBitmap& box = checked ? S().checkedBox : S().clearBox;
    if (!box.bitmap.Get()) return;
    int width = cell.right - cell.left;
    int x = cell.left + width / 2 - box.size.cx / 2;
    int y = cell.top + (RowHeight() - box.size.cy) / 2;
    if (dc == S().rowBufferDc && S().rowBufferBits && !box.pixels.empty()) {
        CopyBoxIntoRowBuffer(box, x, y);
        return;
    }
    MemoryDC memory(dc);
    if (!memory) return;
    SelectedObject select(memory, box.bitmap.Get());
    TransparentImage(dc, x, y, box.size.cx, box.size.cy, memory, 0, 0, box.size.cx, box.size.cy, kTransparentGreen);
}

void DrawPriority(HDC dc, const RECT& cell, int value) {
    const PlanarImage* image = value == 1 ? &S().priorityHigh : value == 2 ? &S().priorityLow : nullptr;
    if (!image || !image->IsDrawable()) return;
    int width = cell.right - cell.left;
    DrawImage(*image, dc, cell.left + width / 2 - ScaleX(6), cell.top + ScaleY(1));
}

void DrawTextCell(HDC dc, const RECT& cell, const FieldValue& value, int column, bool centred) {
    RECT rect = cell;
    if (!centred) rect.left += ScaleX(6);
    DrawTextW(dc, value.text.c_str(), value.text.Length(), &rect, kTextFlags | (centred ? DT_CENTER : 0));
    RaiseMeasuredWidth(column, TextWidth(dc, value.text.c_str()));
}

void DrawCell(HDC dc, const RECT& cell, const ListItem& item, int column) {
    const FieldValue& value = item.values[(size_t)column];
    switch (value.storedType) {
    case FieldType::Check:
        if (column == 0) SelectObject(dc, value.choice ? S().checkedFont.Get() : S().listFont.Get());
        DrawCheckBox(dc, cell, value.choice != 0);
        break;
    case FieldType::Priority: DrawPriority(dc, cell, value.choice); break;
    case FieldType::Number:
    case FieldType::Selection: DrawTextCell(dc, cell, value, column, true); break;
    default: DrawTextCell(dc, cell, value, column, false); break;
    }
}

void PaintRow(HDC dc, const RECT& rowRect, const RECT& client, int row, const ListItem& item) {
    ListWindowState& s = S();
    SelectObject(dc, s.listFont.Get());
    SetBkMode(dc, TRANSPARENT);
    if (s.headerWidthsPending) MeasureHeaderWidths(dc);

    // The focused row, asked of this row alone: a search for the focused item
    // walks every row of the list for each row drawn.
    if (SendMessageW(s.listView, LVM_GETITEMSTATE, (WPARAM)row, LVIS_FOCUSED) & LVIS_FOCUSED) {
        // A focused row shows the highlight, never its own row colour.
        Fill(dc, rowRect, GetSysColor(COLOR_HIGHLIGHT));
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
    } else {
        Fill(dc, rowRect, ListBackColor());
        SetTextColor(dc, ListTextColor());
        if (item.backColor != kNoBackColor) Fill(dc, rowRect, item.backColor);
    }
    SetBkMode(dc, TRANSPARENT);

    RECT cell = rowRect;
    int columns = s.doc.fieldCount();
    if (columns > (int)item.values.size()) columns = (int)item.values.size();
    for (int i = 0; i < columns; ++i) {
        int width = (int)SendMessageW(s.listView, LVM_GETCOLUMNWIDTH, i, 0);
        cell.right = cell.left + width;
        if (cell.right > client.left && cell.left < client.right) DrawCell(dc, cell, item, i);
        cell.left = cell.right;
    }
}

// A bitmap one row high and as wide as the list, kept while the window is
// open: rows are composed in it and copied to the screen in one blit, so the
// icons' blending reads memory rather than the screen.
HBITMAP RowBuffer(HDC screen, int width, int height) {
    ListWindowState& s = S();
    if (!s.rowBuffer.Get() || s.rowBufferSize.cx < width || s.rowBufferSize.cy < height) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        void* bits = nullptr;
        s.rowBuffer.Reset(CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        s.rowBufferSize = {width, height};
        s.rowBufferBits = s.rowBuffer.Get() ? (DWORD*)bits : nullptr;
    }
    return s.rowBuffer.Get();
}

void DrawRow(const DRAWITEMSTRUCT* draw) {
    ListWindowState& s = S();
    int row = (int)draw->itemID;
    if (row < 0 || (size_t)row >= s.rows.size()) return;
    const ListItem& item = *s.rows[(size_t)row];
    RECT rowRect = draw->rcItem;
    RECT client;
    GetClientRect(s.listView, &client);
    int width = client.right, height = rowRect.bottom - rowRect.top;
    MemoryDC memory(draw->hDC);
    HBITMAP buffer = memory && width > 0 && height > 0 ? RowBuffer(draw->hDC, width, height) : nullptr;
    if (!buffer) {
        // No memory for the buffer: draw straight onto the list.
        int saved = SaveDC(draw->hDC);
        PaintRow(draw->hDC, rowRect, client, row, item);
        RestoreDC(draw->hDC, saved);
        return;
    }
    {
        SelectedObject select(memory, buffer);
        // The buffer holds the row's band of the list, in list coordinates.
        SetViewportOrgEx(memory, 0, -rowRect.top, nullptr);
        RECT band = {0, rowRect.top, width, rowRect.bottom};
        COLORREF back = (COLORREF)SendMessageW(s.listView, LVM_GETBKCOLOR, 0, 0);
        Fill(memory, band, back == CLR_NONE ? GetSysColor(COLOR_WINDOW) : back);
        {
            int saved = SaveDC(memory);
            s.rowBufferDc = memory;
            s.rowBufferTop = rowRect.top;
            PaintRow(memory, rowRect, client, row, item);
            s.rowBufferDc = nullptr;
            RestoreDC(memory, saved);
        }
        BitBlt(draw->hDC, 0, rowRect.top, width, height, memory, 0, rowRect.top, SRCCOPY);
    }
}

HBITMAP LoadSortBitmap(UINT id) {
    HBITMAP bitmap = nullptr;
    if (hImageModule)
        bitmap = (HBITMAP)LoadImageW(hImageModule, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS);
    if (!bitmap) bitmap = (HBITMAP)LoadImageW(hInstance, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS);
    return bitmap;
}

}  // namespace

LRESULT OnDrawItem(const DRAWITEMSTRUCT* draw) {
    // A row that is selected while the list has no focus is left to the
    // list view; everything else is drawn here.
    if (draw->CtlType == ODT_LISTVIEW && draw->itemAction == ODA_DRAWENTIRE && draw->itemState != ODS_SELECTED)
        DrawRow(draw);
    return TRUE;
}

void UpdateSortMark() {
    ListWindowState& s = S();
    if (!s.header) return;
    int count = (int)SendMessageW(s.header, HDM_GETITEMCOUNT, 0, 0);
    static wchar_t blank[] = L" ";
    for (int i = 0; i < count; ++i) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT | HDI_BITMAP;
        if (i < s.doc.fieldCount() && !s.doc.fields[(size_t)i].name[0]) {
            item.mask |= HDI_TEXT;
            item.pszText = blank;
        }
        HDITEMW current = {};
        current.mask = HDI_FORMAT | HDI_BITMAP;
        SendMessageW(s.header, HDM_GETITEMW, i, (LPARAM)&current);
        item.fmt = current.fmt | HDF_STRING;
        HBITMAP old = current.hbm;
        if (i == s.doc.sortColumn) {
            item.fmt |= HDF_BITMAP | HDF_BITMAP_ON_RIGHT;
            item.hbm = LoadSortBitmap(s.doc.sortDescending ? IDB_SORT_UP : IDB_SORT_DOWN);
        } else {
            item.fmt &= ~(HDF_BITMAP | HDF_BITMAP_ON_RIGHT);
            item.hbm = nullptr;
        }
        SendMessageW(s.header, HDM_SETITEMW, i, (LPARAM)&item);
        if (old) DeleteObject(old);
    }
}

const wchar_t* CellTextOf(int row, int column) {
    ListWindowState& s = S();
    if (row < 0 || (size_t)row >= s.rows.size()) return L"";
    const ListItem& item = *s.rows[(size_t)row];
    if (column < 0 || (size_t)column >= item.values.size()) return L"";
    return item.values[(size_t)column].text.c_str();
}
