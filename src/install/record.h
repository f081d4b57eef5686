#pragma once

#include "install/installation.h"
#include "session/outcome.h"
#include "session/session.h"

namespace pavoline {

// Closes the record of an installation, or of the attempt to start one (then null): how it ended,
// after how long, and copies to where they outlast this environment: into the applied system, and
// into the folder for records, by the machine's serial number and the time. The latter may be on a
// share: one that does not answer costs 15 seconds, in which events are handled. An attended
// attempt leaves no copy. What fails here is noted and changes nothing. Called again, it only notes
// another outcome.
void CloseRecord(Session& session, Installation* installation, const Outcome& outcome);

}  // namespace pavoline
