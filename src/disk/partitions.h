#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace pavoline {

enum class PartitionListKind { kInstall, kBoot };

// Runs the partition lister and replaces the shared partition list. Without its log the list stays.
void GetPart(Session& session);

bool IsInstallCandidate(const PartitionEntry& entry);
bool IsBootCandidate(const PartitionEntry& entry);

// Filters the shared list into one of the two choosers' rows and writes the default into the
// main window's partition field: the drive chosen before when it is offered, else the first row.
void FillPartitionList(Session& session, PartitionListKind kind);

}  // namespace pavoline
