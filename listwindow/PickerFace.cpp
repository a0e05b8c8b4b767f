#include "listwindow/PickerFace.h"

#include <commctrl.h>
#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>

#include "base/Handles.h"
#include "platform/ScreenScale.h"

namespace {

constexpr UINT_PTR kFaceSubclassId = 1;

// The subclass's reference data: the state of the face's button, which
// follows the picker's own (held from a press on it to any release, hot
// while the pointer is over it).
constexpr DWORD_PTR kButtonPressed = 1;
constexpr DWORD_PTR kButtonHot = 2;

// Where the face draws the picker's parts. The picker keeps its parts in a
// strip one text line and 2 pixels tall from the top of its box, and its
// button in the right-most kPickerButtonWidth pixels.
struct FaceLayout {
    RECT client = {};
    int strip = 0;       // height of the picker's strip of parts
    int stripTop = 0;    // where the face draws the strip: centred in the box
    int buttonLeft = 0;  // left edge of the face's button
};

FaceLayout LayoutOf(HWND picker) {
    FaceLayout f;
    GetClientRect(picker, &f.client);
    TEXTMETRICW tm = {};
    HDC dc = GetDC(picker);
    {
        SelectedObject font(dc, (HGDIOBJ)SendMessageW(picker, WM_GETFONT, 0, 0));
        GetTextMetricsW(dc, &tm);
    }
    ReleaseDC(picker, dc);
    f.strip = tm.tmHeight + 2;
    f.stripTop = std::max(0, (int)(f.client.bottom - f.strip) / 2);
    // Never narrower than the picker's own button, which it covers.
    f.buttonLeft = f.client.right - std::max(ScaleX(kPickerButtonWidth), kPickerButtonWidth);
    return f;
}

// The button as the picker draws its own: from the visual style the picker
// uses when there is one (the style functions are looked up in the module
// the common controls loaded for it, so a system without styles needs
// none), the classic scroll arrow otherwise.
void DrawButton(HWND picker, HDC dc, const RECT& button, DWORD_PTR state) {
    const bool enabled = IsWindowEnabled(picker) != FALSE;
    if (HMODULE styles = GetModuleHandleW(L"uxtheme.dll")) {
        auto windowTheme = (decltype(&GetWindowTheme))(void*)GetProcAddress(styles, "GetWindowTheme");
        auto drawBackground = (decltype(&DrawThemeBackground))(void*)GetProcAddress(styles, "DrawThemeBackground");
        HTHEME theme = windowTheme && drawBackground ? windowTheme(picker) : nullptr;
        if (theme) {
            const int look = !enabled                     ? ABS_DOWNDISABLED
                             : (state & kButtonPressed) ? ABS_DOWNPRESSED
                             : (state & kButtonHot)     ? ABS_DOWNHOT
                                                        : ABS_DOWNNORMAL;
            drawBackground(theme, dc, SBP_ARROWBTN, look, &button, nullptr);
            return;
        }
    }
    RECT rc = button;
    DrawFrameControl(dc, &rc, DFC_SCROLL,
                     DFCS_SCROLLDOWN | ((state & kButtonPressed) ? DFCS_PUSHED : 0) | (enabled ? 0 : DFCS_INACTIVE));
}

// The picker paints into a bitmap: its background, then its parts with the
// origin moved down to the middle of the box, then the scaled button over
// its own.
void PaintFace(HWND picker, HDC target, DWORD_PTR state) {
    const FaceLayout f = LayoutOf(picker);
    const int width = f.client.right, height = f.client.bottom;
    if (width <= 0 || height <= 0) return;
    MemoryDC mem(target);
    BitmapHandle bitmap(CreateCompatibleBitmap(target, width, height));
    if (!mem || !bitmap) return;
    SelectedObject keep(mem, bitmap);
    DefSubclassProc(picker, WM_ERASEBKGND, (WPARAM)mem.Get(), 0);
    SetViewportOrgEx(mem, 0, f.stripTop, nullptr);
    DefSubclassProc(picker, WM_PAINT, (WPARAM)mem.Get(), 0);
    SetViewportOrgEx(mem, 0, 0, nullptr);
    DrawButton(picker, mem, RECT{f.buttonLeft, 0, width, height}, state);
    BitBlt(target, 0, 0, width, height, mem, 0, 0, SRCCOPY);
}

// A tap on the face's button goes to the picker's own button; a tap on the
// text goes to the strip where the picker keeps the part drawn there.
LPARAM TapForPicker(HWND picker, LPARAM lParam, bool* onButton) {
    const FaceLayout f = LayoutOf(picker);
    int x = (short)LOWORD(lParam), y = (short)HIWORD(lParam);
    *onButton = x >= f.buttonLeft;
    if (*onButton) x = f.client.right - 1;
    else y = std::clamp(y - f.stripTop, 0, f.strip - 1);
    return MAKELPARAM(x, y);
}

LRESULT CALLBACK PickerFaceProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR state) {
    switch (msg) {
    case WM_NCDESTROY: RemoveWindowSubclass(hwnd, PickerFaceProc, id); break;
    case WM_ERASEBKGND: return 1;  // the face paints the background with the rest
    case WM_PRINTCLIENT: PaintFace(hwnd, (HDC)wParam, state); return 0;
    case WM_PAINT: {
        if (wParam) {
            PaintFace(hwnd, (HDC)wParam, state);
            return 0;
        }
        // The picker asks for parts of its box where it keeps them, not
        // where the face draws them: the whole box is painted each time.
        InvalidateRect(hwnd, nullptr, FALSE);
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(hwnd, &ps);
        PaintFace(hwnd, dc, state);
        EndPaint(hwnd, &ps);
        return 0;
    }
    case WM_MOUSELEAVE: SetWindowSubclass(hwnd, PickerFaceProc, id, state & ~kButtonHot); break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE: {
        bool onButton = false;
        lParam = TapForPicker(hwnd, lParam, &onButton);
        DWORD_PTR now = onButton ? state | kButtonHot : state & ~kButtonHot;
        if (msg == WM_LBUTTONDOWN && onButton) now |= kButtonPressed;
        if (msg == WM_LBUTTONUP) now &= ~kButtonPressed;
        // Set before the picker sees the message: it repaints as it takes it.
        if (now != state) SetWindowSubclass(hwnd, PickerFaceProc, id, now);
        break;
    }
    }
    return DefSubclassProc(hwnd, msg, wParam, lParam);
}

}  // namespace

void GivePickerScaledFace(HWND picker) {
    if (picker) SetWindowSubclass(picker, PickerFaceProc, kFaceSubclassId, 0);
}
