// What every part of the driver does with requests and links.

#include "benchdisk.h"

NTSTATUS Done(IRP* irp, NTSTATUS status, ULONG_PTR size) {
  irp->IoStatus.Status = status;
  irp->IoStatus.Information = size;
  IoCompleteRequest(irp, IO_NO_INCREMENT);
  return status;
}

void Relink(const WCHAR* link, const WCHAR* target) {
  UNICODE_STRING name, device;
  RtlInitUnicodeString(&name, link);
  IoDeleteSymbolicLink(&name);
  if (!target) return;
  RtlInitUnicodeString(&device, target);
  IoCreateSymbolicLink(&name, &device);
}
