#pragma once

#include <string>

#include "form/form.h"

namespace pavoline::testing {

// What is wrong with where a form's visible controls lie and with what they must hold, one fault a
// line: controls that overlap (a frame may hold others whole), reach out of the window or have no
// size; texts and column titles that are longer than their place.
std::string LayoutFaults(const Form& form);

// Pixels that a text needs in the system's message font at 96 dpi. An estimate by kinds of
// letters, on the safe side for words.
int EstimatedTextWidth(const std::string& text);

}  // namespace pavoline::testing
