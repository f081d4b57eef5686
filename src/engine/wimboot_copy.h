#pragma once

#include <string>

#include "session/outcome.h"
#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// Only a WIM can back a system that runs from the copy; an ESD is applied from where it lies.
bool IsCopied(const Plan& plan);

// Where an image is applied from when it is first copied into the install partition.
std::string WimbootCopyPath(const Plan& plan);

// Copies the image into the install partition's system folder, where a system that keeps running
// from its image looks for it, and opens that folder to the system.
StepResult CopyImageForWimboot(Workplace& workplace, const Plan& plan);

}  // namespace pavoline
