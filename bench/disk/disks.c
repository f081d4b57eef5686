#include "benchdisk.h"
#include "disk_table.h"
// After ntddk.h, on which it leans.
#include <ntddstor.h>

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

// Both texts have room for 1,024 letters.
static BOOLEAN ImageOf(ULONG disk, char* image, char* model) {
  struct Table table;
  struct Row row;
  BOOLEAN found = FALSE;
  if (!OpenTable(&table)) return FALSE;
  while (!found && NextRow(&table, &row)) {
    if (!Same(row.field[kKind], "disk") || Number(row.field[kName], NULL) != disk) continue;
    Copy(image, row.field[kWhere]);
    Copy(model, row.field[kModel]);
    found = TRUE;
  }
  CloseTable(&table);
  return found;
}

NTSTATUS TableOfDisk(ULONG disk, struct PartitionTable* table) {
  char image[1024], model[1024];
  return ImageOf(disk, image, model) ? ReadPartitionTable(image, table) : STATUS_NO_SUCH_DEVICE;
}

void LinkDisks(void) {
  char image[1024], model[1024];
  WCHAR link[40], device[40];
  for (ULONG i = 0; i < kMostDisks; ++i) {
    NameOfDisk(L"\\??\\PhysicalDrive", i, link);
    NameOfDisk(L"\\Device\\BenchDisk", i, device);
    Relink(link, ImageOf(i, image, model) ? device : NULL);
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

static NTSTATUS AnswerProperty(ULONG disk, void* buffer, ULONG room, ULONG_PTR* size) {
  char image[1024], model[1024];
  const STORAGE_PROPERTY_QUERY* query = buffer;
  STORAGE_DEVICE_DESCRIPTOR* answer = buffer;
  ULONG length = 0;
  if (query->PropertyId != StorageDeviceProperty) return STATUS_NOT_SUPPORTED;
  if (!ImageOf(disk, image, model)) return STATUS_NO_SUCH_DEVICE;
  while (model[length]) ++length;
  if (room < sizeof *answer + length + 1) return STATUS_BUFFER_TOO_SMALL;
  RtlZeroMemory(answer, sizeof *answer);
  answer->Version = sizeof *answer;
  answer->Size = sizeof *answer + length + 1;
  answer->ProductIdOffset = sizeof *answer;
  RtlCopyMemory(answer + 1, model, length + 1);
  *size = answer->Size;
  return STATUS_SUCCESS;
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
    }
  }
  return Done(irp, status, size);
}
