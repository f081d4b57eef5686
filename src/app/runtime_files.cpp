#include "app/runtime_files.h"

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {
namespace {

constexpr int kLastMajorWithoutRepair = 9;
constexpr int kLastBuildWithoutSystemTemp = 20265;

// The file dialogs of new systems need coml2.dll, which pre-installation environments leave out;
// whoever prepares the medium may put it beside the program.
void CopyComl2(Ground& ground, const std::string& windir) {
  Files& files = ground.platform.files;
  const std::string ours = ground.paths.appDir + "\\coml2.dll";
  if (!files.exists(ours)) return;
  const bool both = files.exists(windir + "\\SysWow64");
  const std::string theirs = windir + (both ? "\\SysWow64" : "\\System32") + "\\coml2.dll";
  if (!files.exists(theirs)) files.copy(ours, theirs);
}

}  // namespace

void RepairRuntimeFiles(Ground& ground) {
  Files& files = ground.platform.files;
  const std::string windir = ground.platform.environment.variable("windir");
  const auto parts = Split(files.fileVersion(windir + "\\system32\\kernel32.dll"), ".");
  if (parts.size() < 3) return;
  ground.osVersion = static_cast<float>(LeadingNumber(parts[0] + "." + parts[1]));
  const double major = LeadingNumber(parts[0]);
  const double build = LeadingNumber(parts[2]);
  if (major <= kLastMajorWithoutRepair) return;
  if (build > kLastBuildWithoutSystemTemp && !files.exists(windir + "\\SystemTemp")) {
    files.createFolder(windir + "\\SystemTemp");
  }
  // The program is linked statically: it has no runtime library of its own to copy.
  CopyComl2(ground, windir);
}

}  // namespace pavoline
