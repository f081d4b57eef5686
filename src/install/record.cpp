#include "install/record.h"

#include <chrono>
#include <cstdio>
#include <string>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "run/command_runner.h"
#include "session/machine_facts.h"

namespace pavoline {
namespace {

constexpr std::chrono::seconds kLongestCopy(15);

const char* Word(Outcome::Kind kind) {
  switch (kind) {
    case Outcome::kDone:
      return "done";
    case Outcome::kRefused:
      return "refused";
    case Outcome::kCancelled:
      return "cancelled";
    case Outcome::kFailed:
      break;
  }
  return "failed";
}

std::string OutcomeLine(const Ground& ground, const Outcome& outcome) {
  return std::string(ground.commandLine.dryRun ? "outcome of the dry run: " : "outcome: ") +
         Word(outcome.kind) +
         (*outcome.step == '\0' ? "" : std::string(" in step: ") + outcome.step) + ", exit code " +
         std::to_string(static_cast<int>(outcome.failure.code));
}

// A dry run says it on its output and leaves no copy anywhere.
void TellOutcome(Ground& ground, const std::string& why, const std::string& line) {
  ground.platform.environment.print((why.empty() ? "" : why + "\r\n") + line + "\r\n");
}

void NoteCopy(Ground& ground, bool copied, const std::string& path) {
  Journal(ground, (copied ? "record copied to " : "record not copied to ") + path);
}

// Behind the window's end nothing is waited for.
bool LeftRunning(const Workplace& workplace, const ToolEnd& end) {
  return end.started && !end.exitCode && workplace.form.unloaded();
}

void CopyIntoSystem(Ground& ground, const Plan& plan) {
  Files& files = ground.platform.files;
  const std::string windows = plan.target.drive + "\\Windows";
  if (!files.isFolder(windows)) return;
  if (!files.exists(windows + "\\Panther")) files.createFolder(windows + "\\Panther");
  const std::string path = windows + "\\Panther\\Pavoline.log";
  NoteCopy(ground, files.copy(ground.paths.journal, path), path);
}

// "5CG1234XYZ-20240506-181500.log".
std::string NameOfCopy(Ground& ground) {
  const MachineFacts facts = FactsOfMachine(ground);
  const std::string serial = FitForFileName(facts.serial);
  const std::string machine = serial.empty() ? facts.mac : serial;
  const LocalTime t = ground.platform.environment.now();
  char stamp[64];
  std::snprintf(stamp, sizeof stamp, "-%04d%02d%02d-%02d%02d%02d.log", t.year, t.month, t.day,
                t.hour, t.minute, t.second);
  return (machine.empty() ? "unknown" : machine) + stamp;
}

// The interpreter makes the copy: this process never waits inside the system for a share, which it
// could neither give up nor end with, and a helper left behind ends with the environment.
void CopyIntoFolder(Session& session) {
  const std::string& named = session.commandLine.logDir;
  const std::string& asked = named.empty() ? session.options.logDir : named;
  if (asked.empty()) return;
  const MachineValue value = WithMachineFacts(session, asked, ValueUse::kPath);
  if (!value.untold.empty()) {
    return Journal(session, "record not copied: no " + value.untold + " for " + asked);
  }
  std::string folder = session.platform.files.fullPath(FromProgram(session.paths, value.text));
  // It would end the quotes in which it stands below.
  if (Contains(folder, "\"")) return Journal(session, "record not copied: no folder: " + folder);
  while (folder.ends_with('\\')) folder.pop_back();
  const std::string path = folder + "\\" + NameOfCopy(session);
  const std::string line = "mkdir \"" + folder + "\" 2>nul & copy /y /b \"" +
                           session.paths.journal + "\" \"" + path + "\"";
  const ToolEnd end = RunLine(session, ReplaceAll(line, "%", "%%"), {kLongestCopy, ""});
  if (!LeftRunning(session, end)) NoteCopy(session, end.succeeded(), path);
}

}  // namespace

void CloseRecord(Session& session, Installation* installation, const Outcome& outcome) {
  const std::string line = OutcomeLine(session, outcome);
  const bool closed = installation != nullptr && !installation->recorded.empty();
  if (closed && installation->recorded == line) return;
  if (!outcome.failure.text.empty()) Journal(session, "reason: " + outcome.failure.text);
  if (installation != nullptr && !closed) {
    const std::uint64_t now = session.platform.environment.milliseconds();
    Journal(session, "took " + std::to_string(now - installation->began) + " ms");
  }
  Journal(session, line);
  const bool dry = session.commandLine.dryRun && installation == nullptr;
  if (dry) return TellOutcome(session, outcome.failure.text, line);
  if (closed || session.paths.journal.empty()) return;
  if (installation != nullptr) installation->recorded = line;
  if (installation != nullptr && installation->applied) CopyIntoSystem(session, installation->plan);
  if (installation != nullptr || session.commandLine.install) CopyIntoFolder(session);
}

}  // namespace pavoline
