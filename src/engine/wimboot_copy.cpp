#include "engine/wimboot_copy.h"

#include "engine/command_runner.h"
#include "engine/setback.h"
#include "engine/taskbar_progress.h"
#include "form/text_numbers.h"
#include "platform/files.h"

namespace pavoline {
namespace {

// Copies with the main progress bar as witness; a closed window cancels.
bool CopyShowingProgress(Session& session, const std::string& from, const std::string& to) {
  const auto progress = [&session](std::uint64_t done, std::uint64_t total) {
    ProgressBar& bar = session.form.progressBar1;
    const int percent = total == 0 ? 100 : static_cast<int>(100.0 * (double(done) / double(total)));
    if (percent != bar.value()) {
      bar.setValue(percent);
      CallW7TaskProgress(session);
    }
    session.platform.processes.handleEvents();
    return !session.form.unloaded();
  };
  Journal(session, "copy " + from + " to " + to);
  return session.platform.files.copyWithProgress(from, to, progress);
}

}  // namespace

std::string CopyImageForWimboot(Session& session, const std::string& image) {
  const Form1& form = session.form;
  const std::string folder = form.text[kInstallPartition].text() + "\\System Volume Information";
  const std::string copy = folder + "\\Install.wim";

  if (!session.platform.files.exists(folder)) session.platform.files.createFolder(folder);
  RunBatch(session, "takeown /f " + BatchPath(session, folder) + " /a /r /d y", "takeown");
  if (form.unloaded()) return {};

  session.form.status.setText(String(session, kTextCopyingImage));
  const bool copied = CopyShowingProgress(session, image, copy);
  if (form.unloaded()) return {};
  if (!copied) {
    FailInstallation(session, "Copy failed! ", String(session, kTextInformation));
    return {};
  }
  RunBatch(session, "echo y|cacls " + BatchPath(session, folder) + " /T /Grant SYSTEM:F", "cacls");
  return form.unloaded() ? std::string() : copy;
}

}  // namespace pavoline
