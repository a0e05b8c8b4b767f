// Layout and drawing of the colour picker: control positions, the palette
// buttons and the preview strip.
#include <windows.h>

#include "platform/ScreenScale.h"
#include "settings/ColorPickerParts.h"
#include "settings/PickerGdi.h"

using picker::Fill;
using picker::MemoryCanvas;

namespace {

void Inset(RECT& r, int dx, int dy) { InflateRect(&r, -dx, -dy); }

int StripHeight() { return ScaleY(24); }

void PlaceControl(HWND control, int x, int y, int w, int h) {
    MoveWindow(control, x, y, w, h, FALSE);
}

// The width a right-aligned label needs for its text in its font, at least
// `least`: a fixed width clips the text on the left whenever the font is
// wider than the one it was measured with.
int LabelWidth(HWND label, int least) {
    wchar_t text[64] = L"";
    int length = GetWindowTextW(label, text, 64);
    HDC dc = GetDC(label);
    if (!dc) return least;
    HGDIOBJ old = SelectObject(dc, (HGDIOBJ)SendMessageW(label, WM_GETFONT, 0, 0));
    SIZE size = {};
    GetTextExtentPoint32W(dc, text, length, &size);
    SelectObject(dc, old);
    ReleaseDC(label, dc);
    int need = size.cx + ScaleX(2);
    return need > least ? need : least;
}

void LayoutSliders(CColorPicker& p, int width) {
    int labelWidth = ScaleX(36);
    for (int i = 0; i < 3; ++i) labelWidth = LabelWidth(p.labels[i], labelWidth);
    int sliderLeft = labelWidth + ScaleX(4);
    int y = ScaleY(10);
    for (int i = 0; i < 3; ++i, y += ScaleY(30)) {
        PlaceControl(p.labels[i], 0, y + ScaleY(4), labelWidth, ScaleY(20));
        PlaceControl(p.sliders[i], sliderLeft, y, width - ScaleX(56) - sliderLeft, ScaleY(20));
        PlaceControl(p.fields[i], width - ScaleX(50), y, ScaleX(40), ScaleY(20));
    }
}

void LayoutHtml(CColorPicker& p, int width) {
    int labelWidth = LabelWidth(p.htmlLabel, ScaleX(40));
    PlaceControl(p.htmlLabel, 0, ScaleY(10) + ScaleY(4), labelWidth, ScaleY(20));
    PlaceControl(p.htmlField, labelWidth + ScaleX(1), ScaleY(10), width - ScaleX(10) - labelWidth - ScaleX(1), ScaleY(20));
}

// Ten cells a row, centred, with equal gaps that leave a margin of about
// ten pixels on each side.
void LayoutPalette(CColorPicker& p, int width) {
    int cellW = ScaleX(16), cellH = ScaleY(16);
    int gap = (width - kPaletteColumns * cellW - ScaleX(20)) / kPaletteColumns;
    int step = cellW + gap;
    int left = (width - kPaletteColumns * step + gap) / 2;
    for (int i = 0; i < kPaletteSize; ++i) {
        int row = i / kPaletteColumns, column = i % kPaletteColumns;
        PlaceControl(p.palette[i], left + step * column, ScaleY(5) * (row + 1) + cellH * row, cellW, cellH);
    }
}

void DrawSample(HDC dc, CColorPicker& p, int x, int stripHeight) {
    RECT box = {x, stripHeight / 2 - ScaleX(6), x + ScaleX(50), stripHeight / 2 - ScaleX(6) + ScaleX(12)};
    if (IsDefaultColor(p.color)) {
        DrawTextW(dc, p.text[ColorTextDefault], -1, &box, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        return;
    }
    Fill(dc, box, RGB(0, 0, 0));
    Inset(box, ScaleX(1), ScaleY(1));
    Fill(dc, box, p.color);
}

}  // namespace

void LayoutColorPicker(CColorPicker& picker, int width) {
    LayoutSliders(picker, width);
    LayoutHtml(picker, width);
    LayoutPalette(picker, width);
    InvalidateRect(GetParent(picker.htmlField), nullptr, TRUE);
}

RECT PreviewStripRect(HWND dialog) {
    RECT r;
    GetClientRect(dialog, &r);
    r.top = r.bottom - StripHeight();
    return r;
}

BOOL OnPaintColorPicker(HWND dialog, CColorPicker& p) {
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(dialog, &ps);
    RECT client;
    GetClientRect(dialog, &client);
    int width = client.right, height = StripHeight();
    {
        MemoryCanvas canvas(dc, width, height);
        RECT strip = {0, 0, width, height};
        Fill(canvas.dc, strip, RGB(255, 255, 255));
        RECT line = {0, 0, width, ScaleY(1)};
        Fill(canvas.dc, line, RGB(0, 0, 0));

        SelectedObject font(canvas.dc, p.font);
        SetBkMode(canvas.dc, TRANSPARENT);
        SetTextColor(canvas.dc, RGB(0, 0, 0));
        RECT label = {ScaleX(4), 0, width, height};
        const wchar_t* text = p.text[ColorTextPreview];
        DrawTextW(canvas.dc, text, -1, &label, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        SIZE extent = {};
        GetTextExtentPoint32W(canvas.dc, text, lstrlenW(text), &extent);
        DrawSample(canvas.dc, p, ScaleX(4) + extent.cx + ScaleX(6), height);

        BitBlt(dc, 0, client.bottom - height, width, height, canvas.dc, 0, 0, SRCCOPY);
    }
    EndPaint(dialog, &ps);
    return TRUE;
}

// White edge (black with the focus), a black frame, and for the focused
// button a white ring inside it, round the colour.
BOOL OnDrawPaletteButton(const DRAWITEMSTRUCT* item) {
    if (!item || item->CtlID >= (UINT)kPaletteSize) return FALSE;
    bool focused = (item->itemState & ODS_FOCUS) != 0;
    int px = ScaleX(1), py = ScaleY(1);
    RECT r = item->rcItem;
    Fill(item->hDC, r, focused ? RGB(0, 0, 0) : RGB(255, 255, 255));
    Inset(r, px, py);
    Fill(item->hDC, r, RGB(0, 0, 0));
    Inset(r, px, py);
    if (focused) {
        Fill(item->hDC, r, RGB(255, 255, 255));
        Inset(r, px, py);
    }
    Fill(item->hDC, r, (COLORREF)GetWindowLongPtrW(item->hwndItem, GWLP_USERDATA));
    return TRUE;
}
