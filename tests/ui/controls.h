#pragma once

#include <stdexcept>
#include <string>

#include "form/form.h"

namespace pavoline::testing {

// The n-th control of a kind, in tab order.
template <class T>
T& Nth(Form& form, int n = 0) {
  for (Control* control : form.controls()) {
    if (auto* found = dynamic_cast<T*>(control); found && n-- == 0) return *found;
  }
  throw std::out_of_range(form.name() + " has no such control");
}

inline Button& ButtonWith(Form& form, const std::string& text) {
  for (Control* control : form.controls()) {
    auto* button = dynamic_cast<Button*>(control);
    if (button && button->text() == text) return *button;
  }
  throw std::out_of_range(form.name() + " has no button " + text);
}

}  // namespace pavoline::testing
