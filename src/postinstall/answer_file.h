#pragma once

#include <string>

#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// The default answer file, which logs on as Administrator.
const std::string& BuiltInAnswerFile();

// Writes \Windows\Panther\unattend.xml on the install partition from the plan's template, unless
// the image brought one of its own or the template is missing.
void WriteAnswerFile(Session& session, const Plan& plan);

}  // namespace pavoline
