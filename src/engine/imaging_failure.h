#pragma once

#include <string>

#include "session/ground.h"
#include "session/outcome.h"

namespace pavoline {

// The message of an image that was not written, with the tool's own last words below.
Failure ImagingFailure(Ground& ground, const std::string& lastWords);

}  // namespace pavoline
