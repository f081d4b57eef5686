#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "session/session.h"

// Virtual disks (VHD and VHDX files), made and moved by diskpart scripts. diskpart's output is not
// read: drive letters that come or go are the only sign of success.
namespace pavoline {

enum class VirtualDiskFormat { kVhd, kVhdx };
enum class VirtualDiskType { kFixed, kExpandable };  // full size allocated; grows on demand
enum class SizeUnit { kMegabytes, kGigabytes, kTerabytes };

// What the person entered in the creation window.
struct VirtualDiskRequest {
  std::string file;  // full path; the extension is corrected to fit the format
  VirtualDiskFormat format = VirtualDiskFormat::kVhd;
  std::string size;  // as typed
  SizeUnit unit = SizeUnit::kGigabytes;
  VirtualDiskType type = VirtualDiskType::kExpandable;
  std::string label;  // of the new volume; may be empty
};

// The three commands. Each asks nothing, runs its script (the window stays alive meanwhile) and
// tells the person the outcome. True: done, the window that asked may close.
bool AttachVirtualDisk(Session& session, const std::string& file);
bool DetachVirtualDisk(Session& session, const std::string& file);
bool CreateVirtualDisk(Workplace& workplace, const VirtualDiskRequest& request);

// Patterns of the file dialogs that choose an existing virtual disk; older systems know no VHDX.
std::string VirtualDiskPatterns(float osVersion);

// The path with the extension of the format: ".vhd" and ".vhdx" are exchanged, any other stays in
// front of the new one.
std::string WithVirtualDiskExtension(const std::string& file, VirtualDiskFormat format);

// False for an empty base name and one that no file can have.
bool IsVirtualDiskName(const std::string& baseName);

enum class SizeFault { kNone, kNoSize, kTooLarge };
struct VirtualDiskSize {
  SizeFault fault = SizeFault::kNone;
  std::int32_t megabytes = 0;
};
VirtualDiskSize VirtualDiskMegabytes(const std::string& size, SizeUnit unit);

// The letter for a new volume, out of those that installed systems and tools leave alone, or empty
// when all are taken. `presentDrives` is a text as DriveList gives it.
std::string GetULetter(const std::string& presentDrives);

// diskpart scripts, lines separated by CR LF.
std::string AttachScript(const std::string& file);
std::string DetachScript(const std::string& file);
std::string CreateScript(const std::string& file, std::int32_t megabytes, VirtualDiskType type,
                         const std::string& label, const std::string& letter);

}  // namespace pavoline
