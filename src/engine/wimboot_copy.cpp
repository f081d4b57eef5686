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
bool CopyShowingProgress(Workplace& workplace, const std::string& from, const std::string& to) {
  const auto progress = [&workplace](std::uint64_t done, std::uint64_t total) {
    ProgressBar& bar = workplace.form.progressBar1;
    const int percent = total == 0 ? 100 : static_cast<int>(100.0 * (double(done) / double(total)));
    if (percent != bar.value()) {
      bar.setValue(percent);
      CallW7TaskProgress(workplace);
    }
    workplace.platform.processes.handleEvents();
    return !Interrupted(workplace);
  };
  Journal(workplace, "copy " + from + " to " + to);
  return workplace.platform.files.copyWithProgress(from, to, progress);
}

std::string Folder(const Plan& plan) { return plan.target.drive + "\\System Volume Information"; }

}  // namespace

bool IsCopied(const Plan& plan) {
  return plan.apply.wimcopy && SourceKindOf(plan.kind).backsRunning;
}

std::string WimbootCopyPath(const Plan& plan) { return Folder(plan) + "\\Install.wim"; }

StepResult CopyImageForWimboot(Workplace& workplace, const Plan& plan) {
  const std::string folder = Folder(plan);

  if (!workplace.platform.files.exists(folder)) workplace.platform.files.createFolder(folder);
  RunBatch(workplace, "takeown /f " + BatchPath(workplace, folder) + " /a /r /d y", "takeown");
  if (Interrupted(workplace)) return StepResult::Closed();

  workplace.form.status.setText(String(workplace, kTextCopyingImage));
  const bool copied = CopyShowingProgress(workplace, plan.source, WimbootCopyPath(plan));
  if (Interrupted(workplace)) return StepResult::Closed();
  if (!copied) {
    return StepResult::Failed({"Copy failed! ", String(workplace, kTextInformation), kErrorMessage,
                               ExitCode::kImagingFailed});
  }
  RunBatch(workplace, "echo y|cacls " + BatchPath(workplace, folder) + " /T /Grant SYSTEM:F",
           "cacls");
  return StepResult::Done();
}

}  // namespace pavoline
