#pragma once

#include <string>
#include <vector>

#include "install/dry_machine.h"
#include "session/outcome.h"
#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// What one step of the order would do.
struct PlannedStep {
  std::string heading;
  std::vector<PlannedAct> acts;
};

// A whole installation that was only thought through.
struct Rehearsal {
  std::vector<PlannedStep> steps;  // those that would do something
  Outcome outcome;                 // when every program does what it should
  std::string missing;             // what would be lacking at the end, for a person; mostly empty
  std::string version;             // that the system in the image was taken to have
};

// Runs the steps of the order with this plan on a machine that changes nothing: the command lines
// are those that an installation would start, made by the same code.
Rehearsal Rehearse(Session& session, const Plan& plan);

}  // namespace pavoline
