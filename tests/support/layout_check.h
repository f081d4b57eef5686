#pragma once

#include <string>

#include "form/form.h"

namespace pavoline::testing {

// What is wrong with a form's visible controls, one fault a line: those that overlap (a frame may
// hold others whole), reach out of the window or have no size.
std::string LayoutFaults(const Form& form);

// Those that a screen reader could not tell: what a person operates or watches needs a text, a
// label right before it, or a name to be spoken; "..." is no text.
std::string NamelessControls(const Form& form);

}  // namespace pavoline::testing
