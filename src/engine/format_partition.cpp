#include "engine/format_partition.h"

#include "engine/command_runner.h"
#include "engine/setback.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/taskbar.h"
#include "platform/text.h"

namespace pavoline {
namespace {

// A label comes from the disk: what could end the option and begin another is left out with the
// blanks.
std::string LabelOption(const std::string& label) {
  std::string kept;
  for (const char c : label) {
    const bool control = static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    if (!control && c != ' ' && c != '"' && c != '/') kept += c;
  }
  return kept.empty() ? kept : " /v:" + kept;
}

void ReportFormatMissing(Session& session) {
  std::string text = String(session, kTextFormatMissing);
  for (int line = 1; line < 4; ++line) text += "\n" + String(session, kTextFormatMissing + line);
  RefuseInstallation(session, text, kWarningMessage, String(session, kTextCloseTitle));
}

}  // namespace

bool FormatInstallPartition(Session& session) {
  Form1& form = session.form;
  const std::string& drive = form.text[kInstallPartition].text();
  const std::string program =
      session.platform.environment.variable("windir") + "\\System32\\format.com";
  if (!session.platform.files.exists(program)) {
    ReportFormatMissing(session);
    return false;
  }
  session.platform.taskbar.setProgressState(TaskbarState::kIndeterminate);
  std::string& label = session.target.volumeLabel;
  label = LabelOption(label);
  form.status.setText(ReplaceAll(String(session, kTextFormatting), "%ip%", drive));
  ShellAndWait(session, program + " " + drive + " /FS:NTFS" + label + " /q /x /y",
               ShowMode::kHidden);
  session.platform.taskbar.setProgressState(TaskbarState::kNone);
  return !form.unloaded();
}

}  // namespace pavoline
