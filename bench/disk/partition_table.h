#pragma once

#include <ntddk.h>
// After ntddk.h, on which it leans.
#include <ntdddisk.h>

// The partition table of a disk image as Windows reports it: a GPT disk's used entries in table
// order, an MBR disk's four slots and four more for each link of the extended chain, and one
// without a number for a file system that needs no table.
struct PartitionTable {
  PARTITION_STYLE style;
  ULONGLONG bytes;  // of the whole disk
  ULONG signature;
  GUID diskId;
  ULONG count;
  PARTITION_INFORMATION_EX* entries;  // free it with ExFreePool
};

NTSTATUS OpenImage(const char* image, HANDLE* file);
NTSTATUS ReadPartitionTable(const char* image, struct PartitionTable* table);

// The entry of this number, counted from 1; NULL when there is none.
const PARTITION_INFORMATION_EX* PartitionOfNumber(const struct PartitionTable* table, ULONG number);
