#pragma once

#include "session/session.h"

namespace pavoline {

// One handler for the array of seven buttons.
void Command1_Click(Session& session, int index);

// Keeps an option row's field and button in step with its box, after this has been ticked or
// unticked.
void Check_Click(const OptionRow& row);

// Starts the image search, or stops the one that runs.
void ToggleSearch(Session& session);

// Searches the drives for images while the search button stops it. False when there is nothing to
// be said of it any more: the window is gone, or other work has begun.
bool SearchDrives(Session& session);

// Shows what is known of the chosen edition.
void ShowEditionDetails(Session& session);

}  // namespace pavoline
