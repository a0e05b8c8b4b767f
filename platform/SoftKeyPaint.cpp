// The look of the soft-key bar: a dark bar, each label centred over its
// part, the pressed key lit. Drawn into the band of a phone window's frame,
// or by the toolbar itself (custom draw) when it lies in a client area.
#include <windows.h>
#include <commctrl.h>

#include "platform/Platform.h"
#include "platform/PlatformInternal.h"
#include "platform/SoftKeyBar.h"

namespace {

const COLORREF kBarTop = RGB(70, 70, 74);
const COLORREF kBarBottom = RGB(18, 18, 20);
const COLORREF kBarPressed = RGB(90, 110, 150);
const COLORREF kBarText = RGB(255, 255, 255);
const COLORREF kBarGrayText = RGB(130, 130, 130);

}  // namespace

void FillSoftKeyBar(HDC dc, const RECT& rc, COLORREF background) {
    if (background != CLR_NONE) {
        HBRUSH brush = CreateSolidBrush(background);
        FillRect(dc, &rc, brush);
        DeleteObject(brush);
        return;
    }
    TRIVERTEX v[2] = {{rc.left, rc.top, (COLOR16)(GetRValue(kBarTop) << 8), (COLOR16)(GetGValue(kBarTop) << 8),
                       (COLOR16)(GetBValue(kBarTop) << 8), 0},
                      {rc.right, rc.bottom, (COLOR16)(GetRValue(kBarBottom) << 8),
                       (COLOR16)(GetGValue(kBarBottom) << 8), (COLOR16)(GetBValue(kBarBottom) << 8), 0}};
    GRADIENT_RECT g = {0, 1};
    GradientFill(dc, v, 2, &g, 1, GRADIENT_FILL_RECT_V);
}

static void DrawSoftKey(HDC dc, RECT rc, const wchar_t* text, bool enabled, bool pressed, HFONT font) {
    if (pressed) {
        HBRUSH brush = CreateSolidBrush(kBarPressed);
        InflateRect(&rc, -2, -2);
        FillRect(dc, &rc, brush);
        DeleteObject(brush);
        InflateRect(&rc, 2, 2);
    }
    HGDIOBJ oldFont = SelectObject(dc, font ? (HGDIOBJ)font : GetStockObject(DEFAULT_GUI_FONT));
    int oldMode = SetBkMode(dc, TRANSPARENT);
    COLORREF oldColor = SetTextColor(dc, enabled ? kBarText : kBarGrayText);
    DrawTextW(dc, text, -1, &rc, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_HIDEPREFIX);
    SetTextColor(dc, oldColor);
    SetBkMode(dc, oldMode);
    SelectObject(dc, oldFont);
}

static LRESULT DrawButton(HWND bar, NMTBCUSTOMDRAW* cd) {
    SoftKeyBarState* st = SoftKeyBarStateOf(bar);
    wchar_t text[256] = L"";
    SendMessageW(bar, TB_GETBUTTONTEXTW, cd->nmcd.dwItemSpec, (LPARAM)text);
    bool enabled = (cd->nmcd.uItemState & (CDIS_DISABLED | CDIS_GRAYED)) == 0;
    DrawSoftKey(cd->nmcd.hdc, cd->nmcd.rc, text, enabled, (cd->nmcd.uItemState & CDIS_SELECTED) != 0,
                st ? st->font : nullptr);
    return CDRF_SKIPDEFAULT;
}

LRESULT DrawSoftKeyBarItems(HWND bar, NMTBCUSTOMDRAW* cd) {
    switch (cd->nmcd.dwDrawStage) {
    case CDDS_PREPAINT:     return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: return DrawButton(bar, cd);
    default:                return CDRF_DODEFAULT;
    }
}

void PaintSoftKeyBand(HWND parent, HDC dc, const RECT& band) {
    HWND bar = FindSoftKeyBar(parent);
    SoftKeyBarState* st = bar ? SoftKeyBarStateOf(bar) : nullptr;
    FillSoftKeyBar(dc, band, st ? st->background : CLR_NONE);
    if (!st || !(GetWindowLongW(bar, GWL_STYLE) & WS_VISIBLE)) return;
    int count = (int)SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
    if (count <= 0) return;
    int width = (band.right - band.left) / count;
    for (int i = 0; i < count; ++i) {
        TBBUTTON button = {};
        if (!SendMessageW(bar, TB_GETBUTTON, i, (LPARAM)&button) || (button.fsState & TBSTATE_HIDDEN)) continue;
        wchar_t text[256] = L"";
        SendMessageW(bar, TB_GETBUTTONTEXTW, button.idCommand, (LPARAM)text);
        RECT rc = {band.left + i * width, band.top, i == count - 1 ? band.right : band.left + (i + 1) * width,
                   band.bottom};
        DrawSoftKey(dc, rc, text, (button.fsState & TBSTATE_ENABLED) != 0, (button.fsState & TBSTATE_PRESSED) != 0,
                    st->font);
    }
}

