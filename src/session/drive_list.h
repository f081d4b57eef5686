#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// The present drives of one type from C to Z as one text, "D:,E:,". Type 0 lists every letter that
// exists or has a drive of any type behind it.
std::string DriveList(Ground& ground, int type);

}  // namespace pavoline
