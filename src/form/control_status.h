#pragma once

#include <vector>

#include "form/form1.h"
#include "form/texts.h"

namespace pavoline {

// Switches the main window between idle (true) and busy (false): the Start button's caption, the
// status line, and every input that must not change while an installation runs.
void ControlStatus(Form1& form, const Texts& texts, bool enabled);

// Everything in the main window that a person can press, type into or choose from.
std::vector<Control*> InputsOf(Form1& form);

}  // namespace pavoline
