#pragma once

#include "session/session.h"

namespace pavoline {

// One handler for the array of seven buttons.
void Command1_Click(Session& session, int index);

// Keeps an optional row's field and button in step with its box; ticking a row without a path
// asks for one at once.
void Check_Click(Session& session, int index);

// Starts the image search, or stops the one that runs.
void ToggleSearch(Session& session);

// Shows what is known of the chosen edition.
void ShowEditionDetails(Session& session);

}  // namespace pavoline
