#include "postinstall/boot_configuration.h"

#include <algorithm>
#include <string>
#include <vector>

#include "engine/command_runner.h"
#include "form/text_numbers.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {
namespace {

// The running environment's drive, never a system to be started from disk.
constexpr char kEnvironmentDrive[] = "X:";

constexpr float kFirstNewLoader = 5.3f;
constexpr float kLastOldLoader = 5.2f;

std::string Tool(const Session& session, const std::string& name) {
  return CommandWord(session.paths.appDir + "\\Bin\\Boot\\" + session.paths.imageToolArch + "\\" +
                     name);
}

const char* LocaleName(unsigned locale) {
  switch (locale) {
    case 2052:
      return "zh-CN";
    case 1028:
      return "zh-TW";
    case 3076:
      return "zh-HK";
    case 1041:
      return "ja-JP";
    case 1042:
      return "ko-KR";
    default:
      return "en-US";
  }
}

// The edition's language; without one, that of the running thread, which later steps then see as
// the edition's.
std::string BootLanguage(Session& session) {
  if (EditionLanguage(session).empty()) {
    session.fallbackLanguage = LocaleName(session.platform.environment.threadLocale());
  }
  return EditionLanguage(session);
}

bool HoldsWindows(Session& session, const std::string& drive) {
  return session.platform.files.exists(drive + "\\Windows");
}

// Drives of the partition list that hold a system, from the last row to the first.
std::vector<std::string> WindowsDrives(Session& session) {
  std::vector<std::string> drives;
  const auto& partitions = session.partitions;
  std::for_each(partitions.rbegin(), partitions.rend(), [&](const PartitionEntry& entry) {
    const std::string drive = entry.drive();
    if (drive.empty() || drive == kEnvironmentDrive) return;
    if (HoldsWindows(session, drive)) drives.push_back(drive);
  });
  return drives;
}

// No firmware is asked for: the disk shall start under either.
void WriteBootFiles(Session& session, const std::string& drive, const std::string& language) {
  const std::string& boot = session.form.text[kBootPartition].text();
  for (const char* firmware : {"bios", "uefi"}) {
    if (session.form.unloaded()) return;
    ShellAndWait(session,
                 Tool(session, "bcdboot.exe") + " " + drive + "\\Windows /s " + boot + " /f " +
                     firmware + " /l " + language,
                 ShowMode::kHidden);
  }
}

// The stores are made anew, not merged.
void DeleteBootStores(Session& session) {
  const std::string& boot = session.form.text[kBootPartition].text();
  for (const char* store : {"\\boot\\bcd", "\\EFI\\Microsoft\\Boot\\bcd"}) {
    const std::string path = boot + store;
    if (session.platform.files.exists(path)) DeleteTree(session, path, kDeleteQuietly);
  }
}

// For every system on every partition; the first row's is written last and thus leads.
void RepairBootFiles(Session& session, const std::string& language) {
  DeleteBootStores(session);
  for (const std::string& drive : WindowsDrives(session)) WriteBootFiles(session, drive, language);
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

void WriteBootSector(Session& session, float version) {
  const char* loader = version <= kLastOldLoader ? " /nt52 " : " /nt60 ";
  session.form.status.setText(String(session, kTextBootSector));
  ShellAndWait(
      session,
      Tool(session, "bootsect.exe") + loader + session.form.text[kBootPartition].text() + " /mbr",
      ShowMode::kHidden);
}

}  // namespace

void CallBootMbr(Session& session, float version) {
  const Form1& form = session.form;
  session.form.status.setText(String(session, kTextBootFiles));
  Journal(session, "boot files on " + form.text[kBootPartition].text());
  const std::string language = BootLanguage(session);
  const std::string& target = form.text[kInstallPartition].text();
  if (form.check[kRepairBoot].ticked() || session.bootRepairRequested) {
    RepairBootFiles(session, language);
  } else if (HoldsWindows(session, target)) {
    WriteBootFiles(session, target, language);
  }
  if (form.unloaded()) return;
  WriteBootSector(session,
                  version < kFirstNewLoader ? VersionOnAnyPartition(session, version) : version);
}

}  // namespace pavoline
