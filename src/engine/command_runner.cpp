#include "engine/command_runner.h"

#include <algorithm>
#include <memory>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_services.h"

namespace pavoline {
namespace {

// Newer systems show a 32-bit process another System32 than the tools need to see.
constexpr float kLastVersionWithoutRedirection = 5.1f;

std::unique_ptr<StartedProgram> Start(Session& session, const std::string& commandLine,
                                      ShowMode mode) {
  Journal(session, "run: " + commandLine);
  Processes& processes = session.platform.processes;
  const std::uintptr_t oldView =
      session.osVersion > kLastVersionWithoutRedirection ? processes.disableRedirection() : 0;
  auto program = processes.start(commandLine, mode);
  if (oldView != 0) processes.revertRedirection(oldView);
  if (!program) Journal(session, "could not be started: " + commandLine);
  return program;
}

// True when the code page had all characters; "?" stands for those that it lacks.
bool Converted(const std::string& text, const std::string& bytes) {
  return std::ranges::count(bytes, '?') == std::ranges::count(text, '?');
}

// False when the script could not be written whole, or names something that the code page cannot:
// it would speak of another file. Nothing of it is left to be run by mistake.
bool WriteScript(Session& session, const std::string& path, const std::string& text,
                 const std::string& bytes) {
  Journal(session, "script " + path + ": " + text);
  Files& files = session.platform.files;
  if (Converted(text, bytes) && files.write(path, bytes)) return true;
  files.remove(path);
  Journal(session, "could not be written: " + path);
  return false;
}

// The interpreter reads batch files in the console's code page.
bool WriteBatch(Session& session, const std::string& path, const std::string& text) {
  return WriteScript(session, path, text, session.platform.text.toConsole(text));
}

}  // namespace

void ShellAndWait(Session& session, const std::string& commandLine, ShowMode mode) {
  const auto program = Start(session, commandLine, mode);
  while (program && program->running() && !session.form.unloaded()) program->waitHandlingEvents();
}

void ShellNoWait(Session& session, const std::string& commandLine, ShowMode mode) {
  Start(session, commandLine, mode);
}

void RunBatch(Session& session, const std::string& commandText, const std::string& base) {
  const std::string path = TempFile(session, base);
  Files& files = session.platform.files;
  // A log of an earlier run must not pass for this one's.
  files.remove(path + ".log");
  if (!WriteBatch(session, path + ".bat", commandText + " >" + path + ".log\r\n")) return;
  ShellAndWait(session, path + ".bat", ShowMode::kHidden);
  files.remove(path + ".bat");
}

bool StartBatch(Session& session, const std::string& line, const std::string& base) {
  const std::string path = TempFile(session, base) + ".bat";
  if (!WriteBatch(session, path, line + "\r\n")) return false;
  ShellNoWait(session, path, ShowMode::kHidden);
  return true;
}

void RunDiskpart(Session& session, const std::string& scriptText, const std::string& base) {
  const std::string path = TempFile(session, base) + ".txt";
  const std::string text = scriptText + "\r\n";
  if (!WriteScript(session, path, text, session.platform.text.toAnsi(text))) return;
  // The quote opened before diskpart closes behind the script's path.
  const std::string shell = session.platform.environment.variable("ComSpec");
  ShellAndWait(session, shell + " /c \"diskpart.exe /S " + path + "\"", ShowMode::kNormal);
}

std::string ShortPath(Session& session, const std::string& path) {
  return "\"" + session.platform.files.shortPath(path) + "\"";
}

std::string BatchPath(Session& session, const std::string& path) {
  return ReplaceAll(ShortPath(session, path), "%", "%%");
}

std::string CommandWord(const std::string& path) {
  const bool bare = path.find_first_of(" \t&()^=;,!|<>%") == std::string::npos;
  if (bare) return path;
  // A backslash before the closing quote would take the quote's meaning away.
  return "\"" + path + (path.ends_with('\\') ? "\\\"" : "\"");
}

}  // namespace pavoline
