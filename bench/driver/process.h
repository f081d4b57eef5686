#pragma once

#include <optional>
#include <string>

// Programs on the bench, by the name in the process list.
namespace bench {

bool IsRunning(const std::string& program);
int EndProcesses(const std::string& program);  // how many were ended

// A program started by this one.
class Process {
 public:
  Process() = default;
  // Starts a command line, in a folder when one is given; its environment is this process's.
  explicit Process(const std::string& commandLine, const std::string& folder = "");
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  Process(Process&& other) noexcept;
  Process& operator=(Process&& other) noexcept;
  ~Process();  // the program goes on

  bool started() const { return handle_ != nullptr; }
  bool running() const;
  std::optional<unsigned> exitCode(int milliseconds) const;  // nothing when it still runs then
  void end() const;

  // Processor time of the program so far, milliseconds, and its peak of memory, bytes.
  double processorMilliseconds() const;
  size_t peakMemory() const;

 private:
  void* handle_ = nullptr;
};

}  // namespace bench
