#pragma once

#include "session/ground.h"
#include "session/plan.h"

namespace pavoline {

// The first system that has setup passes: earlier ones take neither answer file nor drivers.
inline constexpr float kFirstVersionWithSetupPasses = 6.0f;

// What begins the steps behind an applied or restored image: learns the version of the system that
// is now on the install partition, major.minor; 0 when it cannot be read, which counts as old.
float SetupOK(Ground& ground, const Plan& plan);

}  // namespace pavoline
