#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/exit_code.h"
#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// Why an installation cannot start.
struct Refusal {
  std::string text;  // empty: a person said no
  ExitCode code = ExitCode::kRefused;
};

// Everything that must hold before a person is asked, in one order. Enters what it finds into the
// plan, and what was passed in words; nothing when all was.
std::optional<Refusal> CheckStart(Session& session, Plan& plan, std::vector<std::string>& passed);

}  // namespace pavoline
