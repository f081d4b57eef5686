#pragma once

#include <string>

#include "disk/physical_disks.h"
#include "platform/environment.h"

// An empty disk gets the partitions that an installation needs, by a diskpart script. No step of it
// takes anything away: diskpart refuses to convert a table that has partitions, and makes
// partitions in free space only.
namespace pavoline {

enum class DiskLayout {
  kUefi,  // GPT: EFI system partition, reserved partition, Windows
  kBios,  // MBR: active system partition, Windows
};

struct DiskPreparation {
  PhysicalDisk disk;
  DiskLayout layout = DiskLayout::kUefi;
};

// What the machine was started by; where that is not known, what the disk's size asks for.
DiskLayout SuggestedLayout(Firmware firmware, std::uint64_t diskBytes);

// An MBR tells places up to 2 TB; more of a disk could not be used.
bool FitsLayout(std::uint64_t diskBytes, DiskLayout layout);

// The partitions with their sizes, in one line for a person.
std::string DescribePartitions(const Ground& ground, const DiskPreparation& preparation);

// The diskpart script, lines separated by CR LF; letters as "S". The scripts for a blank disk in
// the program's folder do the same, but erase the disk before.
std::string PrepareScript(const DiskPreparation& preparation, const std::string& bootLetter,
                          const std::string& windowsLetter);

// Looks at the disk again, and when it is the one that was chosen and still empty, runs the script.
// The partitions that the lister then shows tell whether it went well: they become boot and install
// partition. Tells the person the outcome.
void PrepareDisk(Session& session, const DiskPreparation& preparation);

}  // namespace pavoline
