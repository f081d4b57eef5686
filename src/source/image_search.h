#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

enum class SearchMode {
  kDrives,   // all drives; `folder` is the plug-in folder's name
  kMounted,  // one mounted drive or folder; the first image found becomes the source
};

// Fills the source box's list with the images found (and `session.search.found` with their sizes
// and dates). In mode kDrives with a folder name it first discovers plug-ins. Handles events after
// every directory entry; `session.search.stop` ends every listing at its next step.
void SearchImages(Session& session, SearchMode mode, const std::string& folder);

// Plug-ins in `folder` of every drive root and of the program's folder: fills the plug-in list and
// table; of equal names the first found wins.
void DiscoverPlugins(Session& session, const std::string& folder);

// The letters of present drives as one text, "C:,D:,", of one drive type, or with type 0 of every
// drive that exists.
std::string DriveList(Session& session, int type);

}  // namespace pavoline
