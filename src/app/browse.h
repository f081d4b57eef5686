#pragma once

#include "session/session.h"

// The browse buttons: each asks for a file or folder and puts it into its row.
namespace pavoline {

void BrowseImage(Session& session);
void BrowseAnswerFile(Session& session);
void BrowseDrivers(Session& session);
void BrowsePlugin(Session& session);

}  // namespace pavoline
