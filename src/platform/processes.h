#pragma once

#include <cstdint>
#include <memory>
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

  // Sleeps until the program has ended or user-interface events are pending, whichever comes
  // first; handles the pending events and returns. Costs no processor time while nothing happens.
  virtual void waitHandlingEvents() = 0;
};

struct RunningProcess {
  std::uint32_t id = 0;
  std::string imageName;  // as the system lists it, for example "WIMLIB-IMAGEX.EXE"
};

class Processes {
 public:
  virtual ~Processes() = default;

  // Starts a command line (or a batch file by its path) in the current directory.
  // Null when it could not be started.
  virtual std::unique_ptr<StartedProgram> start(const std::string& commandLine, ShowMode mode) = 0;

  // Switches the 32-bit view of System32 off for this thread and returns the value that
  // `revertRedirection` wants; 0 when there was nothing to switch off.
  virtual std::uintptr_t disableRedirection() = 0;
  virtual void revertRedirection(std::uintptr_t oldValue) = 0;

  virtual std::vector<RunningProcess> list() = 0;
  virtual void terminate(std::uint32_t id) = 0;  // with exit code 1; a failure is ignored

  // Handles all pending user-interface events and returns.
  virtual void handleEvents() = 0;
};

}  // namespace pavoline
