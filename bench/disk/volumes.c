#include <ntifs.h>

#include "benchdisk.h"
#include "disk_table.h"
// After ntddk.h, on which they lean.
#include <mountmgr.h>
#include <ntddstor.h>
#include <ntddvol.h>

enum { kMostVolumes = 32, kMostExtents = 8, kLongestName = 256 };

static DRIVER_OBJECT *volumes, *manager;
static DRIVER_DISPATCH *controlBelow, *queryBelow;

static NTSTATUS NTAPI Keep(DEVICE_OBJECT* device, IRP* irp, void* context) {
  (void)device, (void)irp, (void)context;
  return STATUS_MORE_PROCESSING_REQUIRED;
}

// Asks a driver's function directly: requests of this process are all served by one thread, which
// must not wait for itself.
static NTSTATUS Ask(DEVICE_OBJECT* device, DRIVER_DISPATCH* function, ULONG code, void* buffer,
                    ULONG given, ULONG room) {
  IRP* irp = IoAllocateIrp(device->StackSize, FALSE);
  if (!irp) return STATUS_NO_MEMORY;
  IO_STACK_LOCATION* call = IoGetNextIrpStackLocation(irp);
  IoSetCompletionRoutine(irp, Keep, NULL, TRUE, TRUE, TRUE);
  call->MajorFunction = IRP_MJ_DEVICE_CONTROL;
  call->Parameters.DeviceIoControl.IoControlCode = code;
  call->Parameters.DeviceIoControl.InputBufferLength = given;
  call->Parameters.DeviceIoControl.OutputBufferLength = room;
  irp->AssociatedIrp.SystemBuffer = buffer;
  IoSetNextIrpStackLocation(irp);
  call->DeviceObject = device;
  const NTSTATUS status = function(device, irp);
  IoFreeIrp(irp);
  return status;
}

// Wine numbers its volumes, and a volume's device bears this number; 0 for what is no volume.
static ULONG NumberOf(DEVICE_OBJECT* device, WCHAR* name) {
  STORAGE_DEVICE_NUMBER number;
  RtlZeroMemory(&number, sizeof number);
  if (Ask(device, controlBelow, IOCTL_STORAGE_GET_DEVICE_NUMBER, &number, 0, sizeof number) ||
      number.DeviceType != FILE_DEVICE_DISK || number.PartitionNumber >= kMostVolumes) {
    return 0;
  }
  const WCHAR* before = L"\\Device\\HarddiskVolume";
  while (*before) *name++ = *before++;
  if (number.PartitionNumber >= 10) *name++ = (WCHAR)('0' + number.PartitionNumber / 10);
  *name++ = (WCHAR)('0' + number.PartitionNumber % 10);
  *name = 0;
  return number.PartitionNumber;
}

// The mount manager keeps the folder behind a device as the unique identifier of its links.
static BOOLEAN FolderOf(const WCHAR* deviceName, char* folder) {
  static union {
    MOUNTMGR_MOUNT_POINT question;
    MOUNTMGR_MOUNT_POINTS answer;
    char bytes[16 * 1024];
  } data;
  UNICODE_STRING device;
  RtlInitUnicodeString(&device, deviceName);
  RtlZeroMemory(&data.question, sizeof data.question);
  data.question.DeviceNameOffset = sizeof data.question;
  data.question.DeviceNameLength = device.Length;
  RtlCopyMemory(data.bytes + sizeof data.question, device.Buffer, device.Length);
  if (Ask(manager->DeviceObject, manager->MajorFunction[IRP_MJ_DEVICE_CONTROL],
          IOCTL_MOUNTMGR_QUERY_POINTS, data.bytes, sizeof data.question + device.Length,
          sizeof data.bytes) ||
      data.answer.NumberOfMountPoints == 0) {
    return FALSE;
  }
  const char* path = data.bytes + data.answer.MountPoints[0].UniqueIdOffset;
  const char* name = path;
  for (; *path; ++path) {
    if (*path == '/') name = path + 1;
  }
  ULONG length = 0;
  while (length < kLongestName - 1 && name[length]) folder[length] = name[length], ++length;
  folder[length] = 0;
  return TRUE;
}

// The row of the volume behind a device; the table must be closed afterwards when it was found.
static BOOLEAN FindVolume(DEVICE_OBJECT* device, struct Table* table, struct Row* row) {
  WCHAR deviceName[40];
  char folder[kLongestName];
  if (!NumberOf(device, deviceName) || !FolderOf(deviceName, folder)) return FALSE;
  if (!OpenTable(table)) return FALSE;
  if (FindRow(table, "volume", folder, row)) return TRUE;
  CloseTable(table);
  return FALSE;
}

struct Extent {
  ULONG disk, partition;
  ULONGLONG offset, bytes;
  BOOLEAN inside;  // begins within the partition
};

// The offset within the partition becomes one on the disk.
static BOOLEAN Locate(struct Extent* extent) {
  struct PartitionTable table;
  if (TableOfDisk(extent->disk, &table)) return FALSE;
  const ULONGLONG within = extent->offset;
  const PARTITION_INFORMATION_EX* entry = PartitionOfNumber(&table, extent->partition);
  extent->offset = within + (entry ? (ULONGLONG)entry->StartingOffset.QuadPart : 0);
  extent->bytes = (entry ? (ULONGLONG)entry->PartitionLength.QuadPart : table.bytes) - within;
  const BOOLEAN found = entry || extent->partition == 0;
  ExFreePool(table.entries);
  return found;
}

static ULONG ExtentsOf(const char* text, struct Extent* extents) {
  ULONG count = 0;
  while (*text && count < kMostExtents) {
    struct Extent* extent = &extents[count];
    extent->disk = (ULONG)Number(text, &text);
    if (*text++ != '/') return 0;
    extent->partition = (ULONG)Number(text, &text);
    extent->inside = *text == '+';
    extent->offset = extent->inside ? Number(text + 1, &text) : 0;
    if (Locate(extent)) ++count;
    if (*text == ',') ++text;
  }
  return count;
}

static NTSTATUS AnswerNumber(const struct Extent* extents, ULONG count, void* buffer, ULONG room,
                             ULONG_PTR* size) {
  STORAGE_DEVICE_NUMBER* answer = buffer;
  if (count != 1 || extents[0].inside) return STATUS_INVALID_DEVICE_REQUEST;
  if (room < sizeof *answer) return STATUS_BUFFER_TOO_SMALL;
  answer->DeviceType = FILE_DEVICE_DISK;
  answer->DeviceNumber = extents[0].disk;
  answer->PartitionNumber = extents[0].partition;
  *size = sizeof *answer;
  return STATUS_SUCCESS;
}

static NTSTATUS AnswerExtents(const struct Extent* extents, ULONG count, void* buffer, ULONG room,
                              ULONG_PTR* size) {
  VOLUME_DISK_EXTENTS* answer = buffer;
  DISK_EXTENT* at = answer->Extents;
  const ULONG head = FIELD_OFFSET(VOLUME_DISK_EXTENTS, Extents);
  if (room < sizeof *answer) return STATUS_BUFFER_TOO_SMALL;
  answer->NumberOfDiskExtents = count;
  *size = head;
  for (ULONG i = 0; i < count && *size + sizeof *at <= room; ++i, ++at) {
    at->DiskNumber = extents[i].disk;
    at->StartingOffset.QuadPart = (LONGLONG)extents[i].offset;
    at->ExtentLength.QuadPart = (LONGLONG)extents[i].bytes;
    *size += sizeof *at;
  }
  return *size < head + count * sizeof *at ? STATUS_BUFFER_OVERFLOW : STATUS_SUCCESS;
}

static NTSTATUS NTAPI ControlVolume(DEVICE_OBJECT* device, IRP* irp) {
  const IO_STACK_LOCATION* call = IoGetCurrentIrpStackLocation(irp);
  const ULONG code = call->Parameters.DeviceIoControl.IoControlCode;
  const ULONG room = call->Parameters.DeviceIoControl.OutputBufferLength;
  struct Table table;
  struct Row row;
  struct Extent extents[kMostExtents];
  WCHAR name[40];
  ULONG_PTR size = 0;
  ULONG count = 0;
  if ((code != IOCTL_STORAGE_GET_DEVICE_NUMBER && code != IOCTL_VOLUME_GET_VOLUME_DISK_EXTENTS) ||
      !NumberOf(device, name)) {
    return controlBelow(device, irp);
  }
  if (FindVolume(device, &table, &row)) {
    count = ExtentsOf(row.field[kWhere], extents);
    CloseTable(&table);
  }
  NTSTATUS status = STATUS_INVALID_DEVICE_REQUEST;
  if (count > 0) {
    status = (code == IOCTL_STORAGE_GET_DEVICE_NUMBER ? AnswerNumber : AnswerExtents)(
        extents, count, irp->AssociatedIrp.SystemBuffer, room, &size);
  }
  return Done(irp, status, size);
}

static NTSTATUS Describe(const struct Row* row, FS_INFORMATION_CLASS what, void* buffer, ULONG room,
                         ULONG_PTR* size) {
  const char* text = row->field[what == FileFsVolumeInformation ? kLabel : kFileSystem];
  FILE_FS_VOLUME_INFORMATION* volume = buffer;
  FILE_FS_ATTRIBUTE_INFORMATION* kind = buffer;
  const ULONG head = what == FileFsVolumeInformation
                         ? FIELD_OFFSET(FILE_FS_VOLUME_INFORMATION, VolumeLabel)
                         : FIELD_OFFSET(FILE_FS_ATTRIBUTE_INFORMATION, FileSystemName);
  if (Same(row->field[kFileSystem], "-")) return STATUS_UNRECOGNIZED_VOLUME;
  if (room < head) return STATUS_INFO_LENGTH_MISMATCH;
  RtlZeroMemory(buffer, head);
  const ULONG length = Wide(text, (WCHAR*)((char*)buffer + head), room - head);
  if (what == FileFsVolumeInformation) {
    volume->VolumeSerialNumber = (ULONG)Number(row->field[kSerial], NULL);
    volume->VolumeLabelLength = length;
  } else {
    kind->FileSystemAttributes = FILE_CASE_PRESERVED_NAMES | FILE_UNICODE_ON_DISK;
    kind->MaximumComponentNameLength = 255;
    kind->FileSystemNameLength = length;
  }
  *size = head + length;
  return STATUS_SUCCESS;
}

static NTSTATUS NTAPI QueryVolume(DEVICE_OBJECT* device, IRP* irp) {
  const IO_STACK_LOCATION* call = IoGetCurrentIrpStackLocation(irp);
  const FS_INFORMATION_CLASS what = call->Parameters.QueryVolume.FsInformationClass;
  struct Table table;
  struct Row row;
  ULONG_PTR size = 0;
  if ((what != FileFsVolumeInformation && what != FileFsAttributeInformation) ||
      !FindVolume(device, &table, &row)) {
    return queryBelow(device, irp);
  }
  const NTSTATUS status = Describe(&row, what, irp->AssociatedIrp.SystemBuffer,
                                   call->Parameters.QueryVolume.Length, &size);
  CloseTable(&table);
  return Done(irp, status, size);
}

NTSTATUS StandBeforeVolumes(void) {
  UNICODE_STRING name;
  RtlInitUnicodeString(&name, L"\\Driver\\MountMgr");
  NTSTATUS status =
      ObReferenceObjectByName(&name, 0, NULL, 0, NULL, KernelMode, NULL, (void**)&manager);
  if (status) return status;
  RtlInitUnicodeString(&name, L"\\Driver\\Harddisk");
  status = ObReferenceObjectByName(&name, 0, NULL, 0, NULL, KernelMode, NULL, (void**)&volumes);
  if (status) return status;
  controlBelow = volumes->MajorFunction[IRP_MJ_DEVICE_CONTROL];
  queryBelow = volumes->MajorFunction[IRP_MJ_QUERY_VOLUME_INFORMATION];
  volumes->MajorFunction[IRP_MJ_DEVICE_CONTROL] = ControlVolume;
  volumes->MajorFunction[IRP_MJ_QUERY_VOLUME_INFORMATION] = QueryVolume;
  return STATUS_SUCCESS;
}

static BOOLEAN PointsTo(const WCHAR* link, const WCHAR* device) {
  WCHAR text[64];
  UNICODE_STRING name, target, wanted;
  OBJECT_ATTRIBUTES attributes;
  HANDLE handle;
  RtlInitUnicodeString(&name, link);
  InitializeObjectAttributes(&attributes, &name, OBJ_CASE_INSENSITIVE, NULL, NULL);
  if (ZwOpenSymbolicLinkObject(&handle, GENERIC_READ, &attributes)) return FALSE;
  target.Buffer = text;
  target.Length = 0;
  target.MaximumLength = sizeof text;
  const NTSTATUS status = ZwQuerySymbolicLinkObject(handle, &target, NULL);
  ZwClose(handle);
  RtlInitUnicodeString(&wanted, device);
  return !status && target.Length == wanted.Length &&
         RtlCompareMemory(target.Buffer, wanted.Buffer, wanted.Length) == wanted.Length;
}

static BOOLEAN Has(const char* letters, char letter) {
  while (*letters && *letters != letter) ++letters;
  return *letters != 0;
}

void LinkLetters(void) {
  for (DEVICE_OBJECT* device = volumes->DeviceObject; device; device = device->NextDevice) {
    WCHAR name[40], link[] = L"\\??\\A:";
    struct Table table;
    struct Row row;
    if (!FindVolume(device, &table, &row) || !NumberOf(device, name)) continue;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
      const BOOLEAN wanted = Has(row.field[kLetters], letter);
      link[4] = (WCHAR)letter;
      if (wanted != PointsTo(link, name)) Relink(link, wanted ? name : NULL);
    }
    CloseTable(&table);
  }
}
