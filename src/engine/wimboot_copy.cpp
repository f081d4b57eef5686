#include "engine/wimboot_copy.h"

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/processes.h"
#include "run/command_runner.h"
#include "run/command_words.h"
#include "run/taskbar_progress.h"

namespace pavoline {
namespace {

// Copies with the main progress bar as witness; whatever interrupts cancels.
bool CopyShowingProgress(Session& session, const std::string& from, const std::string& to) {
  const auto progress = [&session](std::uint64_t done, std::uint64_t total) {
    ProgressBar& bar = session.form.progressBar1;
    const int percent = total == 0 ? 100 : static_cast<int>(100.0 * (double(done) / double(total)));
    if (percent != bar.value()) {
      bar.setValue(percent);
      CallW7TaskProgress(session);
    }
    session.platform.processes.handleEvents();
    return !Interrupted(session);
  };
  Journal(session, "copy " + from + " to " + to);
  return session.platform.files.copyWithProgress(from, to, progress);
}

std::string Folder(const Plan& plan) { return plan.target.drive + "\\System Volume Information"; }

}  // namespace

bool IsCopied(const Plan& plan) {
  return plan.apply.wimcopy && SourceKindOf(plan.kind).backsRunning;
}

std::string WimbootCopyPath(const Plan& plan) { return Folder(plan) + "\\Install.wim"; }

StepResult CopyImageForWimboot(Session& session, const Plan& plan) {
  const std::string folder = Folder(plan);

  if (!session.platform.files.exists(folder)) session.platform.files.createFolder(folder);
  RunBatch(session, "takeown /f " + BatchPath(session, folder) + " /a /r /d y", "takeown");
  if (Interrupted(session)) return StepResult::Closed();

  session.form.status.setText(String(session, kTextCopyingImage));
  const bool copied = CopyShowingProgress(session, plan.source, WimbootCopyPath(plan));
  if (Interrupted(session)) return StepResult::Closed();
  if (!copied) {
    return StepResult::Failed({"Copy failed! ", String(session, kTextInformation), kErrorMessage,
                               ExitCode::kImagingFailed});
  }
  RunBatch(session, "echo y|cacls " + BatchPath(session, folder) + " /T /Grant SYSTEM:F", "cacls");
  return Interrupted(session) ? StepResult::Closed() : StepResult::Done();
}

}  // namespace pavoline
