#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/processes.h"
#include "run/followed_program.h"
#include "session/session.h"

// The one place that turns a command text into a script under %windir%\temp, starts it and waits
// for it while the window stays alive. Callers read a program's success from logs, files or drive
// letters; its exit code and last words are for the journal and for messages.
namespace pavoline {

// How a program that was waited for ended.
struct ToolEnd {
  bool started = false;
  std::optional<std::uint32_t> exitCode;  // nothing when it was left or given up
  std::string lastWords;                  // its last lines on standard error and output

  bool succeeded() const { return exitCode == 0u; }
};

// How a run differs from the usual.
struct RunManner {
  std::chrono::milliseconds longest{0};  // then the program is given up; 0: see ShellAndWait
  std::string
      recordedAs;  // in the journal for a command line that may hold a secret; empty: itself
};

// Starts a command line and returns when the program has ended, handling events meanwhile; there
// is no time-out, but an unattended run gives a program up after an hour. Also returns when the
// window has gone or the installation was stopped: after it, a step asks `Interrupted` and does
// nothing more. A command line that begins with a bare name is run from the system's own folder.
ToolEnd ShellAndWait(Workplace& workplace, const std::string& commandLine, ShowMode mode,
                     const RunManner& manner = {});

// The same for a line of a batch file, hidden and without the file.
ToolEnd RunLine(Workplace& workplace, const std::string& line, const RunManner& manner);

// The same without waiting. Null when it could not be started; otherwise the program may be let go
// of at once.
std::unique_ptr<StartedProgram> ShellNoWait(Ground& ground, const std::string& commandLine,
                                            ShowMode mode);

// Runs a command text of one or more lines as TempDir\base.bat, hidden, and waits. The output of
// its last line lands in TempDir\base.log, which stays for the caller. A script that cannot be
// written, or not in the interpreter's code page, is not run and leaves no log.
ToolEnd RunBatch(Workplace& workplace, const std::string& commandText, const std::string& base);

// What a program that is followed is known by.
struct Followed {
  std::string base;   // names TempDir\base.bat and base.err
  std::string image;  // name in the process list, "dism.exe"
  std::string log;    // the file that should grow; empty: none
};

// Writes one line as TempDir\base.bat and starts it, hidden and without waiting; a redirection is
// part of the line. A line that a batch file cannot hold, for want of characters in its code page,
// is handed to the interpreter directly. Nothing when it could not be started.
std::optional<FollowedProgram> StartBatch(Ground& ground, const std::string& line,
                                          const Followed& followed);

// Starts a command line of its own, hidden and without waiting.
std::optional<FollowedProgram> StartProgram(Ground& ground, const std::string& commandLine,
                                            const Followed& followed);

// Runs a diskpart script from TempDir\base.txt, which stays, in a visible window, and waits.
ToolEnd RunDiskpart(Workplace& workplace, const std::string& scriptText, const std::string& base);

// Makes the interpreter and the programs it starts look for bare names in the system's folders
// first and never in the current folder, which may be one of a foreign medium.
void TrustSystemFoldersOnly(Ground& ground);

// Writes a script that was not there before: what lies under its name goes first, and what cannot
// be removed is not written into.
bool WriteNewFile(Ground& ground, const std::string& path, const std::string& bytes);

// Ends every process of that image name, given in lower case with its extension.
void KillProcessByName(Ground& ground, const std::string& name);

}  // namespace pavoline
