#include "listwindow/PickerFace.h"

#include <commctrl.h>
#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>

#include "base/Handles.h"
#include "platform/ScreenScale.h"

namespace {

constexpr UINT_PTR kFaceSubclassId = 1;

// What the face keeps for its picker, as the subclass's reference data: the
// height of the picker's strip of parts, measured when its font is set, and
// the state of the face's button, which follows the picker's own (held from
// a press on it to any release, hot while the pointer is over it).
struct Face {
    int strip = 0;
    bool pressed = false;
    bool hot = false;
};

// The picker keeps its parts in a strip one text line and 2 pixels tall
// from the top of its box, and its button in the right-most
// kPickerButtonWidth pixels.
int StripHeight(HWND picker) {
    TEXTMETRICW tm = {};
    HDC dc = GetDC(picker);
    {
        SelectedObject font(dc, (HGDIOBJ)SendMessageW(picker, WM_GETFONT, 0, 0));
        GetTextMetricsW(dc, &tm);
    }
    ReleaseDC(picker, dc);
    return tm.tmHeight + 2;
}

// Where the face draws the picker's parts.
struct FaceLayout {
    RECT client = {};
    int stripTop = 0;    // where the face draws the strip: centred in the box
    int buttonLeft = 0;  // left edge of the face's button
};

FaceLayout LayoutOf(HWND picker, const Face& face) {
    FaceLayout f;
    GetClientRect(picker, &f.client);
    f.stripTop = std::max(0, (int)(f.client.bottom - face.strip) / 2);
    // Never narrower than the picker's own button, which it covers.
    f.buttonLeft = f.client.right - std::max(ScaleX(kPickerButtonWidth), kPickerButtonWidth);
    return f;
}

// The button as the picker draws its own: from the visual style the picker
// uses when there is one (the style functions are looked up in the module
// the common controls loaded for it, so a system without styles needs
// none), the classic scroll arrow otherwise.
void DrawButton(HWND picker, HDC dc, const RECT& button, const Face& face) {
    const bool enabled = IsWindowEnabled(picker) != FALSE;
    if (HMODULE styles = GetModuleHandleW(L"uxtheme.dll")) {
        auto windowTheme = (decltype(&GetWindowTheme))(void*)GetProcAddress(styles, "GetWindowTheme");
        auto drawBackground = (decltype(&DrawThemeBackground))(void*)GetProcAddress(styles, "DrawThemeBackground");
        HTHEME theme = windowTheme && drawBackground ? windowTheme(picker) : nullptr;
        if (theme) {
            const int look = !enabled                     ? ABS_DOWNDISABLED
                             : face.pressed ? ABS_DOWNPRESSED
                             : face.hot     ? ABS_DOWNHOT
                                            : ABS_DOWNNORMAL;
            drawBackground(theme, dc, SBP_ARROWBTN, look, &button, nullptr);
            return;
        }
    }
    RECT rc = button;
    DrawFrameControl(dc, &rc, DFC_SCROLL,
                     DFCS_SCROLLDOWN | (face.pressed ? DFCS_PUSHED : 0) | (enabled ? 0 : DFCS_INACTIVE));
}

// The picker paints into a bitmap: its background, then its parts with the
// origin moved down to the middle of the box, then the scaled button over
// its own.
void PaintFace(HWND picker, HDC target, const Face& face) {
    const FaceLayout f = LayoutOf(picker, face);
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
    DrawButton(picker, mem, RECT{f.buttonLeft, 0, width, height}, face);
    BitBlt(target, 0, 0, width, height, mem, 0, 0, SRCCOPY);
}

// A tap on the face's button goes to the picker's own button; a tap on the
// text goes to the strip where the picker keeps the part drawn there.
LPARAM TapForPicker(HWND picker, const Face& face, LPARAM lParam, bool* onButton) {
    const FaceLayout f = LayoutOf(picker, face);
    int x = (short)LOWORD(lParam), y = (short)HIWORD(lParam);
    *onButton = x >= f.buttonLeft;
    if (*onButton) x = f.client.right - 1;
    else y = std::clamp(y - f.stripTop, 0, face.strip - 1);
    return MAKELPARAM(x, y);
}

LRESULT CALLBACK PickerFaceProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR data) {
    Face& face = *(Face*)data;
    switch (msg) {
    case WM_NCDESTROY:
        RemoveWindowSubclass(hwnd, PickerFaceProc, id);
        delete &face;
        break;
    case WM_SETFONT: {
        LRESULT r = DefSubclassProc(hwnd, msg, wParam, lParam);
        face.strip = StripHeight(hwnd);
        return r;
    }
    case WM_ERASEBKGND: return 1;  // the face paints the background with the rest
    case WM_PRINTCLIENT: PaintFace(hwnd, (HDC)wParam, face); return 0;
    case WM_PAINT: {
        if (wParam) {
            PaintFace(hwnd, (HDC)wParam, face);
            return 0;
        }
        // The picker asks for parts of its box where it keeps them, not
        // where the face draws them: the whole box is painted each time.
        InvalidateRect(hwnd, nullptr, FALSE);
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(hwnd, &ps);
        PaintFace(hwnd, dc, face);
        EndPaint(hwnd, &ps);
        return 0;
    }
    case WM_MOUSELEAVE: face.hot = false; break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE: {
        // Set before the picker sees the message: it repaints as it takes it.
        bool onButton = false;
        lParam = TapForPicker(hwnd, face, lParam, &onButton);
        face.hot = onButton;
        if (msg == WM_LBUTTONDOWN && onButton) face.pressed = true;
        if (msg == WM_LBUTTONUP) face.pressed = false;
        break;
    }
    }
    return DefSubclassProc(hwnd, msg, wParam, lParam);
}

}  // namespace

void GivePickerScaledFace(HWND picker) {
    if (!picker) return;
    Face* face = new Face;
    face->strip = StripHeight(picker);
    if (!SetWindowSubclass(picker, PickerFaceProc, kFaceSubclassId, (DWORD_PTR)face)) delete face;
}
