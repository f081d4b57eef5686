#include "disk/partitions.h"

#include "engine/command_runner.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_services.h"

namespace pavoline {
namespace {

constexpr char kGhostVersionWithoutProgram[] = "12.0.0.10531";
// Later builds of the Ghost program number disks and partitions another way.
constexpr double kLastBuildWithOldAddresses = 10517;
constexpr std::size_t kShortestAddress = 3;  // "1:1"

constexpr std::size_t kInstallFields = 7;  // fields that a row or a filter reads
constexpr std::size_t kBootFields = 9;

double GhostBuild(Session& session) {
  const std::string program =
      session.paths.binDir + "\\Ghost\\" + session.paths.imageToolArch + "\\ghost.exe";
  auto numbers = Split(session.platform.files.fileVersion(program), ".");
  if (numbers.size() < 4) numbers = Split(kGhostVersionWithoutProgram, ".");
  return LeadingNumber(numbers[3]);
}

// The line with its address, and whatever else reads like it, replaced by the one that follows
// from the drive. A drive that lies on no partition keeps the lister's address.
std::string Readdressed(Session& session, const std::string& line) {
  const PartitionEntry entry{line};
  const std::string address = entry.address();
  if (address.size() < kShortestAddress) return line;
  const auto position = session.platform.drives.position(entry.drive());
  if (!position) return line;
  return ReplaceAll(line, address,
                    std::to_string(position->disk) + ":" + std::to_string(position->partition));
}

std::vector<PartitionEntry> ReadLines(Session& session, const std::string& log) {
  const bool readdress = GhostBuild(session) > kLastBuildWithOldAddresses;
  std::vector<PartitionEntry> entries;
  for (std::string& line : Split(ReplaceAll(log, "\r", ""), "\n")) {
    if (line.empty()) continue;
    entries.push_back({readdress ? Readdressed(session, line) : std::move(line)});
  }
  return entries;
}

bool SameLetter(const std::string& a, const std::string& b) {
  return !a.empty() && !b.empty() && LowerAscii(a.substr(0, 1)) == LowerAscii(b.substr(0, 1));
}

// The field's content wins over the letter kept in its tag.
const std::string& ChosenBefore(const TextBox& field) {
  return field.text().empty() ? field.tag() : field.text();
}

std::string DefaultDrive(const std::vector<PartitionRow>& rows, const std::string& before) {
  for (const PartitionRow& row : rows) {
    if (SameLetter(row.drive(), before)) return row.drive();
  }
  return rows.empty() ? std::string() : rows.front().drive();
}

}  // namespace

void GetPart(Session& session) {
  RunBatch(session,
           BatchPath(session, session.paths.appDir) + "\\Bin\\CxDir\\" +
               session.paths.imageToolArch + "\\CxDir.exe -vaskor",
           "GetPart");
  if (session.form.unloaded()) return;
  const std::string path = TempFile(session, "GetPart.log");
  const auto log = session.platform.files.read(path);
  if (!log) {
    Journal(session, "partitions: no list");
    return;
  }
  session.partitions = ReadLines(session, session.platform.text.fromAnsi(*log));
  session.platform.files.remove(path);
  Journal(session, "partitions listed: " + std::to_string(session.partitions.size()));
}

// Only sizes given in GB count, and only above 1: smaller partitions hold no system, and one of
// 1024 GB or more is taken for a data disk.
bool IsInstallCandidate(const PartitionEntry& entry) {
  if (entry.fieldCount() < kInstallFields) return false;
  return Contains(entry.size(), "GB") && entry.kind() != "EFI" &&
         LeadingNumber(ReplaceAll(entry.size(), "GB", "")) > 1;
}

bool IsBootCandidate(const PartitionEntry& entry) {
  if (entry.fieldCount() < kBootFields) return false;
  return (entry.style() == "GPT" && entry.kind() == "EFI") ||
         (entry.style() == "MBR" && entry.kind() == "Primary" && entry.active());
}

void FillPartitionList(Session& session, PartitionListKind kind) {
  const bool install = kind == PartitionListKind::kInstall;
  std::vector<PartitionRow>& rows = install ? session.installRows : session.bootRows;
  rows.clear();
  for (const PartitionEntry& entry : session.partitions) {
    if (entry.drive().empty()) continue;  // without a letter it can't be chosen
    if (!(install ? IsInstallCandidate(entry) : IsBootCandidate(entry))) continue;
    const bool removable = session.platform.drives.type(entry.drive()) == kDriveRemovable;
    if (removable && !session.options.usbPartition) continue;
    rows.push_back(
        {{entry.drive(), entry.label(), entry.disk(), entry.fileSystem(), entry.size()}});
  }
  TextBox& field = session.form.text[install ? kInstallPartition : kBootPartition];
  field.setText(DefaultDrive(rows, ChosenBefore(field)));
}

}  // namespace pavoline
