#pragma once

#include <initializer_list>

#include "form/form.h"
#include "form/pixels.h"

namespace pavoline {

// Gives a form an inner area of that many pixels.
void SetInnerSize(Form& form, int width, int height);

// Places the buttons that end a window in one row from the right margin, first one leftmost.
// `bottom` is the inner height of the window.
void PlaceEndButtons(std::initializer_list<Button*> buttons, int width, int bottom);

}  // namespace pavoline
