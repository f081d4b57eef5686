#pragma once

#include <string>

#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// What lies on the partition that the plan overwrites and must not be lost: the message for the
// first such thing, empty when there is none. Looked at are the image (for one inside an ISO the
// outermost ISO file), the program's folder, the answer file, the drivers and the plug-in.
std::string LossOnTarget(Session& session, const Plan& plan);

// True for "E:" and "E:\".
bool IsDrive(const std::string& text);
bool SameDrive(const std::string& a, const std::string& b);

}  // namespace pavoline
