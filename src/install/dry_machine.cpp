#include "install/dry_machine.h"

#include "platform/text.h"
#include "postinstall/boot_stores.h"

namespace pavoline {
namespace {

class EndedProgram : public StartedProgram {
 public:
  bool running() override { return false; }
  std::uint32_t id() override { return 0; }
  std::optional<std::uint32_t> exitCode() override { return 0; }
  void whenEnded(std::function<void()>) override {}
  void waitHandlingEvents(std::chrono::milliseconds) override {}
};

void ListPrinted(DryFiles& files, const AssumedWork& work, const std::string& line) {
  const auto sign = line.rfind('>');
  if (sign != std::string::npos) files.appears(line.substr(sign + 1), work.partitionList);
}

void VolumeEmptied(DryFiles& files, const AssumedWork& work, const std::string&) {
  files.wipe(work.plan.target.drive);
}

void SystemThere(DryFiles& files, const AssumedWork& work, const std::string&) {
  const std::string windows = work.plan.target.drive + "\\Windows";
  files.appears(windows);
  files.appears(windows + "\\System32\\kernel32.dll", "", work.version);
}

void StoresThere(DryFiles& files, const AssumedWork& work, const std::string&) {
  files.appears(BiosStore(work.plan.bootDrive));
  files.appears(UefiStore(work.plan.bootDrive));
}

struct Work {
  const char* program;
  void (*happens)(DryFiles& files, const AssumedWork& work, const std::string& line);
};
constexpr Work kWorks[] = {
    {"cxdir.exe", ListPrinted},         {"format.com", VolumeEmptied}, {"ghost.exe", SystemThere},
    {"wimlib-imagex.exe", SystemThere}, {"bcdboot.exe", StoresThere},
};

}  // namespace

std::unique_ptr<StartedProgram> DryProcesses::start(const StartRequest& request) {
  if (!request.program.empty() && !files_.exists(request.program)) return nullptr;
  const std::string script = files_.written(request.commandLine);
  if (script.empty()) {
    tell_({true, request.commandLine, request.recordedAs});
    assume(request.commandLine);
  }
  for (const std::string& line : Split(text_.fromConsole(script), "\r\n")) {
    if (line.empty()) continue;
    tell_({true, line, ""});
    assume(line);
  }
  return std::make_unique<EndedProgram>();
}

void DryProcesses::assume(const std::string& line) {
  const std::string lower = LowerAscii(line);
  for (const Work& work : kWorks) {
    if (Contains(lower, work.program)) work.happens(files_, work_, line);
  }
}

DryMachine::DryMachine(Platform& real, const std::string& tempFolder, AssumedWork work,
                       std::function<void(PlannedAct)> tell)
    : files_(real.files, tempFolder,
             [tell](const std::string& change) {
               tell({false, change, ""});
             }),
      processes_(files_, real.text, std::move(work), tell),
      drives_(real.drives),
      platform_{processes_, files_,       drives_,  real.profile, real.environment,
                real.text,  real.windows, taskbar_, dialogs_} {}

}  // namespace pavoline
