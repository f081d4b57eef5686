#include "postinstall/setup_ok.h"

#include <string>

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"
#include "postinstall/answer_file.h"
#include "postinstall/boot_configuration.h"
#include "postinstall/driver_injection.h"
#include "postinstall/plugins.h"

namespace pavoline {
namespace {

constexpr float kFirstVersionWithSetupPasses = 6.0f;

// The version text's first three characters as a number: 6.1, 10, 5.1; 0 when unreadable.
float AppliedVersion(Session& session) {
  const std::string kernel =
      session.form.text[kInstallPartition].text() + "\\Windows\\System32\\kernel32.dll";
  const std::string version = session.platform.files.fileVersion(kernel);
  Journal(session, "applied system: " + (version.empty() ? "unknown version" : version));
  return static_cast<float>(LeadingNumber(version.substr(0, 3)));
}

}  // namespace

void SetupOK(Session& session) {
  const Form1& form = session.form;
  const float version = AppliedVersion(session);
  CallBootMbr(session, version);
  if (form.unloaded()) return;
  if (version >= kFirstVersionWithSetupPasses) {
    if (form.check[kUseAnswerFile].ticked()) WriteAnswerFile(session);
    if (form.check[kAddDrivers].ticked() &&
        session.platform.files.exists(form.text[kDriverFolder].text())) {
      StartDriverInjection(session);
      return;
    }
  }
  CallPlugin(session);
}

}  // namespace pavoline
