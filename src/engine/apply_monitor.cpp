#include <string>

#include "engine/imaging_failure.h"
#include "engine/wim_apply.h"
#include "form/text_numbers.h"
#include "platform/files.h"
#include "run/taskbar_progress.h"

namespace pavoline {
namespace {

constexpr std::size_t kPiece = 1u << 20;  // bytes read at a time
constexpr int kMostPieces = 256;          // per look, so that no log holds the window up for long

// The empty line that stands in the log before the program opens it anew.
constexpr std::uint64_t kEmptyLine = 2;

// Takes in what the program has written since the last look. False when the log cannot be read.
bool ReadNews(Ground& ground, ApplyRun& run) {
  Files& files = ground.platform.files;
  const std::string path = TempFile(ground, "apply.xml");
  const auto size = files.size(path);
  if (!size) return false;
  if (*size <= kEmptyLine || *size < run.bytesRead) {
    run.log = ApplyLog();
    run.bytesRead = 0;
  }
  if (*size <= kEmptyLine) return true;
  for (int piece = 0; piece < kMostPieces; ++piece) {
    // Only ASCII is looked for, so the bytes need no conversion.
    const auto bytes = files.readPart(path, run.bytesRead, kPiece);
    if (!bytes) return false;
    run.log.feed(*bytes);
    run.bytesRead += bytes->size();
    if (bytes->size() < kPiece) break;
  }
  return true;
}

// The program may have written its last lines and ended after the log was read: a second look
// tells an end from an accident.
bool ToolVanished(Ground& ground, ApplyRun& run, ApplyStep& step) {
  if (run.tool->look(ground, true) != FollowedProgram::Sign::kEnded) return false;
  if (ReadNews(ground, run)) step = ParseApplyLog(run.log, run.progress);
  return step.toolNeeded;
}

StepResult Finish(Workplace& workplace, ApplyRun& run) {
  workplace.form.timer1.setEnabled(false);
  run.tool->close(workplace);
  workplace.platform.files.remove(TempFile(workplace, "apply.xml"));
  workplace.platform.files.remove(TempFile(workplace, "apply.bat"));
  return StepResult::Done();
}

StepResult Fail(Workplace& workplace, ApplyRun& run) {
  workplace.form.timer1.setEnabled(false);
  Journal(workplace, ToolName(Tool::kImaging) + " has ended before its work was done");
  const Failure failure = ImagingFailure(workplace, run.tool->lastWords(workplace));
  run.tool->close(workplace);
  return StepResult::Failed(failure);
}

}  // namespace

StepResult ApplyMonitorTick(Workplace& workplace, ApplyRun& run) {
  const bool readable = ReadNews(workplace, run);
  ApplyStep step = ParseApplyLog(run.log, run.progress);
  if (readable && step.finished) return Finish(workplace, run);
  // The phases wait as long as the program lives; this watch only sees a dead one.
  if (run.tool->silentForGood(workplace)) return Fail(workplace, run);
  if (!readable) return StepResult::Waits();
  workplace.form.status.setText(String(workplace, step.status));
  if (step.toolNeeded && ToolVanished(workplace, run, step)) return Fail(workplace, run);
  run.progress = step.progress;
  if (step.shown) {
    workplace.form.progressBar1.setValue(*step.shown);
    CallW7TaskProgress(workplace);
  }
  return StepResult::Waits();
}

}  // namespace pavoline
