#pragma once

#include <string>

#include "driver/window.h"

// Measures what is written on the real windows of this process, in the pixels of their fonts.
namespace bench {

// What is cut in a window, one line each: texts of labels, buttons, boxes and links, titles of
// columns, entries of closed lists, and the window's own title.
std::string CutTexts(const Window& window);

// Whether a control could show another text than it does now: the same line, or nothing.
std::string CutText(const Window& control, const std::string& text);

}  // namespace bench
