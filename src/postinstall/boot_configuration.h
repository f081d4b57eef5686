#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// What boot files are written for and where to.
struct BootJob {
  std::string bootDrive;      // "S:"
  std::string systemDrive;    // of the one system to start; not looked at with everyWindows
  bool everyWindows = false;  // make the boot menu anew for every system on the listed partitions
  std::string language;       // "en-US"; empty: that of the running thread
};

// Writes boot files for BIOS and UEFI and a boot sector onto the boot partition. `version` is the
// applied system's major.minor, 0 when unknown. Boot stores that are to be made anew are set aside
// first and put back when none appears in their place. False when no boot files were written:
// bcdboot failed or is missing, or there is no system; earlier boot stores are then as they were.
bool CallBootMbr(Session& session, const BootJob& job, float version);

// True when boot files could be made anew: bcdboot is there and a system on the listed partitions.
bool AnythingToRepair(Session& session);

// True when bcdboot.exe and bootsect.exe are there, the program's own or the system's.
bool BootToolsPresent(Ground& ground);

}  // namespace pavoline
