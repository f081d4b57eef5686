#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/environment.h"
#include "platform/processes.h"
#include "support/fake_files.h"
#include "support/simulated_time.h"

namespace pavoline::testing {

// One run of a scripted tool. A behaviour says here what the tool does; all times are milliseconds
// after its start. What lies behind the tool's end, also by being killed, does not happen.
class ToolRun {
 public:
  std::string line;    // the command, of a batch file with its variables put in
  std::string output;  // file after ">"; empty: the file that its starter gave for it, if any
  std::string image;   // name in the process list, taken from the command; may be changed

  void print(long ms, const std::string& text) {
    appends(ms, output.empty() ? errors_ : output, text);
  }
  void complain(long ms, const std::string& text) { appends(ms, errors_, text); }  // standard error
  void exits(std::uint32_t code) { code_ = code; }  // 1 when it is killed
  void does(long ms, std::function<void()> action);
  void endsAt(long ms) { end_ = std::max(end_, ms); }  // else right after its last step
  void neverEnds() { endless_ = true; }

 private:
  friend struct FakeProcesses;
  void appends(long ms, const std::string& file, const std::string& text);

  std::string errors_;  // file that takes its standard error; empty: none
  std::uint32_t code_ = 0;
  std::multimap<long, std::function<void(FakeFiles&)>> steps_;
  long end_ = 0;
  bool endless_ = false;
};

// Programs that run in simulated time. A batch file is one line, whose program an interpreter runs;
// a program without a behaviour ends at once, one whose file is missing does not start.
struct FakeProcesses : Processes {
  FakeProcesses(SimulatedTime& time, FakeFiles& files, Environment& environment)
      : time_(time), files_(files), environment_(environment) {}

  struct Started {
    std::string command;
    ShowMode mode;
    std::string script;  // content of a started batch file
    bool fromOwnSystem32;
    long at;
    std::string program;
  };
  std::vector<Started> started;
  std::vector<std::string> ran;     // every single command, batch lines with variables put in
  std::vector<std::string> killed;  // image names as listed
  int failNextStarts = 0;
  bool noList = false;           // the system gives no process list
  std::function<void()> onList;  // before it is made
  long eventsMs = 1;             // simulated time that handling the pending events takes

  using Behaviour = std::function<void(ToolRun&)>;
  // For commands that contain this text, case ignored. Of several the one given last counts.
  void onStart(const std::string& partOfCommand, Behaviour behaviour);
  // A program that runs besides, until it is terminated.
  std::uint32_t alreadyRunning(const std::string& imageName) {
    processes_[nextId_] = {imageName, std::make_shared<Job>()};
    return nextId_++;
  }
  bool ranLike(const std::string& partOfCommand) const;  // case ignored

  std::unique_ptr<StartedProgram> start(const StartRequest& request) override;
  std::vector<RunningProcess> list() override;
  void terminate(std::uint32_t id) override;
  void handleEvents() override { time_.advance(time_.mainUnloaded() ? 0 : eventsMs); }
  void handleEventsFor(long milliseconds) override;

 private:
  struct Job {
    std::uint32_t id = 0, code = 0;
    bool running = true;
    std::vector<std::weak_ptr<std::function<void()>>> whenEnded;
  };
  struct Process {
    std::string image;
    std::shared_ptr<Job> job;  // that it, or the interpreter that it is, was started for
  };
  class Handle;

  void runTool(const std::shared_ptr<Job>& job, ToolRun& run, bool inBatch);
  void end(Job& job, std::uint32_t code);
  void call(const std::weak_ptr<std::function<void()>>& action);
  void waitOnce(long atMost);
  void countWaitAfterUnload();
  std::string expand(const std::string& line) const;
  bool programMissing(const std::string& line) const;
  const Behaviour* behaviourFor(const std::string& line) const;

  SimulatedTime& time_;
  FakeFiles& files_;
  Environment& environment_;
  std::vector<std::pair<std::string, Behaviour>> behaviours_;
  std::map<std::uint32_t, Process> processes_;
  std::uint32_t nextId_ = 100;
  int waitsAfterUnload_ = 0;
};

}  // namespace pavoline::testing
