// The colour picker dialog: construction, the dialog procedure and its
// handlers. Drawing of the palette buttons and the preview strip lives in
// ColorPickerPaint.cpp.
#include "settings/ColorPicker.h"

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>

#include "platform/MenuBars.h"
#include "platform/PhoneDialog.h"
#include "LangIds.h"
#include "platform/ScreenScale.h"
#include "base/AppGlobals.h"
#include "base/ResString.h"
#include "settings/ColorPickerParts.h"
#include "settings/PickerGdi.h"

namespace {

// The palette as HTML #RRGGBB values, in rows of ten.
const DWORD kPaletteHtml[kPaletteSize] = {
    0xFFFFFF, 0xCCCCFF, 0x99CCFF, 0x99FFFF, 0xCCFFFF, 0x99FF99, 0xFFFF99, 0xFFFFCC, 0xFFCCCC, 0xFFCCFF,
    0xCCCCCC, 0x6666FF, 0x6699FF, 0x66FFFF, 0x33FFFF, 0x99FF66, 0xFFFF33, 0xFFFF66, 0xFF9999, 0xFF99FF,
    0x999999, 0x0000CC, 0x0066FF, 0x33CCFF, 0x00CCFF, 0x00CC33, 0xCCCC00, 0xFF6633, 0xFF3366, 0xCC33CC,
    0x555555, 0x000066, 0x003399, 0x336699, 0x006666, 0x006600, 0x666633, 0x990000, 0x993333, 0x663366,
    0x000000, 0x000033, 0x003366, 0x333366, 0x003333, 0x003300, 0x333300, 0x660000, 0x990033, 0x330033,
};

const UINT kTextIds[ColorTextCount] = {
    IDS_COLOR_TITLE,        IDS_COLOR_RED,         IDS_COLOR_GREEN,         IDS_COLOR_BLUE,
    IDS_COLOR_MODE_SLIDERS, IDS_COLOR_MODE_PALETTE, IDS_CANCEL,             IDS_COLOR_SELECT,
    IDS_DEFAULT_COLOR,      IDS_COLOR_TOO_LARGE_TEXT, IDS_COLOR_TOO_LARGE_CAPTION, IDS_COLOR_PREVIEW,
};

const wchar_t kHtmlLabel[] = L"HTML#";

// The picker that is running (the dialog is modal, so there is at most one)
// and the class procedures of the controls it subclasses.
struct ColorPickerState {
    CColorPicker* picker;
    WNDPROC paletteBaseProc;
    WNDPROC sliderBaseProc;
    WNDPROC fieldBaseProc;
    bool started;  // WM_INITDIALOG ran: a result of -1 is DefaultColor, not a failure
    bool ending;   // set once the result is chosen: focus changes no longer edit the colour
    bool warning;  // the too-large message is up: the focus it takes is no edit
} g_colorPicker;

CColorPicker& Picker() { return *g_colorPicker.picker; }

int Channel(COLORREF c, int shift) { return (int)((c >> shift) & 0xFF); }

void RebuildColor(CColorPicker& p) {
    p.color = (COLORREF)((p.red & 0xFF) | (p.green & 0xFF) << 8 | (p.blue & 0xFF) << 16);
}

void SplitColor(CColorPicker& p) {
    p.red = Channel(p.color, 0);
    p.green = Channel(p.color, 8);
    p.blue = Channel(p.color, 16);
}

int* ChannelSlot(CColorPicker& p, int channel) {
    return channel == 0 ? &p.red : channel == 1 ? &p.green : &p.blue;
}

int SliderPosition(int channel) { return channel * 100 / 255; }

void SetNumberText(HWND field, int value) {
    wchar_t text[16];
    wsprintfW(text, L"%d", value);
    SetWindowTextW(field, text);
}

void FillHtmlField(CColorPicker& p) {
    wchar_t text[16];
    wsprintfW(text, L"%02lX%02lX%02lX", (unsigned long)(p.red & 0xFF), (unsigned long)(p.green & 0xFF),
              (unsigned long)(p.blue & 0xFF));
    SetWindowTextW(p.htmlField, text);
}

// Sliders, number fields and the hexadecimal field from the three channels.
void FillFields(CColorPicker& p) {
    FillHtmlField(p);
    for (int i = 0; i < 3; ++i) {
        int value = *ChannelSlot(p, i);
        SendMessageW(p.sliders[i], TBM_SETPOS, TRUE, SliderPosition(value));
        SetNumberText(p.fields[i], value);
    }
}

// Only the strip changes with the colour; repaint it at once.
void RefreshPreview(HWND hwnd) {
    RECT strip = PreviewStripRect(hwnd);
    InvalidateRect(hwnd, &strip, FALSE);
    UpdateWindow(hwnd);
}

// ---------------------------------------------------------------------------
// Modes
// ---------------------------------------------------------------------------

int ModeControls(CColorPicker& p, int mode, HWND* out) {
    int n = 0;
    if (mode == ColorModeSliders) {
        for (int i = 0; i < 3; ++i) {
            out[n++] = p.labels[i];
            out[n++] = p.sliders[i];
            out[n++] = p.fields[i];
        }
    } else if (mode == ColorModeHtml) {
        out[n++] = p.htmlLabel;
        out[n++] = p.htmlField;
    } else {
        for (int i = 0; i < kPaletteSize; ++i) out[n++] = p.palette[i];
    }
    return n;
}

void ShowMode(CColorPicker& p, int mode, int show) {
    HWND controls[kPaletteSize];
    int n = ModeControls(p, mode, controls);
    for (int i = 0; i < n; ++i) ShowWindow(controls[i], show);
}

HWND FirstControl(CColorPicker& p, int mode) {
    return mode == ColorModeSliders ? p.sliders[0] : mode == ColorModeHtml ? p.htmlField : p.palette[0];
}

void SwitchMode(CColorPicker& p, int mode) {
    if (mode == p.mode) return;
    ShowMode(p, p.mode, SW_HIDE);
    p.mode = mode;
    ShowMode(p, mode, SW_SHOW);
    SetFocus(FirstControl(p, mode));
    // The controls of the two modes overlap, and the dialog does not clip
    // its children: paint the page once more, background first.
    HWND dialog = GetParent(p.htmlField);
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

// ---------------------------------------------------------------------------
// Number and hexadecimal fields
// ---------------------------------------------------------------------------

// Takes the text of number field `channel` into the colour. False (and the
// user told, the edit undone) when the number is above 255.
bool TakeNumberField(HWND hwnd, CColorPicker& p, int channel) {
    wchar_t text[257];
    GetWindowTextW(p.fields[channel], text, 257);
    long value = _wtol(text);
    if (value > 255) {
        g_colorPicker.warning = true;
        MessageBoxW(hwnd, p.text[ColorTextTooLarge], p.text[ColorTextTooLargeCaption], MB_OK);
        g_colorPicker.warning = false;
        SendMessageW(p.fields[channel], EM_UNDO, 0, 0);
        return false;
    }
    *ChannelSlot(p, channel) = (int)value;
    SendMessageW(p.sliders[channel], TBM_SETPOS, TRUE, SliderPosition((int)value));
    RebuildColor(p);
    FillHtmlField(p);
    RefreshPreview(hwnd);
    return true;
}

// Reads up to three two-digit hexadecimal channels; a channel that does not
// parse keeps its value. A leading '#' is allowed, as web colours carry one.
void TakeHtmlField(HWND hwnd, CColorPicker& p) {
    wchar_t text[257];
    GetWindowTextW(p.htmlField, text, 257);
    const wchar_t* digits = text[0] == L'#' ? text + 1 : text;
    unsigned long r = (unsigned long)p.red, g = (unsigned long)p.green, b = (unsigned long)p.blue;
    swscanf(digits, L"%02lX%02lX%02lX", &r, &g, &b);
    p.red = (int)r;
    p.green = (int)g;
    p.blue = (int)b;
    p.color = (COLORREF)(r + (g | b * 256) * 256);
    FillFields(p);
    RefreshPreview(hwnd);
}

int NumberFieldChannel(CColorPicker& p, HWND control) {
    for (int i = 0; i < 3; ++i)
        if (p.fields[i] == control) return i;
    return -1;
}

// A soft key does not take the focus, so the field being typed in has not
// been read yet when the user confirms: read it now. False when refused.
bool TakeFocusedField(HWND hwnd, CColorPicker& p) {
    HWND focus = GetFocus();
    int channel = NumberFieldChannel(p, focus);
    if (channel >= 0) return TakeNumberField(hwnd, p, channel);
    if (focus == p.htmlField) TakeHtmlField(hwnd, p);
    return true;
}

void EndPicker(HWND hwnd, int result) {
    g_colorPicker.ending = true;
    EndDialog(hwnd, result);
}

// ---------------------------------------------------------------------------
// Subclassed controls
// ---------------------------------------------------------------------------

// Palette buttons: Enter picks the colour, up and down move a whole row,
// wrapping round the 50 buttons. The dialog manager asks WM_GETDLGCODE
// before it acts on a key, so the keys are taken there.
LRESULT CALLBACK PaletteButtonProc(HWND button, UINT msg, WPARAM wParam, LPARAM lParam) {
    const MSG* key = (const MSG*)lParam;
    if (msg == WM_GETDLGCODE && key && key->message == WM_KEYDOWN) {
        // Keys typed ahead may still name the button the focus just left.
        HWND focus = GetFocus();
        int focusId = GetDlgCtrlID(focus);
        bool onPalette = focusId >= 0 && focusId < kPaletteSize && Picker().palette[focusId] == focus;
        HWND from = onPalette ? focus : button;
        int id = GetDlgCtrlID(from);
        HWND dialog = GetParent(button);
        switch (key->wParam) {
        case VK_RETURN:
            SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), (LPARAM)from);
            return DLGC_WANTMESSAGE;
        case VK_UP:
            SetFocus(Picker().palette[(id + kPaletteSize - kPaletteColumns) % kPaletteSize]);
            return DLGC_WANTMESSAGE;
        case VK_DOWN:
            SetFocus(Picker().palette[(id + kPaletteColumns) % kPaletteSize]);
            return DLGC_WANTMESSAGE;
        case VK_ESCAPE:
            // Left to the dialog manager, Back would arrive as IDCANCEL naming
            // palette button 2 and read as a press of that button.
            SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, 0), 0);
            return DLGC_WANTMESSAGE;
        }
    }
    return CallWindowProcW(g_colorPicker.paletteBaseProc, button, msg, wParam, lParam);
}

// Sliders and number fields form a grid of three rows; up and down move to
// the same column of the row above or below, as the navigation pad does on
// a phone, instead of nudging the slider.
bool MoveBetweenRows(HWND control, WPARAM key) {
    if (key != VK_UP && key != VK_DOWN) return false;
    CColorPicker& p = Picker();
    for (int i = 0; i < 3; ++i) {
        int next = (i + (key == VK_UP ? 2 : 1)) % 3;
        if (control == p.sliders[i]) {
            SetFocus(p.sliders[next]);
            return true;
        }
        if (control == p.fields[i]) {
            SetFocus(p.fields[next]);
            SendMessageW(p.fields[next], EM_SETSEL, 0, -1);
            return true;
        }
    }
    return false;
}

LRESULT CALLBACK SliderProc(HWND slider, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_KEYDOWN && MoveBetweenRows(slider, wParam)) return 0;
    return CallWindowProcW(g_colorPicker.sliderBaseProc, slider, msg, wParam, lParam);
}

LRESULT CALLBACK NumberFieldProc(HWND field, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_KEYDOWN && MoveBetweenRows(field, wParam)) return 0;
    return CallWindowProcW(g_colorPicker.fieldBaseProc, field, msg, wParam, lParam);
}

// ---------------------------------------------------------------------------
// Initialisation
// ---------------------------------------------------------------------------

HWND CreateChild(HWND parent, const wchar_t* cls, const wchar_t* text, DWORD style, int id, int w, int h,
                 HFONT font) {
    HWND child = CreateWindowExW(0, cls, text, WS_CHILD | style, 0, 0, w, h, parent, (HMENU)(INT_PTR)id,
                                 Picker().resourceModule, nullptr);
    SendMessageW(child, WM_SETFONT, (WPARAM)font, FALSE);
    return child;
}

void CreateMenuBar(HWND hwnd, CColorPicker& p) {
    p.menuBar = PhoneDialogMenuBar(hwnd);
    if (!p.menuBar) return;

    SetSoftKeyText(p.menuBar, IDOK, p.text[ColorTextSelect]);
    SetSoftKeyText(p.menuBar, IDCANCEL, ResText(IDS_MENU).c_str());

    HMENU popup = (HMENU)SendMessageW(p.menuBar, SHCMBM_GETSUBMENU, 0, IDCANCEL);
    if (!popup) return;
    while (GetMenuItemCount(popup) > 0) DeleteMenu(popup, 0, MF_BYPOSITION);
    AppendMenuW(popup, MF_STRING, IDM_COLOR_SLIDERS, p.text[ColorTextSlidersMode]);
    AppendMenuW(popup, MF_STRING, IDM_COLOR_HTML, kHtmlLabel);
    AppendMenuW(popup, MF_STRING, IDM_COLOR_PALETTE, p.text[ColorTextPaletteMode]);
    AppendMenuW(popup, MF_SEPARATOR, 0, nullptr);
    // "Default" in the language's own words: the text the preview shows for it.
    if (p.allowDefault) AppendMenuW(popup, MF_STRING, IDM_COLOR_DEFAULT, p.text[ColorTextDefault]);
    AppendMenuW(popup, MF_STRING, IDM_COLOR_CANCEL, p.text[ColorTextCancel]);
}

void CreateControls(HWND hwnd, CColorPicker& p) {
    const DWORD editStyle = WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL;
    for (int i = 0; i < 3; ++i) {
        p.labels[i] = CreateChild(hwnd, L"static", p.text[ColorTextRed + i], SS_RIGHT, IDC_COLOR_RED_LABEL + i,
                                  0, 0, p.font);
        p.sliders[i] = CreateChild(hwnd, TRACKBAR_CLASSW, L"", WS_TABSTOP | TBS_FIXEDLENGTH, IDC_COLOR_RED_SLIDER + i,
                                   0, 0, p.font);
        SendMessageW(p.sliders[i], TBM_SETTHUMBLENGTH, ScaleY(16), 0);
        p.fields[i] = CreateChild(hwnd, L"edit", L"", editStyle, IDC_COLOR_RED_FIELD + i, 0, 0, p.font);
        g_colorPicker.sliderBaseProc =
            (WNDPROC)SetWindowLongPtrW(p.sliders[i], GWLP_WNDPROC, (LONG_PTR)SliderProc);
        g_colorPicker.fieldBaseProc =
            (WNDPROC)SetWindowLongPtrW(p.fields[i], GWLP_WNDPROC, (LONG_PTR)NumberFieldProc);
    }
    p.htmlLabel = CreateChild(hwnd, L"static", kHtmlLabel, SS_RIGHT, IDC_COLOR_HTML_LABEL, 0, 0, p.font);
    p.htmlField = CreateChild(hwnd, L"edit", L"", editStyle, IDC_COLOR_HTML_FIELD, 0, 0, p.font);
    SendMessageW(p.htmlField, EM_LIMITTEXT, 7, 0);
    for (int i = 0; i < kPaletteSize; ++i) {
        p.palette[i] = CreateChild(hwnd, L"button", L"", BS_OWNERDRAW, i, ScaleX(14), ScaleY(14), p.font);
        SetWindowLongPtrW(p.palette[i], GWLP_USERDATA, (LONG_PTR)PaletteColor(i));
        g_colorPicker.paletteBaseProc =
            (WNDPROC)SetWindowLongPtrW(p.palette[i], GWLP_WNDPROC, (LONG_PTR)PaletteButtonProc);
    }
}

BOOL OnInitDialog(HWND hwnd, CColorPicker* picker) {
    g_colorPicker.picker = picker;
    g_colorPicker.started = true;
    g_colorPicker.ending = false;
    CColorPicker& p = *picker;
    p.font.Reset(picker::CreatePickerFont());
    CreateMenuBar(hwnd, p);
    SplitColor(p);
    CreateControls(hwnd, p);
    // The dialog was fitted to the screen before the controls existed:
    // place them now (later sizes come with WM_SIZE).
    RECT client;
    GetClientRect(hwnd, &client);
    LayoutColorPicker(p, client.right);
    FillFields(p);
    SetWindowTextW(hwnd, p.text[ColorTextTitle]);
    ShowMode(p, p.mode, SW_SHOW);
    SetFocus(FirstControl(p, p.mode));
    ShowWindow(hwnd, SW_SHOW);
    return FALSE;  // the focus is set
}

// ---------------------------------------------------------------------------
// Messages after initialisation
// ---------------------------------------------------------------------------

void OnPalettePressed(HWND hwnd, CColorPicker& p, HWND button) {
    p.color = (COLORREF)GetWindowLongPtrW(button, GWLP_USERDATA);
    SplitColor(p);
    FillFields(p);
    RefreshPreview(hwnd);
}

void OnFieldNotify(HWND hwnd, CColorPicker& p, HWND field, int code) {
    if (code == EN_SETFOCUS) {
        SipShowIM(SIPF_ON);
        return;
    }
    if (code != EN_KILLFOCUS) return;
    SipShowIM(SIPF_OFF);
    if (g_colorPicker.ending || g_colorPicker.warning) return;
    int channel = NumberFieldChannel(p, field);
    if (channel >= 0)
        TakeNumberField(hwnd, p, channel);
    else if (field == p.htmlField)
        TakeHtmlField(hwnd, p);
}

// The dialog manager reports Enter and Esc as IDOK and IDCANCEL naming the
// control with that identifier, which here is palette button 1 or 2; a real
// press comes from the visible button that has the focus (a tap focuses it,
// and the buttons take Enter and Esc themselves).
bool IsPalettePress(CColorPicker& p, int id, HWND control) {
    return id >= 0 && id < kPaletteSize && control && control == p.palette[id] && IsWindowVisible(control) &&
           GetFocus() == control;
}

BOOL OnCommand(HWND hwnd, int id, int code, HWND control) {
    CColorPicker& p = Picker();
    if (IsPalettePress(p, id, control)) {
        if (code == BN_CLICKED) OnPalettePressed(hwnd, p, control);
        return TRUE;
    }
    if (control && (code == EN_SETFOCUS || code == EN_KILLFOCUS)) {
        OnFieldNotify(hwnd, p, control, code);
        return TRUE;
    }
    switch (id) {
    case IDOK:
        if (TakeFocusedField(hwnd, p)) EndPicker(hwnd, (int)p.color);
        return TRUE;
    case IDCANCEL:  // the Back key
    case IDM_COLOR_CANCEL:
        EndPicker(hwnd, ColorPickerCancelled);
        return TRUE;
    case IDM_COLOR_DEFAULT:
        if (p.allowDefault) {
            p.color = DefaultColor;
            RefreshPreview(hwnd);
        }
        return TRUE;
    case IDM_COLOR_SLIDERS: SwitchMode(p, ColorModeSliders); return TRUE;
    case IDM_COLOR_HTML: SwitchMode(p, ColorModeHtml); return TRUE;
    case IDM_COLOR_PALETTE: SwitchMode(p, ColorModePalette); return TRUE;
    }
    return FALSE;
}

BOOL OnHScroll(HWND hwnd, int code, HWND slider) {
    if (code == TB_ENDTRACK) return TRUE;
    CColorPicker& p = Picker();
    for (int i = 0; i < 3; ++i) {
        if (p.sliders[i] != slider) continue;
        int position = (int)SendMessageW(slider, TBM_GETPOS, 0, 0);
        int value = position * 255 / 100;
        *ChannelSlot(p, i) = value;
        SetNumberText(p.fields[i], value);
        RebuildColor(p);
        FillHtmlField(p);
        RefreshPreview(hwnd);
    }
    return TRUE;
}

BOOL OnInitMenuPopup(HMENU menu) {
    const int modeItems[3] = {IDM_COLOR_SLIDERS, IDM_COLOR_HTML, IDM_COLOR_PALETTE};
    for (int mode = 0; mode < 3; ++mode)
        CheckMenuItem(menu, modeItems[mode], MF_BYCOMMAND | (mode == Picker().mode ? MF_CHECKED : MF_UNCHECKED));
    return FALSE;
}

BOOL OnSize(HWND, int width) {
    LayoutColorPicker(Picker(), width);
    return TRUE;
}

BOOL OnHotKey(UINT msg, WPARAM wParam, LPARAM lParam) {
    if (HIWORD(lParam) == VK_ESCAPE) SHSendBackToFocusWindow(msg, wParam, lParam);
    return TRUE;
}

BOOL OnDestroy() {
    CColorPicker& p = Picker();
    p.font.Reset();
    return FALSE;
}

// A white page, as on the phone, behind the labels and sliders too.
INT_PTR OnControlColor(HDC dc) {
    SetBkColor(dc, RGB(255, 255, 255));
    SetTextColor(dc, RGB(0, 0, 0));
    return (INT_PTR)GetStockObject(WHITE_BRUSH);
}

INT_PTR AnswerNotify(HWND hwnd) {
    SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, 0);
    return TRUE;
}

INT_PTR CALLBACK ColorPickerProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_INITDIALOG) return OnInitDialog(hwnd, (CColorPicker*)lParam);
    if (!g_colorPicker.picker) return FALSE;
    switch (msg) {
    case WM_COMMAND: return OnCommand(hwnd, LOWORD(wParam), HIWORD(wParam), (HWND)lParam);
    case WM_HSCROLL: return OnHScroll(hwnd, LOWORD(wParam), (HWND)lParam);
    case WM_SIZE: return OnSize(hwnd, LOWORD(lParam));
    case WM_PAINT: return OnPaintColorPicker(hwnd, Picker());
    case WM_DRAWITEM: return OnDrawPaletteButton((const DRAWITEMSTRUCT*)lParam);
    case WM_INITMENUPOPUP: return OnInitMenuPopup((HMENU)wParam);
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return OnControlColor((HDC)wParam);
    case WM_HOTKEY: return OnHotKey(msg, wParam, lParam);
    case WM_NOTIFY: return AnswerNotify(hwnd);
    case WM_DESTROY: return OnDestroy();
    }
    return FALSE;
}

}  // namespace

COLORREF PaletteColor(int index) {
    if (index < 0 || index >= kPaletteSize) return RGB(0, 0, 0);
    DWORD html = kPaletteHtml[index];
    return RGB((html >> 16) & 0xFF, (html >> 8) & 0xFF, html & 0xFF);
}

CColorPicker::CColorPicker(HINSTANCE resourceModule, HINSTANCE programModule, BOOL allowDefault, int initialMode,
                           COLORREF initialColor, UINT resourceNumber, UINT menuBarId)
    : resourceModule(resourceModule),
      programModule(programModule),
      allowDefault(allowDefault),
      mode(initialMode >= ColorModeSliders && initialMode <= ColorModePalette ? initialMode : ColorModePalette),
      resourceNumber(resourceNumber),
      menuBarId(menuBarId),
      color(initialColor),
      red(0),
      green(0),
      blue(0) {
    for (int i = 0; i < ColorTextCount; ++i) lstrcpynW(text[i], ResText(kTextIds[i]).c_str(), 256);
}

int CColorPicker::Run(HWND owner) {
    g_colorPicker = {};
    PhoneDialogSetup setup;
    setup.menuModule = resourceModule;
    setup.menuId = menuBarId;
    setup.overrideBack = false;  // Back cancels
    setup.initFlags = SHIDIF_SIZEDLGFULLSCREEN;
    INT_PTR result = RunPhoneDialog(owner, setup, ColorPickerProc, (LPARAM)this);
    bool started = g_colorPicker.started;
    g_colorPicker = {};
    return started ? (int)result : ColorPickerCancelled;
}
