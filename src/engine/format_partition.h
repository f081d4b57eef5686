#pragma once

#include "session/outcome.h"
#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// Formats the install partition as NTFS under its present label. Failed when format.com is missing
// or did not run. What format itself answers is noted, not judged: the apply shows whether the
// partition can be written.
StepResult FormatInstallPartition(Workplace& workplace, const Plan& plan);

}  // namespace pavoline
