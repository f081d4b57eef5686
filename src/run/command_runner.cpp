#include "run/command_runner.h"

#include <algorithm>
#include <memory>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text_services.h"
#include "run/tool_files.h"

namespace pavoline {
namespace {

// Newer systems show a 32-bit process another System32 than the tools need to see.
constexpr float kLastVersionWithOneSystem32 = 5.1f;

std::string Variable(Ground& ground, const char* name) {
  return ground.platform.environment.variable(name);
}

// A bare name at the head of a command line ("shutdown.exe -a") names a program of the system. It
// is run by its full path, so that no file of that name elsewhere takes its place; the command line
// itself stays as it is.
std::string SystemProgram(Ground& ground, const std::string& commandLine) {
  const std::string name = commandLine.substr(0, commandLine.find(' '));
  if (name.find_first_of("\\:\"") != std::string::npos || !name.ends_with(".exe")) return {};
  return Variable(ground, "windir") + "\\System32\\" + name;
}

std::unique_ptr<StartedProgram> Start(Ground& ground, const std::string& commandLine, ShowMode mode,
                                      const std::string& outputFile,
                                      const std::string& recordedAs = {}) {
  const std::string& recorded = recordedAs.empty() ? commandLine : recordedAs;
  Journal(ground, "run: " + recorded);
  if (!outputFile.empty()) ground.platform.files.remove(outputFile);
  auto program = ground.platform.processes.start(
      {commandLine, mode, SystemProgram(ground, commandLine), outputFile, recordedAs,
       commandLine.ends_with(".bat"), ground.osVersion > kLastVersionWithOneSystem32});
  if (!program) Journal(ground, "could not be started: " + recorded);
  return program;
}

// True when the code page had all characters; "?" stands for those that it lacks.
bool Converted(const std::string& text, const std::string& bytes) {
  return std::ranges::count(bytes, '?') == std::ranges::count(text, '?');
}

// False when the script could not be written whole, or names something that the code page cannot:
// it would speak of another file. Nothing of it is left to be run by mistake.
bool WriteScript(Ground& ground, const std::string& path, const std::string& text,
                 const std::string& bytes) {
  Journal(ground, "script " + path + ": " + text);
  if (Converted(text, bytes) && WriteNewFile(ground, path, bytes)) return true;
  ground.platform.files.remove(path);
  Journal(ground, "could not be written: " + path);
  return false;
}

// The interpreter reads batch files in the console's code page.
bool WriteBatch(Ground& ground, const std::string& path, const std::string& text) {
  return WriteScript(ground, path, text, ground.platform.text.toConsole(text));
}

// There is no time-out where a person can stop the installation or close the window. Nobody watches
// an unattended run: there a tool that hangs is given up, which its caller sees as a tool that has
// done nothing.
constexpr std::chrono::hours kLongestUnwatched(1);

// False when the program was given up.
bool AwaitEnd(Workplace& workplace, StartedProgram& program, std::chrono::milliseconds longest) {
  using std::chrono::milliseconds;
  constexpr milliseconds kLook(60'000), kNoLimit(0);
  if (longest == kNoLimit && workplace.commandLine.install) longest = kLongestUnwatched;
  const std::uint64_t began = workplace.platform.environment.milliseconds();
  while (program.running() && !Interrupted(workplace)) {
    const milliseconds waited(workplace.platform.environment.milliseconds() - began);
    if (longest != kNoLimit && waited >= longest) {
      Journal(workplace,
              "given up, it has not ended in " + std::to_string(longest.count()) + " ms");
      return false;
    }
    program.waitHandlingEvents(longest == kNoLimit ? kLook : std::min(kLook, longest - waited));
  }
  return true;
}

// A line of a batch file as the interpreter takes it directly. There a doubled percent sign stays
// double, and a pair of single ones names a variable, in quotes as well. A name with quotes of its
// own around it is none, so the quotes in which percent signs always stand are closed for each; for
// the backslashes in front of it too, since a program takes a quote behind one for a letter.
std::string WithoutBatch(std::string line) {
  for (auto sign = line.find("%%"); sign != std::string::npos; sign = line.find("%%", sign)) {
    const std::size_t first = line.substr(0, sign).find_last_not_of('\\') + 1;
    const std::string outside = "\"" + line.substr(first, sign - first) + "%\"";
    line.replace(first, sign + 2 - first, outside);
    sign = first + outside.size();
  }
  return line;
}

// A line of a batch file for the interpreter itself.
std::string Interpreted(Ground& ground, const std::string& line) {
  return Variable(ground, "ComSpec") + " /s /c \"" + WithoutBatch(line) + "\"";
}

}  // namespace

ToolEnd ShellAndWait(Workplace& workplace, const std::string& commandLine, ShowMode mode,
                     const RunManner& manner) {
  ToolEnd end;
  // A program with a window of its own keeps its console.
  const std::string words =
      mode == ShowMode::kHidden
          ? TempFile(workplace, "tool" + std::to_string(++workplace.toolRuns) + ".err")
          : std::string();
  const std::uint64_t began = workplace.platform.environment.milliseconds();
  const auto program = Start(workplace, commandLine, mode, words, manner.recordedAs);
  if (!program) {
    if (!words.empty()) workplace.platform.files.remove(words);
    return end;
  }
  end.started = true;
  const bool ended = AwaitEnd(workplace, *program, manner.longest);
  if (!ended) workplace.platform.processes.terminate(program->id());
  if (ended) end.exitCode = program->exitCode();
  if (!words.empty()) {
    end.lastWords = LastWords(workplace, words);
    workplace.platform.files.remove(words);
  }
  const std::uint64_t took = workplace.platform.environment.milliseconds() - began;
  Journal(workplace, "ended after " + std::to_string(took) + " ms" +
                         (end.exitCode ? ", exit code " + std::to_string(*end.exitCode)
                                       : std::string(", left running")) +
                         (end.lastWords.empty() ? "" : ": " + end.lastWords));
  return end;
}

ToolEnd RunLine(Workplace& workplace, const std::string& line, const RunManner& manner) {
  return ShellAndWait(workplace, Interpreted(workplace, line), ShowMode::kHidden, manner);
}

std::unique_ptr<StartedProgram> ShellNoWait(Ground& ground, const std::string& commandLine,
                                            ShowMode mode) {
  return Start(ground, commandLine, mode, "");
}

ToolEnd RunBatch(Workplace& workplace, const std::string& commandText, const std::string& base) {
  const std::string path = TempFile(workplace, base);
  Files& files = workplace.platform.files;
  // A log of an earlier run must not pass for this one's.
  files.remove(path + ".log");
  if (files.exists(path + ".log")) {
    Journal(workplace, "could not be replaced: " + path + ".log");
    return {};
  }
  if (!WriteBatch(workplace, path + ".bat", commandText + " >" + path + ".log\r\n")) return {};
  const ToolEnd end = ShellAndWait(workplace, path + ".bat", ShowMode::kHidden);
  files.remove(path + ".bat");
  return end;
}

std::optional<FollowedProgram> StartBatch(Ground& ground, const std::string& line,
                                          const Followed& followed) {
  const std::string path = TempFile(ground, followed.base) + ".bat";
  const bool written = WriteBatch(ground, path, line + "\r\n");
  const std::string bytes = ground.platform.text.toConsole(line);
  if (!written && Converted(line, bytes)) return std::nullopt;
  return StartProgram(ground, written ? path : Interpreted(ground, line), followed);
}

std::optional<FollowedProgram> StartProgram(Ground& ground, const std::string& commandLine,
                                            const Followed& followed) {
  const std::string words = TempFile(ground, followed.base) + ".err";
  auto program = Start(ground, commandLine, ShowMode::kHidden, words);
  if (!program) return std::nullopt;
  return FollowedProgram(std::move(program), followed.image, followed.log, words);
}

ToolEnd RunDiskpart(Workplace& workplace, const std::string& scriptText, const std::string& base) {
  const std::string path = TempFile(workplace, base) + ".txt";
  const std::string text = scriptText + "\r\n";
  if (!WriteScript(workplace, path, text, workplace.platform.text.toAnsi(text))) return {};
  // The quote opened before diskpart closes behind the script's path.
  return ShellAndWait(workplace,
                      Variable(workplace, "ComSpec") + " /c \"diskpart.exe /S " + path + "\"",
                      ShowMode::kNormal);
}

void TrustSystemFoldersOnly(Ground& ground) {
  Environment& environment = ground.platform.environment;
  environment.setVariable("NoDefaultCurrentDirectoryInExePath", "1");
  const std::string windir = environment.variable("windir");
  environment.setVariable("PATH",
                          windir + "\\System32;" + windir + ";" + environment.variable("PATH"));
}

bool WriteNewFile(Ground& ground, const std::string& path, const std::string& bytes) {
  ground.platform.files.remove(path);
  return ground.platform.files.create(path, bytes);
}

void KillProcessByName(Ground& ground, const std::string& name) {
  for (const RunningProcess& process : ground.platform.processes.list()) {
    if (ComparableName(process.imageName) != name) continue;
    Journal(ground, "end process: " + process.imageName);
    ground.platform.processes.terminate(process.id);
  }
}

}  // namespace pavoline
