#pragma once

#include <string>

#include "form/form1.h"

namespace pavoline {

// Buttons whose widths, in pixels at 96 dpi, follow the length of a language's texts. Labels stand
// above their fields and check boxes in lines of their own, so that they have room in every
// language. Without further notice each is as wide as the longest of the shipped languages needs
// it.
struct ButtonWidths {
  int search = 88, menu = 96, choose = 100, stop = 80, start = 128;
};

// Five numbers separated by commas, in the order above. What is anything else, or leaves the window
// no room, gives the usual widths.
ButtonWidths ReadWidths(const std::string& list);

// Places the main window's controls for a language.
void LayOutMainWindow(Form1& form, const ButtonWidths& widths);

// Shows or hides the option frames with all they hold.
void ShowOptionFrames(Form1& form, bool shown);

// Shows or hides the Stop button; the progress bar has its room meanwhile.
void ShowStopButton(Form1& form, bool shown);

}  // namespace pavoline
