#pragma once

#include "form/control.h"

namespace pavoline {

// Layouts are drawn in pixels at 96 dpi and stored in twips.
inline constexpr int kTwipsPerPixel = 15;

constexpr Rect Pixels(int left, int top, int width, int height) {
  return {left * kTwipsPerPixel, top * kTwipsPerPixel, width * kTwipsPerPixel,
          height * kTwipsPerPixel};
}

// The resolution to draw a window in, at most `dpi`, so that this many twips fit this many pixels.
constexpr int FittingDpi(int dpi, int twips, int pixels) {
  const long long most = 1440LL * pixels / (twips > 0 ? twips : 1);
  return most < dpi ? static_cast<int>(most) : dpi;
}

// What a window's outer width has more than its inner one: a little above what the frames of
// windows without sizing borders take (3 on each side), so that wider ones still leave a margin.
inline constexpr int kFramePixels = 8;

// The distances and sizes that the system's own windows keep.
inline constexpr int kMargin = 11;        // to the window's edge
inline constexpr int kGap = 7;            // between controls that do not belong together
inline constexpr int kLabelHeight = 15;   // one line of text
inline constexpr int kFieldHeight = 23;   // text and combo boxes, and buttons beside them
inline constexpr int kButtonHeight = 26;  // buttons that end a window
inline constexpr int kButtonWidth = 88;
inline constexpr int kCheckHeight = 17;
inline constexpr int kBrowseWidth = 27;  // "..."

}  // namespace pavoline
