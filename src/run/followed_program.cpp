#include "run/followed_program.h"

#include <algorithm>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "run/tool_files.h"

namespace pavoline {
namespace {

constexpr std::uint64_t kSilentForGood = 60'000;  // milliseconds

bool Names(const std::vector<RunningProcess>& processes, const std::string& image) {
  return std::ranges::any_of(processes, [&](const RunningProcess& process) {
    return ComparableName(process.imageName) == image;
  });
}

}  // namespace

std::string ComparableName(const std::string& imageName) {
  const auto dot = imageName.find('.');
  const std::size_t kept = dot == std::string::npos ? 3 : dot + 4;
  return LowerAscii(imageName.substr(0, kept));
}

bool IsProcessRunning(Ground& ground, const std::string& name) {
  return Names(ground.platform.processes.list(), name);
}

FollowedProgram::Sign FollowedProgram::look(Ground& ground, bool begun) {
  seen_ = seen_ || begun;
  const std::vector<RunningProcess> processes = ground.platform.processes.list();
  if (processes.empty()) return Sign::kUnknown;
  if (Names(processes, image_)) {
    seen_ = true;
    return Sign::kWorks;
  }
  return seen_ || !starter_->running() ? Sign::kEnded : Sign::kUnknown;
}

bool FollowedProgram::silentForGood(Ground& ground) {
  const std::uint64_t now = ground.platform.environment.milliseconds();
  const std::uint64_t size = log_.empty() ? 0 : ground.platform.files.size(log_).value_or(0);
  const bool silent = !starter_->running() && look(ground) == Sign::kEnded && size == logSize_;
  logSize_ = size;
  if (!silent) {
    silentSince_.reset();
    return false;
  }
  if (!silentSince_) silentSince_ = now;
  return now - *silentSince_ >= kSilentForGood;
}

std::string FollowedProgram::lastWords(Ground& ground) const { return LastWords(ground, words_); }

void FollowedProgram::close(Ground& ground) {
  const auto code = exitCode();
  Journal(ground, image_ + (code ? " has ended, exit code " + std::to_string(*code)
                                 : std::string(" is left running")));
  const std::string words = lastWords(ground);
  if (!words.empty()) Journal(ground, image_ + " said: " + words);
  ground.platform.files.remove(words_);
}

}  // namespace pavoline
