#pragma once

#include "session/session.h"

namespace pavoline {

// Keys of the main window, live only while no installation runs. True: the key is used up.
// `shift` adds up ShiftState values.
bool HandleHotKey(Session& session, int keyCode, int shift);

// Switches between the wide window with all options and the narrow one.
void ToggleWidth(Session& session);

}  // namespace pavoline
