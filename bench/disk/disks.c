#include "benchdisk.h"
#include "disk_table.h"
// After ntddk.h, on which it leans.
#include <ntddstor.h>

// As the system's headers have it; the compiler's do not.
enum { kGetDiskAttributes = CTL_CODE(IOCTL_DISK_BASE, 0x3C, METHOD_BUFFERED, FILE_ANY_ACCESS) };

static void NameOfDisk(const WCHAR* before, ULONG number, WCHAR* name) {
  while (*before) *name++ = *before++;
  if (number >= 10) *name++ = (WCHAR)('0' + number / 10);
  *name++ = (WCHAR)('0' + number % 10);
  *name = 0;
}

static void Copy(char* to, const char* from) {
  ULONG room = 1024;
  while (*from && --room) *to++ = *from++;
  *to = 0;
}

struct BenchDisk {
  char image[1024], model[1024], traits[1024];
};

static BOOLEAN FindDisk(ULONG number, struct BenchDisk* disk) {
  struct Table table;
  struct Row row;
  BOOLEAN found = FALSE;
  if (!OpenTable(&table)) return FALSE;
  while (!found && NextRow(&table, &row)) {
    if (!Same(row.field[kKind], "disk") || Number(row.field[kName], NULL) != number) continue;
    Copy(disk->image, row.field[kWhere]);
    Copy(disk->model, row.field[kModel]);
    Copy(disk->traits, row.field[kTraits]);
    found = TRUE;
  }
  CloseTable(&table);
  return found;
}

NTSTATUS TableOfDisk(ULONG number, struct PartitionTable* table) {
  struct BenchDisk disk;
  return FindDisk(number, &disk) ? ReadPartitionTable(disk.image, table) : STATUS_NO_SUCH_DEVICE;
}

void LinkDisks(void) {
  struct BenchDisk disk;
  WCHAR link[40], device[40];
  for (ULONG i = 0; i < kMostDisks; ++i) {
    NameOfDisk(L"\\??\\PhysicalDrive", i, link);
    NameOfDisk(L"\\Device\\BenchDisk", i, device);
    Relink(link, FindDisk(i, &disk) ? device : NULL);
  }
}

NTSTATUS MakeDisks(DRIVER_OBJECT* driver) {
  for (ULONG i = 0; i < kMostDisks; ++i) {
    WCHAR text[40];
    UNICODE_STRING name;
    DEVICE_OBJECT* device;
    NameOfDisk(L"\\Device\\BenchDisk", i, text);
    RtlInitUnicodeString(&name, text);
    const NTSTATUS status =
        IoCreateDevice(driver, sizeof(ULONG), &name, FILE_DEVICE_DISK, 0, FALSE, &device);
    if (status) return status;
    *(ULONG*)device->DeviceExtension = i;
  }
  return STATUS_SUCCESS;
}

static NTSTATUS AnswerLayout(ULONG disk, void* buffer, ULONG room, ULONG_PTR* size) {
  struct PartitionTable table;
  DRIVE_LAYOUT_INFORMATION_EX* layout = buffer;
  const NTSTATUS status = TableOfDisk(disk, &table);
  if (status) return status;
  const ULONG head = FIELD_OFFSET(DRIVE_LAYOUT_INFORMATION_EX, PartitionEntry);
  const ULONG entries = table.count * sizeof *table.entries;
  const BOOLEAN fits = room >= head + entries;
  if (fits) {
    RtlZeroMemory(layout, head);
    layout->PartitionStyle = table.style;
    layout->PartitionCount = table.count;
    layout->Mbr.Signature = table.signature;
    if (table.style == PARTITION_STYLE_GPT) layout->Gpt.DiskId = table.diskId;
    RtlCopyMemory((char*)buffer + head, table.entries, entries);
    *size = head + entries;
  }
  ExFreePool(table.entries);
  return fits ? STATUS_SUCCESS : STATUS_BUFFER_TOO_SMALL;
}

static NTSTATUS AnswerProperty(ULONG number, void* buffer, ULONG room, ULONG_PTR* size) {
  struct BenchDisk disk;
  const STORAGE_PROPERTY_QUERY* query = buffer;
  STORAGE_DEVICE_DESCRIPTOR* answer = buffer;
  char serial[] = "BENCH-00";
  ULONG length = 0;
  if (query->PropertyId != StorageDeviceProperty) return STATUS_NOT_SUPPORTED;
  if (!FindDisk(number, &disk)) return STATUS_NO_SUCH_DEVICE;
  while (disk.model[length]) ++length;
  if (room < sizeof *answer + length + 1 + sizeof serial) return STATUS_BUFFER_TOO_SMALL;
  serial[6] = (char)('0' + number / 10);
  serial[7] = (char)('0' + number % 10);
  RtlZeroMemory(answer, sizeof *answer);
  answer->Version = sizeof *answer;
  answer->Size = (ULONG)(sizeof *answer + length + 1 + sizeof serial);
  answer->RemovableMedia = Holds(disk.traits, "removable");
  answer->ProductIdOffset = sizeof *answer;
  answer->SerialNumberOffset = sizeof *answer + length + 1;
  RtlCopyMemory(answer + 1, disk.model, length + 1);
  RtlCopyMemory((char*)buffer + answer->SerialNumberOffset, serial, sizeof serial);
  *size = answer->Size;
  return STATUS_SUCCESS;
}

static NTSTATUS AnswerGeometry(ULONG number, void* buffer, ULONG room, ULONG_PTR* size) {
  enum { kSector = 512, kSectorsPerTrack = 63, kTracks = 255 };
  struct PartitionTable table;
  DISK_GEOMETRY_EX* answer = buffer;
  if (room < sizeof *answer) return STATUS_BUFFER_TOO_SMALL;
  const NTSTATUS status = TableOfDisk(number, &table);
  if (status) return status;
  ExFreePool(table.entries);
  RtlZeroMemory(answer, sizeof *answer);
  answer->Geometry.MediaType = FixedMedia;
  answer->Geometry.BytesPerSector = kSector;
  answer->Geometry.SectorsPerTrack = kSectorsPerTrack;
  answer->Geometry.TracksPerCylinder = kTracks;
  answer->Geometry.Cylinders.QuadPart =
      (LONGLONG)(table.bytes / (kSector * kSectorsPerTrack * kTracks));
  answer->DiskSize.QuadPart = (LONGLONG)table.bytes;
  *size = sizeof *answer;
  return STATUS_SUCCESS;
}

static NTSTATUS AnswerAttributes(ULONG number, void* buffer, ULONG room, ULONG_PTR* size) {
  struct BenchDisk disk;
  struct {
    ULONG version, reserved;
    ULONGLONG attributes;
  }* answer = buffer;
  if (room < sizeof *answer) return STATUS_BUFFER_TOO_SMALL;
  if (!FindDisk(number, &disk)) return STATUS_NO_SUCH_DEVICE;
  answer->version = sizeof *answer;
  answer->reserved = 0;
  answer->attributes = Holds(disk.traits, "offline") ? 1 : 0;
  *size = sizeof *answer;
  return STATUS_SUCCESS;
}

static NTSTATUS AnswerWritable(ULONG number) {
  struct BenchDisk disk;
  if (!FindDisk(number, &disk)) return STATUS_NO_SUCH_DEVICE;
  return Holds(disk.traits, "readonly") ? STATUS_MEDIA_WRITE_PROTECTED : STATUS_SUCCESS;
}

static NTSTATUS AnswerNumber(ULONG disk, void* buffer, ULONG room, ULONG_PTR* size) {
  STORAGE_DEVICE_NUMBER* answer = buffer;
  if (room < sizeof *answer) return STATUS_BUFFER_TOO_SMALL;
  answer->DeviceType = FILE_DEVICE_DISK;
  answer->DeviceNumber = disk;
  answer->PartitionNumber = 0;
  *size = sizeof *answer;
  return STATUS_SUCCESS;
}

NTSTATUS NTAPI ReadDisk(DEVICE_OBJECT* device, IRP* irp) {
  const IO_STACK_LOCATION* call = IoGetCurrentIrpStackLocation(irp);
  const ULONG room = call->Parameters.Read.Length;
  struct BenchDisk disk;
  HANDLE image;
  if (device->DeviceType != FILE_DEVICE_DISK) return Done(irp, STATUS_INVALID_DEVICE_REQUEST, 0);
  if (!FindDisk(*(const ULONG*)device->DeviceExtension, &disk) || Same(disk.image, "-")) {
    return Done(irp, STATUS_NO_MEDIA_IN_DEVICE, 0);
  }
  NTSTATUS status = OpenImage(disk.image, &image);
  if (!status) {
    status = ReadAt(image, (ULONGLONG)call->Parameters.Read.ByteOffset.QuadPart,
                    irp->AssociatedIrp.SystemBuffer, room);
    ZwClose(image);
  }
  return Done(irp, status, status ? 0 : room);
}

NTSTATUS NTAPI ControlDisk(DEVICE_OBJECT* device, IRP* irp) {
  const IO_STACK_LOCATION* call = IoGetCurrentIrpStackLocation(irp);
  const ULONG room = call->Parameters.DeviceIoControl.OutputBufferLength;
  void* buffer = irp->AssociatedIrp.SystemBuffer;
  ULONG_PTR size = 0;
  NTSTATUS status = STATUS_INVALID_DEVICE_REQUEST;
  if (device->DeviceType == FILE_DEVICE_DISK) {
    const ULONG disk = *(const ULONG*)device->DeviceExtension;
    switch (call->Parameters.DeviceIoControl.IoControlCode) {
      case IOCTL_DISK_GET_DRIVE_LAYOUT_EX:
        status = AnswerLayout(disk, buffer, room, &size);
        break;
      case IOCTL_STORAGE_QUERY_PROPERTY:
        status = AnswerProperty(disk, buffer, room, &size);
        break;
      case IOCTL_STORAGE_GET_DEVICE_NUMBER:
        status = AnswerNumber(disk, buffer, room, &size);
        break;
      case IOCTL_DISK_GET_DRIVE_GEOMETRY_EX:
        status = AnswerGeometry(disk, buffer, room, &size);
        break;
      case kGetDiskAttributes:
        status = AnswerAttributes(disk, buffer, room, &size);
        break;
      case IOCTL_DISK_IS_WRITABLE:
        status = AnswerWritable(disk);
        break;
    }
  }
  return Done(irp, status, size);
}
