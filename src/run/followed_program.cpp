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

bool IsProcessRunning(Session& session, const std::string& name) {
  return Names(session.platform.processes.list(), name);
}

FollowedProgram::Sign FollowedProgram::look(Session& session, bool begun) {
  seen_ = seen_ || begun;
  const std::vector<RunningProcess> processes = session.platform.processes.list();
  if (processes.empty()) return Sign::kUnknown;
  if (Names(processes, image_)) {
    seen_ = true;
    return Sign::kWorks;
  }
  return seen_ || !starter_->running() ? Sign::kEnded : Sign::kUnknown;
}

bool FollowedProgram::silentForGood(Session& session) {
  const std::uint64_t now = session.platform.environment.milliseconds();
  const std::uint64_t size = log_.empty() ? 0 : session.platform.files.size(log_).value_or(0);
  const bool silent = !starter_->running() && look(session) == Sign::kEnded && size == logSize_;
  logSize_ = size;
  if (!silent) {
    silentSince_.reset();
    return false;
  }
  if (!silentSince_) silentSince_ = now;
  return now - *silentSince_ >= kSilentForGood;
}

std::string FollowedProgram::lastWords(Session& session) const {
  return LastWords(session, words_);
}

void FollowedProgram::close(Session& session) {
  const auto code = exitCode();
  Journal(session, image_ + (code ? " has ended, exit code " + std::to_string(*code)
                                  : std::string(" is left running")));
  const std::string words = lastWords(session);
  if (!words.empty()) Journal(session, image_ + " said: " + words);
  session.platform.files.remove(words_);
}

}  // namespace pavoline
