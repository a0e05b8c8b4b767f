// Every length in the user interface is written for a 96-dpi screen and
// scaled to the real density: sign(v) * ((|v| * dpi + 48) / 96).
#pragma once

void InitScreenScale(int forceDouble);
int ScaleX(int v);
int ScaleY(int v);

// Tests and the density choice read or replace the densities directly.
void SetScreenDensity(int dpiX, int dpiY);
int ScreenDpiX();
int ScreenDpiY();
bool IsLowDensityScreen();  // ScaleX(1) below 2
