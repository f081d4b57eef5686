#include "support/fake_processes.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/paths.h"
#include "platform/text.h"
#include "support/fake_text.h"

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

std::string ImageOf(const std::string& command) {
  const std::string name = FileName(ProgramOf(Inner(command)));
  return name.find('.') == std::string::npos ? name + ".exe" : name;
}

// The file after ">".
std::string OutputOf(const std::string& line) {
  const auto sign = line.rfind('>');
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
  void waitHandlingEvents(std::chrono::milliseconds atMost) override {
    if (job_->running) owner_.waitOnce(atMost.count());
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

std::unique_ptr<StartedProgram> FakeProcesses::start(const StartRequest& request) {
  const std::string& command = request.commandLine;
  const std::string batch = BatchOf(command), script = files_.text(batch);
  started.push_back(
      {command, request.mode, script, request.fromOwnSystem32, time_.now(), request.program});
  if (failNextStarts > 0 && failNextStarts-- > 0) return nullptr;
  const bool given = !request.program.empty();
  if (given ? !files_.exists(request.program) : programMissing(command)) return nullptr;

  ToolRun run;
  run.line = batch.empty() ? command : expand(script.substr(0, script.find("\r\n")));
  run.image = ImageOf(run.line);
  if (!batch.empty() || IsInterpreted(command)) run.output = OutputOf(run.line);
  if (files_.isFolder(ParentFolder(request.outputFile))) run.errors_ = request.outputFile;
  for (const std::string& file : {run.output, run.errors_}) {
    if (!file.empty()) files_.put(file);
  }
  ran.push_back(run.line);
  const auto job = std::make_shared<Job>();
  job->id = nextId_++;
  if (!batch.empty()) processes_[job->id] = {"cmd.exe", job};
  runTool(job, run, !batch.empty());
  return std::make_unique<Handle>(*this, job);
}

void FakeProcesses::runTool(const std::shared_ptr<Job>& job, ToolRun& run, bool inBatch) {
  constexpr std::uint32_t kNoSuchCommand = 9009;
  if (inBatch && programMissing(run.line)) return end(*job, kNoSuchCommand);
  const Behaviour* behaviour = behaviourFor(run.line);
  if (!behaviour) return end(*job, 0);
  const Behaviour act = *behaviour;  // it may register others
  act(run);
  const std::uint32_t id = inBatch ? nextId_++ : job->id;
  processes_[id] = {run.image, job};
  for (const auto& [ms, step] : run.steps_) {
    time_.after(ms, [this, id, action = step] {
      if (processes_.contains(id)) action(files_);
    });
  }
  if (run.endless_) return;
  time_.after(run.end_, [this, id, job, code = run.code_] {
    if (processes_.erase(id) > 0) end(*job, code);
  });
}

// Of an interpreter too, when it was its program that ended.
void FakeProcesses::end(Job& job, std::uint32_t code) {
  processes_.erase(job.id);
  if (!std::exchange(job.running, false)) return;
  job.code = code;
  for (const auto& action : job.whenEnded) call(action);
}

// With the next events, unless its handle is let go before.
void FakeProcesses::call(const std::weak_ptr<std::function<void()>>& action) {
  time_.after(0, [action] {
    if (const auto kept = action.lock()) (*kept)();
  });
}

// What an interpreter has started goes on.
void FakeProcesses::terminate(std::uint32_t id) {
  const auto it = processes_.find(id);
  if (it == processes_.end()) return;
  const Process process = it->second;
  killed.push_back(process.image);
  processes_.erase(it);
  end(*process.job, 1);
}

std::vector<RunningProcess> FakeProcesses::list() {
  if (onList) onList();
  if (noList) return {};
  std::vector<RunningProcess> result = {{1, "pavoline.exe"}};
  for (const auto& [id, process] : processes_) result.push_back({id, process.image});
  return result;
}

void FakeProcesses::waitOnce(long atMost) {
  if (time_.mainUnloaded()) {
    countWaitAfterUnload();
  } else {
    time_.advanceToNext(atMost);
  }
}

void FakeProcesses::handleEventsFor(long milliseconds) {
  if (time_.mainUnloaded()) countWaitAfterUnload();
  time_.advance(milliseconds, true);
}

void FakeProcesses::countWaitAfterUnload() {
  if (++waitsAfterUnload_ > 1000) {
    throw std::runtime_error("The main window has gone and a wait still goes on");
  }
}

}  // namespace pavoline::testing
