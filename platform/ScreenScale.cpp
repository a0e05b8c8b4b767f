#include "platform/ScreenScale.h"

#include <windows.h>

namespace {
struct ScreenScaleState {
    int dpiX;
    int dpiY;
    unsigned char forceDoubleScale;
} g_scale;

int Scale(int v, int dpi) {
    if (g_scale.forceDoubleScale) return v * 2;
    int magnitude = ((v < 0 ? -v : v) * dpi + 48) / 96;
    return v < 0 ? -magnitude : magnitude;
}
}  // namespace

void InitScreenScale(int forceDouble) {
    g_scale.forceDoubleScale = (unsigned char)forceDouble;
    if (g_scale.dpiX == 0) {
        HDC dc = GetDC(nullptr);
        g_scale.dpiX = GetDeviceCaps(dc, LOGPIXELSX);
        g_scale.dpiY = GetDeviceCaps(dc, LOGPIXELSY);
        ReleaseDC(nullptr, dc);
    }
}

int ScaleX(int v) { return Scale(v, g_scale.dpiX); }
int ScaleY(int v) { return Scale(v, g_scale.dpiY); }

void SetScreenDensity(int dpiX, int dpiY) {
    g_scale.dpiX = dpiX;
    g_scale.dpiY = dpiY;
}
int ScreenDpiX() { return g_scale.dpiX; }
int ScreenDpiY() { return g_scale.dpiY; }
bool IsLowDensityScreen() { return ScaleX(1) < 2; }
