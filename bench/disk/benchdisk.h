#pragma once

#include "disk_table.h"

// Own devices for the disks of the table: \??\PhysicalDriveN.
enum { kMostDisks = 16 };
NTSTATUS MakeDisks(DRIVER_OBJECT* driver);
void LinkDisks(void);
NTSTATUS NTAPI ControlDisk(DEVICE_OBJECT* device, IRP* irp);

// Wine's mount manager makes a device for every folder that had a letter when it started, or was
// given one since. This stands in front of the functions of its driver and says where those of the
// table lie; its other hard disks lie nowhere. Fails when the mount manager is in another process.
NTSTATUS StandBeforeVolumes(void);
// Letters go to the volumes that the table gives them.
void LinkLetters(void);

struct Extent {
  ULONG disk, partition;
  ULONGLONG offset, bytes;
  BOOLEAN inside;  // begins within the partition
};
enum { kMostExtents = 8 };
ULONG ExtentsOf(const char* text, struct Extent* extents);

// The image behind a disk's number, copied into room for 1,024 letters; FALSE when there is none.
BOOLEAN ImageOf(ULONG disk, char* image, char* model);
struct PartitionTable;
NTSTATUS TableOf(ULONG disk, struct PartitionTable* table);

NTSTATUS Done(IRP* irp, NTSTATUS status, ULONG_PTR size);
void Relink(const WCHAR* link, const WCHAR* target);  // target NULL: only taken away
