#pragma once

#include "partition_table.h"

// Own devices for the disks of the table: \??\PhysicalDriveN.
enum { kMostDisks = 16 };
NTSTATUS MakeDisks(DRIVER_OBJECT* driver);
void LinkDisks(void);
NTSTATUS NTAPI ControlDisk(DEVICE_OBJECT* device, IRP* irp);
NTSTATUS NTAPI ReadDisk(DEVICE_OBJECT* device, IRP* irp);

// Wine's mount manager makes a device for every folder that had a letter when it started, or was
// given one since. This stands in front of the functions of its driver and says where those of the
// table lie; its other hard disks lie nowhere. Fails when the mount manager is in another process.
NTSTATUS StandBeforeVolumes(void);
// Letters go to the volumes that the table gives them.
void LinkLetters(void);

// The table of a disk by its number; an error where there is no disk or no medium.
NTSTATUS TableOfDisk(ULONG disk, struct PartitionTable* table);

NTSTATUS Done(IRP* irp, NTSTATUS status, ULONG_PTR size);
void Relink(const WCHAR* link, const WCHAR* target);  // target NULL: only taken away
