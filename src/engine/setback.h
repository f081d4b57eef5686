#pragma once

#include <string>

#include "session/session.h"

// How an installation ends early.
namespace pavoline {

// Before anything was done to the partition: shows why, and returns to idle. An unattended run,
// which nobody could put right, closes the window instead.
void RefuseInstallation(Session& session, const std::string& text, int flags,
                        const std::string& title);

// After work began: shows an error, clears the progress display and returns to idle, so that the
// person can try again.
void FailInstallation(Session& session, const std::string& text, const std::string& title);

}  // namespace pavoline
