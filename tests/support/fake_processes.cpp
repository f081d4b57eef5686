#include "support/fake_processes.h"

#include <algorithm>
#include <stdexcept>

#include "platform/paths.h"
#include "platform/text.h"
#include "support/fold_case.h"

namespace pavoline::testing {
namespace {

// The program of a command: up to the first blank outside quotes, the quotes taken out.
std::string ProgramOf(const std::string& command) {
  std::string result;
  bool quoted = false;
  for (char c : Trim(command)) {
    if (c == '"') {
      quoted = !quoted;
    } else if (c == ' ' && !quoted) {
      break;
    } else {
      result += c;
    }
  }
  return result;
}

// What an interpreter called with "/c" runs, else the command itself.
std::string Inner(const std::string& command) {
  const auto pos = Lower(command).find(" /c ");
  return pos == std::string::npos ? command : Trim(ReplaceAll(command.substr(pos + 4), "\"", ""));
}

std::string ImageOf(const std::string& command) {
  const std::string name = FileName(ProgramOf(Inner(command)));
  return name.find('.') == std::string::npos ? name + ".exe" : name;
}

// The file after the last ">" that does not join two streams ("2>&1").
std::string OutputOf(const std::string& line) {
  auto sign = line.rfind('>');
  if (sign != std::string::npos && line.compare(sign, 2, ">&") == 0)
    sign = line.rfind('>', sign - 1);
  return sign == std::string::npos ? std::string() : ProgramOf(line.substr(sign + 1));
}

}  // namespace

class FakeProcesses::Handle : public StartedProgram {
 public:
  Handle(FakeProcesses& owner, std::shared_ptr<Job> job) : owner_(owner), job_(std::move(job)) {}
  bool running() override { return job_->running; }
  void waitHandlingEvents() override {
    if (job_->running) owner_.waitOnce();
  }

 private:
  FakeProcesses& owner_;
  std::shared_ptr<Job> job_;
};

void ToolRun::print(long ms, const std::string& text) {
  endsAt(ms);
  steps_.emplace(ms, [path = output, text](FakeFiles& files) {
    if (!path.empty()) files.put(path, files.text(path) + text);
  });
}

void ToolRun::does(long ms, std::function<void()> action) {
  endsAt(ms);
  steps_.emplace(ms, [action = std::move(action)](FakeFiles&) { action(); });
}

void FakeProcesses::onStart(const std::string& partOfCommand, Behaviour behaviour) {
  behaviours_.emplace_back(Lower(partOfCommand), std::move(behaviour));
}

bool FakeProcesses::ranLike(const std::string& partOfCommand) const {
  return std::any_of(ran.begin(), ran.end(), [&](const std::string& line) {
    return Contains(Lower(line), Lower(partOfCommand));
  });
}

const FakeProcesses::Behaviour* FakeProcesses::behaviourFor(const std::string& line) const {
  const std::string lower = Lower(line);
  for (auto it = behaviours_.rbegin(); it != behaviours_.rend(); ++it) {
    if (Contains(lower, it->first)) return &it->second;
  }
  return nullptr;
}

std::uint32_t FakeProcesses::add(Process process) {
  processes_[nextId_] = std::move(process);
  return nextId_++;
}

// As the interpreter reads a line of a batch file: "%%" is a percent sign, "%name%" a variable, a
// percent sign left over goes.
std::string FakeProcesses::expand(const std::string& line) const {
  std::string result;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '%') {
      result += line[i];
    } else if (line.compare(i, 2, "%%") == 0) {
      result += line[i++];
    } else if (const auto end = line.find('%', i + 1); end != std::string::npos) {
      result += environment_.variable(line.substr(i + 1, end - i - 1));
      i = end;
    }
  }
  return result;
}

bool FakeProcesses::programMissing(const std::string& line) const {
  const std::string program = ProgramOf(line);
  const bool rooted = program.size() > 2 && program[1] == ':';
  return rooted && !files_.exists(program) && !files_.exists(program + ".exe");
}

std::unique_ptr<StartedProgram> FakeProcesses::start(const std::string& commandLine,
                                                     ShowMode mode) {
  auto job = std::make_shared<Job>();
  job->batch = EndsWith(Lower(ProgramOf(commandLine)), ".bat");
  const std::string script = job->batch ? files_.text(ProgramOf(commandLine)) : std::string();
  started.push_back({commandLine, mode, script, redirectionOffDepth > 0, time_.now()});
  if (failNextStarts > 0) {
    --failNextStarts;
    return nullptr;
  }
  if (programMissing(commandLine)) return nullptr;
  job->lines = job->batch ? Split(ReplaceAll(script, "\r\n", "\n"), "\n")
                          : std::vector<std::string>{commandLine};
  if (job->batch) add({"cmd.exe", job, true});
  runNextLine(job);
  return std::make_unique<Handle>(*this, job);
}

void FakeProcesses::runNextLine(const std::shared_ptr<Job>& job) {
  while (job->running && !job->lines.empty()) {
    const std::string line = job->lines.front();
    job->lines.erase(job->lines.begin());
    if (!Trim(line).empty() && runLine(job, line)) return;
  }
  job->running = false;
  std::erase_if(processes_, [&](const auto& entry) { return entry.second.job == job; });
}

// True when a program now runs for it.
bool FakeProcesses::runLine(const std::shared_ptr<Job>& job, const std::string& text) {
  ToolRun run;
  run.line = job->batch ? expand(text) : text;
  run.image = ImageOf(run.line);
  if (job->batch) run.output = OutputOf(run.line);
  ran.push_back(run.line);
  if (!run.output.empty() && !Contains(run.line, ">>")) files_.put(run.output);
  const Behaviour* behaviour = behaviourFor(run.line);
  if (!behaviour || programMissing(run.line)) return false;
  runTool(job, *behaviour, std::move(run));
  return true;
}

void FakeProcesses::runTool(const std::shared_ptr<Job>& job, const Behaviour& behaviour,
                            ToolRun run) {
  const Behaviour act = behaviour;  // it may register others
  act(run);
  const std::uint32_t id = add({run.image, job, false});
  for (const auto& [ms, step] : run.steps_) {
    time_.after(ms, [this, id, action = step] {
      if (processes_.contains(id)) action(files_);
    });
  }
  if (run.endless_) return;
  time_.after(run.end_, [this, id, job] {
    if (processes_.erase(id) > 0) runNextLine(job);
  });
}

void FakeProcesses::terminate(std::uint32_t id) {
  const auto it = processes_.find(id);
  if (it == processes_.end()) return;
  const Process process = it->second;
  killed.push_back(process.image);
  processes_.erase(it);
  if (process.interpreter) {
    process.job->running = false;  // what it had started goes on
  } else {
    runNextLine(process.job);
  }
}

std::vector<RunningProcess> FakeProcesses::list() {
  std::vector<RunningProcess> result;
  for (const auto& [id, process] : processes_) result.push_back({id, process.image});
  return result;
}

void FakeProcesses::waitOnce() {
  if (!time_.mainUnloaded()) {
    time_.advanceToNext();
  } else if (++waitsAfterUnload_ > 1000) {
    throw std::runtime_error("The main window has gone and a wait still goes on");
  }
}

void FakeProcesses::revertRedirection(std::uintptr_t oldValue) {
  if (oldValue != 7) throw std::runtime_error("A redirection is reverted that was not disabled");
  --redirectionOffDepth;
}

}  // namespace pavoline::testing
