#include "postinstall/boot_configuration.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "config/locales.h"
#include "form/text_numbers.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "postinstall/boot_stores.h"
#include "run/command_runner.h"
#include "run/command_words.h"

namespace pavoline {
namespace {

// The running environment's drive, never a system to be started from disk.
constexpr char kEnvironmentDrive[] = "X:";

constexpr float kFirstNewLoader = 5.3f;
constexpr float kLastOldLoader = 5.2f;

// The program's own copy of a tool, else the running system's; empty when neither is there.
std::string BootTool(Ground& ground, Tool tool) {
  Files& files = ground.platform.files;
  const std::string own = ToolPath(ground.paths, tool);
  if (files.exists(own)) return own;
  const std::string system =
      ground.platform.environment.variable("windir") + "\\System32\\" + ToolName(tool);
  return files.exists(system) ? system : std::string();
}

// The edition's language; without one, that of the program, which later steps then see as the
// edition's.
std::string BootLanguage(Session& session, const BootJob& job) {
  if (!job.language.empty()) return job.language;
  session.fallbackLanguage = LocaleOf(session.language).bootTag;
  return session.fallbackLanguage;
}

bool HoldsWindows(Ground& ground, const std::string& drive) {
  return ground.platform.files.exists(drive + "\\Windows");
}

// Drives of the partition list that hold a system, from the last row to the first.
std::vector<std::string> WindowsDrives(Session& session) {
  std::vector<std::string> drives;
  const auto& partitions = session.partitions;
  std::for_each(partitions.rbegin(), partitions.rend(), [&](const PartitionEntry& entry) {
    const std::string drive = entry.drive;
    if (drive.empty() || drive == kEnvironmentDrive) return;
    if (HoldsWindows(session, drive)) drives.push_back(drive);
  });
  return drives;
}

// No firmware is asked for: the disk shall start under either. True when the files of one were
// written; not every system has those of both.
bool WriteBootFiles(Workplace& workplace, const BootJob& job, const std::string& bcdboot,
                    const std::string& systemDrive, const std::string& language) {
  bool written = false;
  for (const char* firmware : {"bios", "uefi"}) {
    if (Interrupted(workplace)) return written;
    const ToolEnd end = ShellAndWait(workplace,
                                     CommandWord(bcdboot) + " " + systemDrive + "\\Windows /s " +
                                         job.bootDrive + " /f " + firmware + " /l " + language,
                                     ShowMode::kHidden);
    const std::string store =
        firmware == std::string_view("bios") ? BiosStore(job.bootDrive) : UefiStore(job.bootDrive);
    written = written || (end.succeeded() && workplace.platform.files.exists(store));
  }
  return written;
}

// For every system on every partition; the first row's is written last and thus leads. The stores
// are made anew, not merged.
bool RebuildBootFiles(Workplace& workplace, const BootJob& job, const std::string& bcdboot,
                      const std::vector<std::string>& systems, const std::string& language) {
  BootStores stores(workplace, job.bootDrive);
  bool written = false;
  for (const std::string& drive : systems) {
    if (WriteBootFiles(workplace, job, bcdboot, drive, language)) written = true;
  }
  stores.settle();
  return written;
}

// The first version on any partition that needs the newer loader; failing that the last one read.
float VersionOnAnyPartition(Session& session, float version) {
  for (const std::string& drive : WindowsDrives(session)) {
    if (version >= kFirstNewLoader) break;
    const auto parts =
        Split(session.platform.files.fileVersion(drive + "\\Windows\\system32\\kernel32.dll"), ".");
    if (parts.size() < 2) continue;
    version = static_cast<float>(LeadingNumber(parts[0] + "." + parts[1]));
  }
  return version;
}

void WriteBootSector(Workplace& workplace, const std::string& bootDrive, float version) {
  const std::string bootsect = BootTool(workplace, Tool::kBootsect);
  workplace.form.status.setText(String(workplace, kTextBootSector));
  if (bootsect.empty()) {
    Journal(workplace, "no boot sector: bootsect.exe is missing");
    return;
  }
  const char* loader = version <= kLastOldLoader ? " /nt52 " : " /nt60 ";
  ShellAndWait(workplace, CommandWord(bootsect) + loader + bootDrive + " /mbr", ShowMode::kHidden);
}

bool WriteForJob(Session& session, const BootJob& job) {
  const std::string bcdboot = BootTool(session, Tool::kBcdboot);
  const std::string language = BootLanguage(session, job);
  const std::vector<std::string> systems =
      job.everyWindows ? WindowsDrives(session) : std::vector<std::string>{job.systemDrive};
  if (bcdboot.empty()) Journal(session, "no boot files: bcdboot.exe is missing");
  // Boot stores are taken away only when something will take their place.
  if (bcdboot.empty() || systems.empty()) return false;
  if (job.everyWindows) return RebuildBootFiles(session, job, bcdboot, systems, language);
  return HoldsWindows(session, job.systemDrive) &&
         WriteBootFiles(session, job, bcdboot, job.systemDrive, language);
}

}  // namespace

bool AnythingToRepair(Session& session) {
  return !BootTool(session, Tool::kBcdboot).empty() && !WindowsDrives(session).empty();
}

bool BootToolsPresent(Ground& ground) {
  return !BootTool(ground, Tool::kBcdboot).empty() && !BootTool(ground, Tool::kBootsect).empty();
}

bool CallBootMbr(Session& session, const BootJob& job, float version) {
  session.form.status.setText(String(session, kTextBootFiles));
  Journal(session, "boot files on " + job.bootDrive);
  const bool written = WriteForJob(session, job);
  if (Interrupted(session)) return written;
  WriteBootSector(session, job.bootDrive,
                  version < kFirstNewLoader ? VersionOnAnyPartition(session, version) : version);
  return written;
}

}  // namespace pavoline
