#include "engine/wim_apply.h"

#include "engine/imaging_failure.h"
#include "platform/files.h"
#include "run/command_runner.h"
#include "run/command_words.h"

namespace pavoline {
namespace {

std::string LogPath(Session& session) { return TempFile(session, "apply.xml"); }

constexpr std::size_t kLongestBatchLine = 8191;  // letters

// Each part by its own name: a pattern would also take in whatever else is named alike.
std::string PartWords(Session& session, const Plan& plan) {
  std::string words;
  for (const std::string& part : plan.furtherParts) words += " --ref=" + BatchPath(session, part);
  return words;
}

// The blank behind the drive's backslash stands even without options.
std::string ApplyLine(Session& session, const Plan& plan, const std::string& source) {
  return BatchTool(session, Tool::kImaging) + " apply " + BatchPath(session, source) + " " +
         std::to_string(plan.edition) + " " + plan.target.drive + "\\ " + plan.apply.options +
         PartWords(session, plan) + " >" + LogPath(session);
}

}  // namespace

bool ApplyFilesWritable(Session& session) {
  const std::string sample(64 * 1024, ' ');
  Files& files = session.platform.files;
  for (const std::string& path : {TempFile(session, "apply.bat"), LogPath(session)}) {
    const bool written = WriteNewFile(session, path, sample);
    files.remove(path);
    if (!written || files.exists(path)) return false;
  }
  return true;
}

bool ApplyLineFits(Session& session, const Plan& plan) {
  return ApplyLine(session, plan, plan.source).size() <= kLongestBatchLine;
}

StepResult WimSetup(Session& session, const Plan& plan, const std::string& source, ApplyRun& run) {
  Journal(session, "apply " + source + " to " + plan.target.drive);
  // The monitor finds a log on its first tick, even before the tool has opened it.
  if (WriteNewFile(session, LogPath(session), "\r\n")) {
    run.tool = StartBatch(session, ApplyLine(session, plan, source),
                          {"apply", ToolName(Tool::kImaging), LogPath(session)});
  }
  if (!run.tool) return StepResult::Failed(ImagingFailure(session, ""));
  session.form.timer1.setEnabled(true);
  return StepResult::Waits();
}

}  // namespace pavoline
