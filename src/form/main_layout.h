#pragma once

#include "form/form1.h"

namespace pavoline {

// Places the main window's controls for a language. Chinese texts (locales 2052, 1028, 3076) are
// short and have their own layout; German (1031) and Japanese (1041) widen labels and buttons of
// the common one.
void LayOutMainWindow(Form1& form, unsigned locale);

// Shows or hides the option frames with all they hold.
void ShowOptionFrames(Form1& form, bool shown);

// Shows or hides the Stop button; the progress bar has its room meanwhile.
void ShowStopButton(Form1& form, bool shown);

}  // namespace pavoline
