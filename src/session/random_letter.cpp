#include "session/random_letter.h"

#include <cmath>

namespace pavoline {

char RandomLetter(Environment& environment) {
  // nearbyint rounds a half to the even neighbour.
  return static_cast<char>(std::nearbyint('A' + ('Z' - 'A') * environment.random()));
}

}  // namespace pavoline
