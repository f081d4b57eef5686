#pragma once

#include <string>

#include "form/form.h"

namespace pavoline::testing {

// What is wrong with where a form's visible controls lie, one fault a line: controls that overlap
// (a frame may hold others whole), reach out of the window or have no size.
std::string LayoutFaults(const Form& form);

}  // namespace pavoline::testing
