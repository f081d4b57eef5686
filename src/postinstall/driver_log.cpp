#include "postinstall/driver_log.h"

#include <algorithm>

#include "platform/text.h"

namespace pavoline {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kProgressWords = 8;

// The line before the last line end; what follows it is still being written.
std::string_view LastWholeLine(std::string_view log) {
  const auto end = log.rfind(kLineEnd);
  if (end == std::string_view::npos) return {};
  const auto before = log.substr(0, end);
  const auto start = before.rfind(kLineEnd);
  return start == std::string_view::npos ? before : before.substr(start + kLineEnd.size());
}

}  // namespace

DriverStep ParseDriverLog(std::string_view log) {
  DriverStep step;
  const std::string_view line = LastWholeLine(log);
  const auto words = Split(line, " ");
  if (words.size() < kProgressWords) {
    if (Contains(line, "...")) step.kind = DriverStep::kSearching;
    return step;
  }
  // "Installing 3 of 12 - oem3.inf: The driver package was successfully installed."
  if (!IsNumeric(words[1]) || !IsNumeric(words[3])) return step;
  step.kind = DriverStep::kInstalling;
  step.done = LeadingInteger16(words[1]);
  step.total = LeadingInteger16(words[3]);
  return step;
}

// "Installing 3 of 12 - D:\a\oem3.inf: Error - The driver package could not be installed."
std::vector<std::string> FailedDrivers(std::string_view log) {
  constexpr std::string_view kDash = " - ", kName = ".inf";
  std::vector<std::string> failed;
  for (const std::string& line : Split(log, kLineEnd)) {
    const auto dash = line.find(kDash);
    const auto name = LowerAscii(line).find(".inf: ");
    if (dash == std::string::npos || name == std::string::npos || name < dash + kDash.size()) {
      continue;
    }
    const std::string_view said = std::string_view(line).substr(name + kName.size());
    const std::string path =
        line.substr(dash + kDash.size(), name + kName.size() - dash - kDash.size());
    const bool again = std::ranges::find(failed, path) != failed.end();
    if (Contains(said, kDash) && !again) failed.push_back(path);
  }
  return failed;
}

}  // namespace pavoline
