#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// Mounts an ISO file as a virtual CD drive, makes the installation image on it the source (found,
// searched, or asked for), and only then dismounts the ISO mounted before, so that a mount that
// fails or is given up leaves the earlier source usable. Nothing happens while another image is
// being read or an installation begins.
void MountIso(Session& session, const std::string& isoPath);

// The drive ("F:") that the mount program's output names; empty when it names none.
std::string MountedDrive(const std::string& log);

// The command that takes a mounted drive ("F:") away.
std::string DismountCommand(Ground& ground, const std::string& drive);

}  // namespace pavoline
