#pragma once

#include <string>

#include "session/outcome.h"
#include "session/session.h"

namespace pavoline {

// The message of an image that was not written, with the tool's own last words below.
Failure ImagingFailure(Session& session, const std::string& lastWords);

}  // namespace pavoline
