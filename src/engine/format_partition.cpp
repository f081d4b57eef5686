#include "engine/format_partition.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "form/text_numbers.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/taskbar.h"
#include "platform/text.h"
#include "run/command_runner.h"

namespace pavoline {
namespace {

constexpr std::size_t kLongestLabel = 32;

// The label as format's option, blanks left out. A label comes from a disk and through the code
// page: one with a character that format refuses, or that stands for one the code page lacks ("?"),
// is not given, so that the partition is formatted without a label rather than not at all.
std::string LabelOption(const std::string& label) {
  const std::string kept = ReplaceAll(label, " ", "");
  const bool refused = std::ranges::any_of(kept, [](unsigned char c) {
    constexpr std::string_view kRefused = "*?/\\|.,;:+=[]<>\"";
    return c < ' ' || c == 0x7F || kRefused.find(static_cast<char>(c)) != std::string_view::npos;
  });
  return kept.empty() || refused || kept.size() > kLongestLabel ? std::string() : " /v:" + kept;
}

Failure FormatMissing(Ground& ground) {
  std::string text = String(ground, kTextFormatMissing);
  for (const TextNumber line :
       {kTextFormatMissingFile, kTextFormatMissingStart, kTextFormatMissingKeep}) {
    text += "\n" + String(ground, line);
  }
  return {text, String(ground, kTextCloseTitle), kWarningMessage, ExitCode::kToolMissing};
}

}  // namespace

StepResult FormatInstallPartition(Workplace& workplace, const Plan& plan) {
  Form1& form = workplace.form;
  const std::string& drive = plan.target.drive;
  const std::string program =
      workplace.platform.environment.variable("windir") + "\\System32\\format.com";
  if (!workplace.platform.files.exists(program))
    return StepResult::Failed(FormatMissing(workplace));
  workplace.platform.taskbar.setProgressState(TaskbarState::kIndeterminate);
  form.status.setText(ReplaceAll(String(workplace, kTextFormatting), "%ip%", drive));
  const ToolEnd end = ShellAndWait(
      workplace, program + " " + drive + " /FS:NTFS" + LabelOption(plan.target.label) + " /q /x /y",
      ShowMode::kHidden);
  workplace.platform.taskbar.setProgressState(TaskbarState::kNone);
  if (end.started && end.exitCode) return StepResult::Done();
  return StepResult::Failed({ReplaceAll(More(workplace, kMoreNotStarted), "%f%", program),
                             String(workplace, kTextError), kErrorMessage, ExitCode::kToolMissing});
}

}  // namespace pavoline
