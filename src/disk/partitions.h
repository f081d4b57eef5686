#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

enum class PartitionListKind { kInstall, kBoot };

// Runs the partition lister and replaces the shared partition list. False when no list, or an
// empty one, could be had in two tries; without its log the list stays.
bool GetPart(Session& session);

bool IsInstallCandidate(const PartitionEntry& entry);
bool IsBootCandidate(const PartitionEntry& entry);

// Filters the shared list into one of the two choosers' rows and writes the default into the
// main window's partition field: the drive chosen before when it is offered, else for the boot
// partition a row on the install partition's disk, else the first row. Rows on the disk that holds
// the running program come last.
void FillPartitionList(Session& session, PartitionListKind kind);

// Lists afresh and fills both choosers; the fields keep what was entered while its drive is there.
// False as GetPart.
bool RefreshPartitions(Session& session);

// The volume behind a drive letter by the shared list and by what the platform knows of it.
// Nothing when the list does not show the drive.
std::optional<TargetVolume> FindVolume(Session& session, const std::string& drive);

// The one boot candidate on the disk of the install partition, when it has no letter. Null when a
// candidate there has one, or there are several without.
const PartitionEntry* LetterlessBootEntry(const Findings& findings,
                                          const std::string& installDrive);

// One line on a listed volume for a person: label, size, file system, disk. Empty when not listed.
std::string DescribeVolume(const Session& session, const std::string& drive);

// The same below both partition fields; below an empty boot field what Start would use.
void ShowPartitionFacts(Session& session);

}  // namespace pavoline
