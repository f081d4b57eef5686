#include "postinstall/setup_ok.h"

#include <string>

#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {

// The version text's first three characters as a number: 6.1, 10, 5.1.
float SetupOK(Ground& ground, const Plan& plan) {
  const std::string kernel = plan.target.drive + "\\Windows\\System32\\kernel32.dll";
  const std::string version = ground.platform.files.fileVersion(kernel);
  Journal(ground, "applied system: " + (version.empty() ? "unknown version" : version));
  return static_cast<float>(LeadingNumber(version.substr(0, 3)));
}

}  // namespace pavoline
