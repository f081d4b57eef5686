#pragma once

#include "session/session.h"

namespace pavoline {

// The built-in boot repair: after a question it writes the boot files anew for every Windows on
// the listed partitions and tells which boot stores the boot partition has then.
void RepairBootFiles(Session& session);

}  // namespace pavoline
