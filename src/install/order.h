#pragma once

#include <cstddef>
#include <optional>

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
};

// The step at a place of the order; null behind the last.
const OrderedStep* StepAt(std::size_t place);

}  // namespace pavoline
