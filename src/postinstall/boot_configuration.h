#pragma once

#include "session/session.h"

namespace pavoline {

// Writes boot files for BIOS and UEFI and a boot sector onto the boot partition. `version` is the
// applied system's major.minor, 0 when unknown.
void CallBootMbr(Session& session, float version);

}  // namespace pavoline
