#pragma once

#include <string>

#include "platform/processes.h"
#include "session/session.h"

namespace pavoline {

// Mounts an ISO file as a virtual CD drive, makes the installation image on it the source (found,
// searched, or asked for), and only then dismounts the ISO mounted before.
void MountIso(Session& session, const std::string& isoPath);

// The command that takes a mounted drive ("F:") away.
std::string DismountCommand(Session& session, const std::string& drive);

}  // namespace pavoline
