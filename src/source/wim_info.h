#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace pavoline {

// The images that the imaging program's "info --xml" describes, in its order, found by plain text
// search. An architecture code other than 9 and 0 keeps the previous image's text, and an image
// without a language keeps the previous detail suffix: both carry over on purpose.
std::vector<WimImageInfo> ParseWimInfo(const std::string& xml);

// Makes these the source's editions and shows them; the lists are empty before.
void ListEditions(Session& session, std::vector<WimImageInfo> editions);

// Lists the images of the source box's WIM or ESD file in the edition list and preselects the one
// asked for. The lists were cleared by the caller. Lists nothing when the source box got another
// text while the imaging program ran.
void GetWimInfo(Session& session);

}  // namespace pavoline
