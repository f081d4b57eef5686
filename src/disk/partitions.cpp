#include "disk/partitions.h"

#include <algorithm>

#include "disk/lister.h"
#include "form/text_numbers.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {
namespace {

constexpr double kGhostBuildWithoutProgram = 10531;
// Later builds of the Ghost program number disks and partitions another way.
constexpr double kLastBuildWithOldAddresses = 10517;
constexpr std::size_t kShortestAddress = 3;  // "1:1"

constexpr std::size_t kInstallFields = 7;  // fields that a row or a filter reads
constexpr std::size_t kBootFields = 9;

double GhostBuild(Ground& ground) {
  const auto ghost = FindGhostProgram(ground.platform.files, ground.paths);
  return ghost && ghost->build ? *ghost->build : kGhostBuildWithoutProgram;
}

// The line with its address, and whatever else reads like it, replaced by the one that follows
// from the drive. The lister and the system count alike, so that this changes nothing as long as
// both are right; it holds the numbers that newer Ghost builds take to what the system says at this
// moment. A drive that lies on no partition keeps the lister's address.
std::string Readdressed(Ground& ground, const std::string& line) {
  const PartitionEntry entry{line};
  const std::string address = entry.address;
  if (address.size() < kShortestAddress) return line;
  const auto position = ground.platform.drives.position(entry.drive);
  if (!position) return line;
  return ReplaceAll(line, address,
                    std::to_string(position->disk) + ":" + std::to_string(position->partition));
}

std::vector<PartitionEntry> Entries(Ground& ground, const std::vector<std::string>& lines) {
  const bool readdress = GhostBuild(ground) > kLastBuildWithOldAddresses;
  std::vector<PartitionEntry> entries;
  for (const std::string& line : lines) {
    entries.emplace_back(readdress ? Readdressed(ground, line) : line);
  }
  return entries;
}

bool SameLetter(const std::string& a, const std::string& b) {
  return !a.empty() && !b.empty() && LowerAscii(a.substr(0, 1)) == LowerAscii(b.substr(0, 1));
}

// The drive chosen before when it is offered; else the first row on the wanted disk, 0 being none;
// else the first row.
std::string DefaultDrive(const std::vector<PartitionEntry>& rows, const std::string& before,
                         int wantedDisk) {
  for (const PartitionEntry& row : rows) {
    if (SameLetter(row.drive, before)) return row.drive;
  }
  for (const PartitionEntry& row : rows) {
    if (wantedDisk != 0 && row.diskNumber == wantedDisk) return row.drive;
  }
  return rows.empty() ? std::string() : rows.front().drive;
}

// The disk that the program runs from, which is the technician's and not to be installed to.
int ProgramDisk(Ground& ground) {
  const auto position = ground.platform.drives.position(ground.paths.appDir.substr(0, 2));
  return position ? static_cast<int>(position->disk) : 0;
}

bool ListPartitions(Session& session) {
  const auto lines = RunLister(session, "-vaskor", "GetPart");
  if (Interrupted(session)) return false;
  if (!lines) {
    Journal(session, "partitions: no list");
    return false;
  }
  session.partitions = Entries(session, *lines);
  Journal(session, "partitions listed: " + std::to_string(session.partitions.size()));
  return !session.partitions.empty();
}

std::vector<PartitionEntry> Rows(Session& session, bool install) {
  std::vector<PartitionEntry> rows;
  for (const PartitionEntry& entry : session.partitions) {
    if (entry.drive.empty()) continue;  // without a letter it can't be chosen
    if (!(install ? IsInstallCandidate(entry) : IsBootCandidate(entry))) continue;
    const bool removable = session.platform.drives.type(entry.drive) == kDriveRemovable;
    if (removable && !session.options.usbPartition) continue;
    rows.push_back(entry);
  }
  const int ours = ProgramDisk(session);
  std::stable_partition(rows.begin(), rows.end(), [&](const PartitionEntry& row) {
    return ours == 0 || row.diskNumber != ours;
  });
  return rows;
}

const PartitionEntry* EntryOf(const Findings& findings, const std::string& drive) {
  for (const PartitionEntry& entry : findings.partitions) {
    // By its drive, not by any text in it: a label may well hold another drive's name.
    if (!entry.drive.empty() && LowerAscii(entry.drive) == LowerAscii(drive)) return &entry;
  }
  return nullptr;
}

std::string Describe(const Ground& ground, const PartitionEntry& entry) {
  const std::string label = entry.label.empty() ? More(ground, kMoreNoLabel) : entry.label;
  std::string text = More(ground, kMoreVolumeFacts);
  text = ReplaceAll(text, "%size%", entry.size);
  text = ReplaceAll(text, "%fs%", entry.fileSystem);
  text = ReplaceAll(text, "%disk%", entry.disk);
  return ReplaceAll(text, "%label%", label);  // last: a label may hold anything
}

}  // namespace

bool GetPart(Session& session) {
  // The interpreter may leave a redirected log empty: an empty list is believed the second time.
  if (ListPartitions(session)) return true;
  return !Interrupted(session) && ListPartitions(session);
}

// Only sizes given in GB count, and only above 1: smaller partitions hold no system. The lister
// gives every size from 1 GB on in GB.
bool IsInstallCandidate(const PartitionEntry& entry) {
  if (entry.fieldCount < kInstallFields) return false;
  return Contains(entry.size, "GB") && entry.kind != "EFI" &&
         LeadingNumber(ReplaceAll(entry.size, "GB", "")) > 1;
}

bool IsBootCandidate(const PartitionEntry& entry) {
  if (entry.fieldCount < kBootFields) return false;
  return (entry.style == "GPT" && entry.kind == "EFI") ||
         (entry.style == "MBR" && entry.kind == "Primary" && entry.active);
}

void FillPartitionList(Session& session, PartitionListKind kind) {
  const bool install = kind == PartitionListKind::kInstall;
  std::vector<PartitionEntry>& rows = install ? session.installRows : session.bootRows;
  rows = Rows(session, install);
  TextBox& field = session.form.text[install ? kInstallPartition : kBootPartition];
  const PartitionEntry* target =
      install ? nullptr : EntryOf(session, session.form.text[kInstallPartition].text());
  field.setText(DefaultDrive(rows, field.text(), target ? target->diskNumber : 0));
}

bool RefreshPartitions(Session& session) {
  Form1& form = session.form;
  const bool fresh = GetPart(session);
  if (form.unloaded()) return false;
  session.installRows = Rows(session, true);
  session.bootRows = Rows(session, false);
  // An entered partition stays as long as its drive is there.
  for (const auto kind : {PartitionListKind::kInstall, PartitionListKind::kBoot}) {
    const TextBox& field =
        form.text[kind == PartitionListKind::kInstall ? kInstallPartition : kBootPartition];
    const bool there = !field.text().empty() && session.platform.files.exists(field.text());
    // An empty boot field may stand for the partition without a letter.
    const bool letterless =
        &field == &form.text[kBootPartition] && field.text().empty() &&
        LetterlessBootEntry(session, form.text[kInstallPartition].text()) != nullptr;
    if (!there && !letterless) FillPartitionList(session, kind);
  }
  ShowPartitionFacts(session);
  return fresh;
}

std::optional<TargetVolume> FindVolume(Session& session, const std::string& drive) {
  const PartitionEntry* entry = EntryOf(session, drive);
  if (entry == nullptr || entry->address.empty()) return std::nullopt;
  return TargetVolume{drive,
                      entry->address,
                      entry->label,
                      entry->size,
                      entry->fileSystem,
                      entry->disk,
                      session.platform.drives.facts(drive)};
}

const PartitionEntry* LetterlessBootEntry(const Findings& findings,
                                          const std::string& installDrive) {
  const PartitionEntry* target = EntryOf(findings, installDrive);
  if (target == nullptr || target->diskNumber == 0) return nullptr;
  const PartitionEntry* found = nullptr;
  for (const PartitionEntry& entry : findings.partitions) {
    if (!IsBootCandidate(entry) || entry.diskNumber != target->diskNumber) continue;
    if (found != nullptr || !entry.drive.empty()) return nullptr;
    found = &entry;
  }
  return found;
}

std::string DescribeVolume(const Session& session, const std::string& drive) {
  const PartitionEntry* entry = EntryOf(session, drive);
  return entry == nullptr ? std::string() : Describe(session, *entry);
}

void ShowPartitionFacts(Session& session) {
  Form1& form = session.form;
  for (const int index : {kBootPartition, kInstallPartition}) {
    form.facts[index].setText(DescribeVolume(session, form.text[index].text()));
  }
  if (!form.text[kBootPartition].text().empty()) return;
  const PartitionEntry* boot = LetterlessBootEntry(session, form.text[kInstallPartition].text());
  if (boot == nullptr) return;
  form.facts[kBootPartition].setText(More(session, kMoreLetterless) + " " +
                                     Describe(session, *boot));
}

}  // namespace pavoline
