#pragma once

#include "disk/partitions.h"
#include "session/session.h"

// The modal windows beside the main one. Each returns when it has been closed.
namespace pavoline {

// One of the two lists of partitions; a choice goes into the main window's partition field.
void ShowPartitionChooser(Session& session, PartitionListKind kind);

// User name, computer name and workgroup for the answer file. Every way of closing stores.
void ShowComputerNameDialog(Session& session);

// The images found by the search; a choice becomes the source.
void ShowImageList(Session& session);

// Attach, detach and create virtual disks.
void ShowVirtualDiskWindow(Session& session);

// Gives an empty disk the partitions of an installation: lists such disks, asks, has it done.
void PrepareEmptyDisk(Session& session);

void ShowAbout(Session& session);

}  // namespace pavoline
