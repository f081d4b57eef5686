#pragma once

#include "platform/environment.h"

namespace pavoline {

// A capital letter drawn at random; "A" and "Z" come half as often as the others.
char RandomLetter(Environment& environment);

}  // namespace pavoline
