#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pavoline {

// How a started program's first window is shown; the values are the platform's.
enum class ShowMode { kHidden = 0, kNormal = 1 };

// A program that was started. Destroying it lets go of the program, which runs on.
class StartedProgram {
 public:
  virtual ~StartedProgram() = default;

  virtual bool running() = 0;
  virtual std::uint32_t id() = 0;

  // Nothing while the program runs.
  virtual std::optional<std::uint32_t> exitCode() = 0;

  // Calls the action once, from the event loop, when the program has ended; at once at the next
  // round of events when it has ended already. It is forgotten with this object.
  virtual void whenEnded(std::function<void()> action) = 0;

  // Sleeps until the program has ended, user-interface events are pending, or that time has gone
  // by, whichever comes first; handles the pending events and returns. Costs no processor time
  // while nothing happens.
  virtual void waitHandlingEvents(std::chrono::milliseconds atMost) = 0;
};

struct RunningProcess {
  std::uint32_t id = 0;
  std::string imageName;  // as the system lists it, for example "WIMLIB-IMAGEX.EXE"
};

struct StartRequest {
  // A command line, or a batch file by its path.
  std::string commandLine;
  ShowMode mode = ShowMode::kHidden;

  // Full path of the program that runs, whatever the command line's first word would find; empty:
  // that word decides.
  std::string program;

  // A file, made anew, that takes what the program and its children write to their standard error,
  // and to their standard output where they do not redirect it; standard input is then empty.
  // Empty: the streams are those of the program's own console. A file that cannot be made costs
  // the output, not the start.
  std::string outputFile;

  // Stands for a command line that may hold a secret, wherever it is told; empty: itself.
  std::string recordedAs;

  // Standard output is dropped instead: the interpreter echoes a batch file's lines there.
  bool errorsOnly = false;

  // The program is looked for in the system's own System32, not in the one that the system shows
  // to 32-bit processes.
  bool fromOwnSystem32 = false;
};

class Processes {
 public:
  virtual ~Processes() = default;

  // Starts a program in the current directory. Null when it could not be started.
  virtual std::unique_ptr<StartedProgram> start(const StartRequest& request) = 0;

  // Empty when the system gave no list, since the program itself always runs.
  virtual std::vector<RunningProcess> list() = 0;
  virtual void terminate(std::uint32_t id) = 0;  // with exit code 1; a failure is ignored

  // Handles all pending user-interface events and returns.
  virtual void handleEvents() = 0;

  // Handles events for that long, sleeping in between. Returns early when the main window is gone.
  virtual void handleEventsFor(long milliseconds) = 0;
};

}  // namespace pavoline
