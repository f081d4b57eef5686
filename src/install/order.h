#pragma once

#include <cstddef>

#include "install/installation.h"

namespace pavoline {

// One step: its name in the record, and what does it. A step returns when it is done, or when the
// program that it started is to be followed by a timer.
struct OrderedStep {
  const char* name;
  StepResult (*run)(Session& session, Installation& installation);
};

// How an installation has ended whose steps have all been done.
Outcome OutcomeOfLastStep(const Installation& installation);

// The step at a place of the order; null behind the last.
const OrderedStep* StepAt(std::size_t place);

}  // namespace pavoline
