#pragma once

#include <windows.h>

// Sizes that follow the screen's resolution. Systems before Windows 10 know one resolution for
// all screens, later ones one for each; the newer functions are used where they exist.
namespace pavoline {

int ScreenDpi();  // of the main screen
int DpiOfWindow(HWND window);

inline int InPixels(int twips, int dpi) { return MulDiv(twips, dpi, 1440); }

// Size of a window of these styles around an inner area of no size.
SIZE FrameSize(DWORD style, DWORD extendedStyle, int dpi);

// The font that the system uses in messages.
LOGFONTW MessageFont(int dpi);

// Edge of a small icon.
int SmallIconSize(int dpi);

}  // namespace pavoline
