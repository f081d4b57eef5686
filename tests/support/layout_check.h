#pragma once

#include <string>

#include "form/form.h"

namespace pavoline::testing {

// What is wrong with where a form's visible controls lie, one fault a line: controls that overlap
// (a frame may hold others whole), reach out of the window or have no size, columns that are
// wider than their list.
std::string LayoutFaults(const Form& form);

}  // namespace pavoline::testing
