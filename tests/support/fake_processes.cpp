#include "support/fake_processes.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

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

bool IsInterpreted(const std::string& command) { return Contains(Lower(command), " /c "); }

// The batch file that a command runs, itself or through an interpreter; empty: none.
std::string BatchOf(const std::string& command) {
  const std::string path = IsInterpreted(command) ? Inner(command) : ProgramOf(command);
  return EndsWith(Lower(path), ".bat") ? path : std::string();
}

// A command that is none of the interpreter's own, which leave the exit code as it is.
bool IsProgram(const std::string& line) {
  const std::string word = Lower(ProgramOf(line));
  return word != "echo" && word != "@echo" && word != "del" && word != "rem";
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
  std::uint32_t id() override { return job_->id; }
  std::optional<std::uint32_t> exitCode() override {
    return job_->running ? std::nullopt : std::optional(job_->code);
  }
  void whenEnded(std::function<void()> action) override {
    action_ = std::make_shared<std::function<void()>>(std::move(action));
    if (job_->running) {
      job_->whenEnded.push_back(action_);
    } else {
      owner_.call(action_);
    }
  }
  void waitHandlingEvents() override {
    if (job_->running) owner_.waitOnce();
  }

 private:
  FakeProcesses& owner_;
  std::shared_ptr<Job> job_;
  std::shared_ptr<std::function<void()>> action_;
};

void ToolRun::appends(long ms, const std::string& file, const std::string& text) {
  endsAt(ms);
  steps_.emplace(ms, [file, text](FakeFiles& files) {
    if (!file.empty()) files.append(file, text);
  });
}

void ToolRun::print(long ms, const std::string& text) {
  appends(ms, output.empty() && !errorsOnly_ ? errors_ : output, text);
}

void ToolRun::complain(long ms, const std::string& text) {
  appends(ms, Contains(line, "2>&1") ? output : errors_, text);
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

std::shared_ptr<FakeProcesses::Job> FakeProcesses::makeJob(const StartRequest& request) {
  auto job = std::make_shared<Job>();
  const std::string batch = BatchOf(request.commandLine);
  job->batch = !batch.empty();
  job->programGiven = !request.program.empty();
  job->errorsOnly = request.errorsOnly;
  job->lines = job->batch ? Split(ReplaceAll(files_.text(batch), "\r\n", "\n"), "\n")
                          : std::vector<std::string>{request.commandLine};
  if (files_.isFolder(ParentFolder(request.outputFile)) && !files_.isFolder(request.outputFile)) {
    job->outputFile = request.outputFile;
    files_.put(job->outputFile);
  }
  job->id = job->batch ? add({"cmd.exe", job, true}) : nextId_++;
  return job;
}

std::unique_ptr<StartedProgram> FakeProcesses::start(const StartRequest& request) {
  started.push_back({request.commandLine, request.mode, files_.text(BatchOf(request.commandLine)),
                     redirectionOffDepth > 0, time_.now(), request.program, request.outputFile});
  if (failNextStarts > 0) {
    --failNextStarts;
    return nullptr;
  }
  const std::string& program = request.program;
  if (program.empty() ? programMissing(request.commandLine) : !files_.exists(program)) {
    return nullptr;
  }
  const auto job = makeJob(request);
  runNextLine(job);
  return std::make_unique<Handle>(*this, job);
}

void FakeProcesses::runNextLine(const std::shared_ptr<Job>& job) {
  while (job->running && !job->lines.empty()) {
    const std::string line = job->lines.front();
    job->lines.erase(job->lines.begin());
    if (!Trim(line).empty() && runLine(job, line)) return;
  }
  std::erase_if(processes_, [&](const auto& entry) { return entry.second.job == job; });
  end(*job);
}

void FakeProcesses::end(Job& job) {
  if (!std::exchange(job.running, false)) return;
  for (const auto& action : job.whenEnded) call(action);
}

// With the next events, unless its handle is let go before.
void FakeProcesses::call(const std::weak_ptr<std::function<void()>>& action) {
  time_.after(0, [action] {
    if (const auto kept = action.lock()) (*kept)();
  });
}

// True when a program now runs for it.
bool FakeProcesses::runLine(const std::shared_ptr<Job>& job, const std::string& text) {
  constexpr std::uint32_t kNoSuchCommand = 9009;
  ToolRun run;
  run.line = job->batch ? expand(text) : text;
  run.image = ImageOf(run.line);
  run.errors_ = job->outputFile;
  run.errorsOnly_ = job->errorsOnly;
  if (job->batch || IsInterpreted(text)) run.output = OutputOf(run.line);
  ran.push_back(run.line);
  if (!run.output.empty() && !Contains(run.line, ">>")) files_.put(run.output);
  const bool missing = (job->batch || !job->programGiven) && programMissing(run.line);
  if (missing || IsProgram(run.line)) job->code = missing ? kNoSuchCommand : 0;
  const Behaviour* behaviour = behaviourFor(run.line);
  if (!behaviour || missing) return false;
  runTool(job, *behaviour, std::move(run));
  return true;
}

void FakeProcesses::runTool(const std::shared_ptr<Job>& job, const Behaviour& behaviour,
                            ToolRun run) {
  const Behaviour act = behaviour;  // it may register others
  act(run);
  const std::uint32_t id = job->batch ? nextId_++ : job->id;
  processes_[id] = {run.image, job, false};
  for (const auto& [ms, step] : run.steps_) {
    time_.after(ms, [this, id, action = step] {
      if (processes_.contains(id)) action(files_);
    });
  }
  if (run.endless_) return;
  const bool tellsCode = IsProgram(run.line);
  time_.after(run.end_, [this, id, job, tellsCode, code = run.code_] {
    if (processes_.erase(id) == 0) return;
    if (job->running && tellsCode) job->code = code;
    runNextLine(job);
  });
}

void FakeProcesses::terminate(std::uint32_t id) {
  const auto it = processes_.find(id);
  if (it == processes_.end()) return;
  const Process process = it->second;
  killed.push_back(process.image);
  processes_.erase(it);
  if (process.job->running) process.job->code = 1;
  if (process.interpreter) {
    end(*process.job);  // what it had started goes on
  } else {
    runNextLine(process.job);
  }
}

std::vector<RunningProcess> FakeProcesses::list() {
  if (onList) onList();
  if (noList) return {};
  std::vector<RunningProcess> result = {{1, "pavoline.exe"}};
  for (const auto& [id, process] : processes_) result.push_back({id, process.image});
  return result;
}

void FakeProcesses::waitOnce() {
  if (time_.mainUnloaded()) {
    countWaitAfterUnload();
  } else {
    time_.advanceToNext();
  }
}

void FakeProcesses::handleEventsFor(long milliseconds) {
  if (time_.mainUnloaded()) countWaitAfterUnload();
  time_.advanceWhileMainStays(milliseconds);
}

void FakeProcesses::countWaitAfterUnload() {
  if (++waitsAfterUnload_ > 1000) {
    throw std::runtime_error("The main window has gone and a wait still goes on");
  }
}

void FakeProcesses::revertRedirection(std::uintptr_t oldValue) {
  if (oldValue != 7) throw std::runtime_error("A redirection is reverted that was not disabled");
  --redirectionOffDepth;
}

}  // namespace pavoline::testing
