#include "disk/disk_preparation.h"

#include <algorithm>

#include "disk/partitions.h"
#include "disk/virtual_disk.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/text.h"
#include "run/command_runner.h"
#include "session/drive_list.h"

namespace pavoline {
namespace {

constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20;
constexpr std::uint64_t kMbrLimit = std::uint64_t{2} << 40;
// In MB. An EFI system partition of this size also suits sectors of 4096 bytes.
constexpr std::uint64_t kEfiSize = 260, kReservedSize = 16, kSystemSize = 500;
constexpr std::uint64_t kUnusedEnds = 2;  // in front of the first partition, behind the last

constexpr int kLooks = 10;  // at the partitions, until their volumes have come
constexpr int kBetweenLooks = 1000;

std::string DiskText(const Ground& ground, int text, const PhysicalDisk& disk) {
  const std::string filled = ReplaceAll(More(ground, text), "%n%", std::to_string(disk.number));
  return ReplaceAll(filled, "%disk%", disk.model);
}

// The letter, or another one when it is taken; it is then taken itself. Empty when all are.
std::string TakeLetter(std::string& present, const std::string& wanted) {
  const std::string letter = Contains(present, wanted + ":") ? GetULetter(present) : wanted;
  present += letter + ":,";
  return letter;
}

bool IsStillEmpty(Session& session, const PhysicalDisk& disk) {
  const auto disks = ListEmptyDisks(session);
  return disks && std::ranges::find(*disks, disk) != disks->end();
}

struct PreparedPartitions {
  std::string boot, install;  // "S:"; empty: not there
  bool both() const { return !boot.empty() && !install.empty(); }
};

PreparedPartitions FindPrepared(const Findings& findings, const DiskPreparation& preparation) {
  const std::string style = preparation.layout == DiskLayout::kUefi ? "GPT" : "MBR";
  PreparedPartitions found;
  for (const PartitionEntry& entry : findings.partitions) {
    if (entry.diskNumber != static_cast<int>(preparation.disk.number) + 1) continue;
    if (entry.style != style || entry.drive.empty() || entry.fileSystem.empty()) continue;
    if (IsBootCandidate(entry)) {
      found.boot = entry.drive;
    } else if (IsInstallCandidate(entry)) {
      found.install = entry.drive;
    }
  }
  return found;
}

// A volume may come some time after diskpart has ended.
PreparedPartitions AwaitPartitions(Session& session, const DiskPreparation& preparation) {
  PreparedPartitions found;
  for (int look = 0; look < kLooks && !found.both(); ++look) {
    if (look > 0) session.platform.processes.handleEventsFor(kBetweenLooks);
    if (session.form.unloaded()) break;
    if (GetPart(session)) found = FindPrepared(session, preparation);
  }
  return found;
}

void Report(Ground& ground, const PhysicalDisk& disk, const PreparedPartitions& partitions) {
  Journal(ground, "disk " + std::to_string(disk.number) +
                      (partitions.both() ? ": prepared" : ": not prepared") + ", boot partition " +
                      partitions.boot + ", install partition " + partitions.install);
  if (!partitions.both()) {
    Message(ground, DiskText(ground, kMoreNotPrepared, disk), kErrorMessage,
            String(ground, kTextError));
    return;
  }
  std::string text = ReplaceAll(More(ground, kMorePrepared), "%bp%", partitions.boot);
  text = ReplaceAll(text, "%ip%", partitions.install);
  text = ReplaceAll(text, "%n%", std::to_string(disk.number));
  Message(ground, ReplaceAll(text, "%disk%", disk.model), kInformationMessage,
          String(ground, kTextInformation));
}

// The fields keep what they held, unless both partitions are there.
void FillFields(Session& session, const PreparedPartitions& partitions) {
  if (partitions.both()) {
    session.form.text[kInstallPartition].setText(partitions.install);
    session.form.text[kBootPartition].setText(partitions.boot);
  }
  FillPartitionList(session, PartitionListKind::kInstall);
  FillPartitionList(session, PartitionListKind::kBoot);
  ShowPartitionFacts(session);
}

}  // namespace

DiskLayout SuggestedLayout(Firmware firmware, std::uint64_t diskBytes) {
  if (firmware == Firmware::kUnknown) {
    return FitsLayout(diskBytes, DiskLayout::kBios) ? DiskLayout::kBios : DiskLayout::kUefi;
  }
  return firmware == Firmware::kUefi ? DiskLayout::kUefi : DiskLayout::kBios;
}

bool FitsLayout(std::uint64_t diskBytes, DiskLayout layout) {
  return layout == DiskLayout::kUefi || diskBytes <= kMbrLimit;
}

std::string DescribePartitions(const Ground& ground, const DiskPreparation& preparation) {
  const bool uefi = preparation.layout == DiskLayout::kUefi;
  const std::uint64_t others = (uefi ? kEfiSize + kReservedSize : kSystemSize) + kUnusedEnds;
  std::string text = More(ground, uefi ? kMoreUefiPartitions : kMoreBiosPartitions);
  text = ReplaceAll(text, "%efi%", ReadableSize(kEfiSize * kMegabyte));
  text = ReplaceAll(text, "%msr%", ReadableSize(kReservedSize * kMegabyte));
  text = ReplaceAll(text, "%sys%", ReadableSize(kSystemSize * kMegabyte));
  return ReplaceAll(text, "%win%", ReadableSize(preparation.disk.bytes - others * kMegabyte));
}

std::string PrepareScript(const DiskPreparation& preparation, const std::string& bootLetter,
                          const std::string& windowsLetter) {
  const bool uefi = preparation.layout == DiskLayout::kUefi;
  std::string script = "select disk " + std::to_string(preparation.disk.number);
  const auto add = [&](const std::string& line) { script += "\r\n" + line; };
  // An empty table of the same kind would make diskpart end the script.
  if (preparation.disk.style != (uefi ? "GPT" : "MBR")) add(uefi ? "convert gpt" : "convert mbr");
  add(uefi ? "create partition efi size=" + std::to_string(kEfiSize)
           : "create partition primary size=" + std::to_string(kSystemSize));
  add(std::string("format quick fs=") + (uefi ? "fat32" : "ntfs") + " label=\"System\"");
  if (!uefi) add("active");
  add("assign letter=" + bootLetter);
  if (uefi) add("create partition msr size=" + std::to_string(kReservedSize));
  add("create partition primary");
  add("format quick fs=ntfs label=\"Windows\"");
  add("assign letter=" + windowsLetter);
  add("exit");
  return script;
}

void PrepareDisk(Session& session, const DiskPreparation& preparation) {
  const PhysicalDisk& disk = preparation.disk;
  std::string present = DriveList(session, 0);
  const std::string boot = TakeLetter(present, "S"), windows = TakeLetter(present, "W");
  if (boot.empty() || windows.empty()) {
    Message(session, String(session, kTextNoLetter), kErrorMessage, String(session, kTextError));
    return;
  }
  if (!FitsLayout(disk.bytes, preparation.layout)) return;
  // The last look before something is written.
  const bool empty = IsStillEmpty(session, disk);
  if (session.form.unloaded()) return;
  if (!empty) {
    Message(session, DiskText(session, kMoreDiskChanged, disk), kErrorMessage,
            String(session, kTextError));
    return;
  }
  const std::string status = session.form.status.text();
  session.form.status.setText(DiskText(session, kMorePreparing, disk));
  RunDiskpart(session, PrepareScript(preparation, boot, windows), "prepare");
  const PreparedPartitions partitions = AwaitPartitions(session, preparation);
  if (session.form.unloaded()) return;
  session.form.status.setText(status);
  FillFields(session, partitions);
  Report(session, disk, partitions);
}

}  // namespace pavoline
