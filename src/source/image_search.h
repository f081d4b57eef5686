#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

enum class SearchMode {
  kDrives,   // all drives; `folder` is the plug-in folder's name, empty: no plug-ins
  kMounted,  // one mounted drive or folder; the first image found becomes the source
};

// Adds the images found to the source box's list, and to `session.search.found` with their sizes
// and dates; what is there already stays. In mode kDrives with a folder name it first discovers
// plug-ins. Handles events every few milliseconds; `session.search.stop`, or the window's
// end, ends every listing at its next step. While `session.search.running` is set the status line
// counts the images.
void SearchImages(Session& session, SearchMode mode, const std::string& folder);

// Plug-ins in `folder` of every drive root and of the program's folder: fills the plug-in list and
// table; of equal names the first found wins.
void DiscoverPlugins(Session& session, const std::string& folder);

}  // namespace pavoline
