#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "install/installation.h"
#include "install/overall_progress.h"

namespace pavoline {

// One step: its name in the record, and what does it. A step returns when it is done, or when the
// program that it started is to be followed by a timer. Of a step that fills the bar: which of its
// phases runs, given the bar's percent; null for the others.
struct OrderedStep {
  const char* name;
  StepResult (*run)(Session& session, Installation& installation);
  std::optional<PhaseNow> (*phase)(const Installation& installation, int barPercent);
  // Stands above what the step runs, in a text for a person; null where it runs nothing.
  std::string (*heading)(const Session& session, const Plan& plan);
};

// The step at a place of the order; null behind the last.
const OrderedStep* StepAt(std::size_t place);

// How an installation ends behind its last step, and in a step that has failed.
Outcome Completed(const Installation& installation);
Outcome FailedIn(const char* step, const Failure& failure);

// What is told at the end: that it is finished, or what is lacking.
std::string EndText(Ground& ground, const Installation& installation);

}  // namespace pavoline
