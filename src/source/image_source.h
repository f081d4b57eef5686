#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace pavoline {

// Runs on every change of the source box, whoever made it: tells the kind of image by the path's
// end and lists what can be installed from it.
void SourceChanged(Session& session);

// Files dropped on the source box: the first one is taken when it is an image.
void SourceDropped(Session& session, const std::vector<std::string>& files);

// The file dialog for an image.
FileRequest ImageRequest(Ground& ground, DialogPlace place);

}  // namespace pavoline
