#include "engine/wim_apply.h"

#include "engine/imaging_failure.h"
#include "platform/files.h"
#include "run/command_runner.h"
#include "run/command_words.h"

namespace pavoline {
namespace {

std::string LogPath(Ground& ground) { return TempFile(ground, "apply.xml"); }

constexpr std::size_t kLongestBatchLine = 8191;  // letters

// Each part by its own name: a pattern would also take in whatever else is named alike.
std::string PartWords(Ground& ground, const Plan& plan) {
  std::string words;
  for (const std::string& part : plan.furtherParts) words += " --ref=" + BatchPath(ground, part);
  return words;
}

// The blank behind the drive's backslash stands even without options.
std::string ApplyLine(Ground& ground, const Plan& plan, const std::string& source) {
  return BatchTool(ground, Tool::kImaging) + " apply " + BatchPath(ground, source) + " " +
         std::to_string(plan.edition) + " " + plan.target.drive + "\\ " + plan.apply.options +
         PartWords(ground, plan) + " >" + LogPath(ground);
}

}  // namespace

bool ApplyFilesWritable(Ground& ground) {
  const std::string sample(64 * 1024, ' ');
  Files& files = ground.platform.files;
  for (const std::string& path : {TempFile(ground, "apply.bat"), LogPath(ground)}) {
    const bool written = WriteNewFile(ground, path, sample);
    files.remove(path);
    if (!written || files.exists(path)) return false;
  }
  return true;
}

bool ApplyLineFits(Ground& ground, const Plan& plan) {
  return ApplyLine(ground, plan, plan.source).size() <= kLongestBatchLine;
}

StepResult WimSetup(Workplace& workplace, const Plan& plan, const std::string& source,
                    ApplyRun& run) {
  Journal(workplace, "apply " + source + " to " + plan.target.drive);
  // The monitor finds a log on its first tick, even before the tool has opened it.
  if (WriteNewFile(workplace, LogPath(workplace), "\r\n")) {
    run.tool = StartBatch(workplace, ApplyLine(workplace, plan, source),
                          {"apply", ToolName(Tool::kImaging), LogPath(workplace)});
  }
  if (!run.tool) return StepResult::Failed(ImagingFailure(workplace, ""));
  workplace.form.timer1.setEnabled(true);
  return StepResult::Waits();
}

}  // namespace pavoline
