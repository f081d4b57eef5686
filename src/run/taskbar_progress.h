#pragma once

#include "session/session.h"

namespace pavoline {

// Creates the taskbar object on systems of version 6.1 or later; earlier ones have none, and the
// taskbar calls then do nothing.
void CreateTaskbarProgress(Ground& ground);

// Copies the main progress bar's value to the taskbar button, out of 100.
void CallW7TaskProgress(Workplace& workplace);

}  // namespace pavoline
