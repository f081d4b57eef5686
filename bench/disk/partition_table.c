#include "partition_table.h"

#include "disk_table.h"

enum {
  kSector = 512,
  kSlots = 4,
  kFirstSlot = 446,
  kSlotSize = 16,
  kLargest = 4096,  // entries of a table
  kLongestChain = kLargest / kSlots - 1,
  kEmpty = 0x00,
  kExtended = 0x05,
  kExtendedLba = 0x0F,
  kProtective = 0xEE
};

static ULONG Little32(const UCHAR* at) {
  return (ULONG)at[0] | (ULONG)at[1] << 8 | (ULONG)at[2] << 16 | (ULONG)at[3] << 24;
}

static ULONGLONG Little64(const UCHAR* at) {
  return Little32(at) | (ULONGLONG)Little32(at + 4) << 32;
}

static BOOLEAN IsLink(UCHAR type) { return type == kExtended || type == kExtendedLba; }

static BOOLEAN IsMarked(const UCHAR* sector) { return sector[510] == 0x55 && sector[511] == 0xAA; }

// Of a file system that begins with the disk.
static BOOLEAN IsBootSector(const UCHAR* sector) {
  return sector[0] == 0xEB && (RtlCompareMemory(sector + 3, "NTFS    ", 8) == 8 ||
                               RtlCompareMemory(sector + 82, "FAT32   ", 8) == 8);
}

static void AddWholeDisk(struct PartitionTable* table) {
  PARTITION_INFORMATION_EX* entry = &table->entries[table->count++];
  table->style = PARTITION_STYLE_MBR;
  entry->PartitionStyle = PARTITION_STYLE_MBR;
  entry->Mbr.PartitionType = 7;
  entry->PartitionLength.QuadPart = (LONGLONG)table->bytes;
}

static void AddSlot(struct PartitionTable* table, const UCHAR* slot, ULONGLONG base,
                    ULONG* number) {
  PARTITION_INFORMATION_EX* entry = &table->entries[table->count++];
  const UCHAR type = slot[4];
  entry->PartitionStyle = PARTITION_STYLE_MBR;
  entry->Mbr.PartitionType = type;
  if (type == kEmpty) return;
  entry->StartingOffset.QuadPart = (LONGLONG)((base + Little32(slot + 8)) * kSector);
  entry->PartitionLength.QuadPart = (LONGLONG)((ULONGLONG)Little32(slot + 12) * kSector);
  entry->Mbr.BootIndicator = slot[0] == 0x80;
  entry->Mbr.RecognizedPartition = !IsLink(type);
  entry->Mbr.HiddenSectors = Little32(slot + 8);
  if (!IsLink(type)) entry->PartitionNumber = ++*number;
}

// Adds the four slots of a sector; the place of the link to the next one, 0 when there is none.
static ULONGLONG AddSlots(struct PartitionTable* table, const UCHAR* sector,
                          ULONGLONG partitionBase, ULONGLONG linkBase, ULONG* number) {
  ULONGLONG next = 0;
  for (int i = 0; i < kSlots; ++i) {
    const UCHAR* slot = sector + kFirstSlot + i * kSlotSize;
    const BOOLEAN link = IsLink(slot[4]);
    if (link && !next) next = linkBase + Little32(slot + 8);
    AddSlot(table, slot, link ? linkBase : partitionBase, number);
  }
  return next;
}

static void ReadMbr(HANDLE image, UCHAR* sector, struct PartitionTable* table) {
  ULONG number = 0;
  table->style = PARTITION_STYLE_MBR;
  table->signature = Little32(sector + 440);
  const ULONGLONG extended = AddSlots(table, sector, 0, 0, &number);
  ULONGLONG next = extended;
  for (int link = 0; next && link < kLongestChain; ++link) {
    if (ReadAt(image, next * kSector, sector, kSector) || !IsMarked(sector)) return;
    next = AddSlots(table, sector, next, extended, &number);
  }
}

static void AddGptEntry(struct PartitionTable* table, const UCHAR* from) {
  static const GUID unused;
  PARTITION_INFORMATION_EX* entry = &table->entries[table->count];
  if (RtlCompareMemory(from, &unused, sizeof unused) == sizeof unused) return;
  entry->PartitionStyle = PARTITION_STYLE_GPT;
  entry->PartitionNumber = ++table->count;
  entry->StartingOffset.QuadPart = (LONGLONG)(Little64(from + 32) * kSector);
  entry->PartitionLength.QuadPart =
      (LONGLONG)((Little64(from + 40) - Little64(from + 32) + 1) * kSector);
  RtlCopyMemory(&entry->Gpt.PartitionType, from, sizeof(GUID));
  RtlCopyMemory(&entry->Gpt.PartitionId, from + 16, sizeof(GUID));
  entry->Gpt.Attributes = Little64(from + 48);
  RtlCopyMemory(entry->Gpt.Name, from + 56, sizeof entry->Gpt.Name);
}

static NTSTATUS ReadGpt(HANDLE image, struct PartitionTable* table) {
  UCHAR header[kSector], entry[128];
  const NTSTATUS status = ReadAt(image, kSector, header, kSector);
  if (status) return status;
  if (RtlCompareMemory(header, "EFI PART", 8) != 8) return STATUS_DISK_CORRUPT_ERROR;
  table->style = PARTITION_STYLE_GPT;
  RtlCopyMemory(&table->diskId, header + 56, sizeof(GUID));
  const ULONGLONG first = Little64(header + 72) * kSector;
  const ULONG count = Little32(header + 80), size = Little32(header + 84);
  for (ULONG i = 0; i < count && i < kLargest; ++i) {
    if (ReadAt(image, first + (ULONGLONG)i * size, entry, sizeof entry)) break;
    AddGptEntry(table, entry);
  }
  return STATUS_SUCCESS;
}

static NTSTATUS ReadOpened(HANDLE image, struct PartitionTable* table) {
  UCHAR sector[kSector];
  IO_STATUS_BLOCK io;
  FILE_STANDARD_INFORMATION size;
  NTSTATUS status = ZwQueryInformationFile(image, &io, &size, sizeof size, FileStandardInformation);
  if (status) return status;
  table->bytes = (ULONGLONG)size.EndOfFile.QuadPart;
  status = ReadAt(image, 0, sector, kSector);
  if (status) return status;
  table->style = PARTITION_STYLE_RAW;
  if (!IsMarked(sector)) return STATUS_SUCCESS;
  if (IsBootSector(sector)) {
    AddWholeDisk(table);
    return STATUS_SUCCESS;
  }
  if (sector[kFirstSlot + 4] == kProtective) return ReadGpt(image, table);
  ReadMbr(image, sector, table);
  return STATUS_SUCCESS;
}

NTSTATUS OpenImage(const char* image, HANDLE* file) {
  char name[1024] = "unix";
  ULONG length = 4;
  if (Same(image, "-")) return STATUS_NO_MEDIA_IN_DEVICE;
  while (*image && length < sizeof name - 1) name[length++] = *image++;
  return OpenFile(name, file);
}

NTSTATUS ReadPartitionTable(const char* image, struct PartitionTable* table) {
  HANDLE file;
  const ULONG room = kLargest * sizeof *table->entries;
  NTSTATUS status = OpenImage(image, &file);
  if (status) return status;
  RtlZeroMemory(table, sizeof *table);
  table->entries = ExAllocatePool(NonPagedPool, room);
  if (table->entries) {
    RtlZeroMemory(table->entries, room);
    status = ReadOpened(file, table);
    if (status) ExFreePool(table->entries);
  } else {
    status = STATUS_NO_MEMORY;
  }
  ZwClose(file);
  return status;
}

const PARTITION_INFORMATION_EX* PartitionOfNumber(const struct PartitionTable* table,
                                                  ULONG number) {
  for (ULONG i = 0; number > 0 && i < table->count; ++i) {
    if (table->entries[i].PartitionNumber == number) return &table->entries[i];
  }
  return NULL;
}
