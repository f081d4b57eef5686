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
bool ReadNews(Session& session, ApplyRun& run) {
  Files& files = session.platform.files;
  const std::string path = TempFile(session, "apply.xml");
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
bool ToolVanished(Session& session, ApplyRun& run, ApplyStep& step) {
  if (run.tool->look(session, true) != FollowedProgram::Sign::kEnded) return false;
  if (ReadNews(session, run)) step = ParseApplyLog(run.log, run.progress);
  return step.toolNeeded;
}

StepResult Finish(Session& session, ApplyRun& run) {
  session.form.timer1.setEnabled(false);
  run.tool->close(session);
  session.platform.files.remove(TempFile(session, "apply.xml"));
  session.platform.files.remove(TempFile(session, "apply.bat"));
  return StepResult::Done();
}

StepResult Fail(Session& session, ApplyRun& run) {
  session.form.timer1.setEnabled(false);
  Journal(session, ToolName(Tool::kImaging) + " has ended before its work was done");
  const Failure failure = ImagingFailure(session, run.tool->lastWords(session));
  run.tool->close(session);
  return StepResult::Failed(failure);
}

}  // namespace

StepResult ApplyMonitorTick(Session& session, ApplyRun& run) {
  if (session.form.unloaded()) return StepResult::Closed();
  const bool readable = ReadNews(session, run);
  ApplyStep step = ParseApplyLog(run.log, run.progress);
  if (readable && step.finished) return Finish(session, run);
  // The phases wait as long as the program lives; this watch only sees a dead one.
  if (run.tool->silentForGood(session)) return Fail(session, run);
  if (!readable) return StepResult::Waits();
  session.form.status.setText(String(session, step.status));
  if (step.toolNeeded && ToolVanished(session, run, step)) return Fail(session, run);
  run.progress = step.progress;
  if (step.shown) {
    session.form.progressBar1.setValue(*step.shown);
    CallW7TaskProgress(session);
  }
  return StepResult::Waits();
}

}  // namespace pavoline
