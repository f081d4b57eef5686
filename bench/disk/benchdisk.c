// A kernel-mode driver for Wine that gives the bench disks with partition tables. Disks, volumes,
// labels and letters stand in a text file, the partition tables in disk images; both are read anew
// at every question. Opening \\.\BenchDisks makes links and letters follow the file.

#include "benchdisk.h"

static NTSTATUS NTAPI Open(DEVICE_OBJECT* device, IRP* irp) {
  if (device->DeviceType != FILE_DEVICE_DISK) {
    LinkDisks();
    LinkLetters();
  }
  return Done(irp, STATUS_SUCCESS, 0);
}

static NTSTATUS NTAPI Close(DEVICE_OBJECT* device, IRP* irp) {
  (void)device;
  return Done(irp, STATUS_SUCCESS, 0);
}

NTSTATUS NTAPI DriverEntry(DRIVER_OBJECT* driver, UNICODE_STRING* key) {
  UNICODE_STRING name;
  DEVICE_OBJECT* control;
  (void)key;
  driver->MajorFunction[IRP_MJ_CREATE] = Open;
  driver->MajorFunction[IRP_MJ_CLOSE] = Close;
  driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = ControlDisk;
  driver->MajorFunction[IRP_MJ_READ] = ReadDisk;
  NTSTATUS status = StandBeforeVolumes();
  if (status) return status;
  status = MakeDisks(driver);
  if (status) return status;
  RtlInitUnicodeString(&name, L"\\Device\\BenchDisks");
  status = IoCreateDevice(driver, 0, &name, FILE_DEVICE_UNKNOWN, 0, FALSE, &control);
  if (status) return status;
  Relink(L"\\??\\BenchDisks", name.Buffer);
  LinkDisks();
  LinkLetters();
  return STATUS_SUCCESS;
}
