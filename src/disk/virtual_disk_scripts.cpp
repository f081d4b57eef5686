#include <cmath>
#include <limits>
#include <string_view>

#include "disk/virtual_disk.h"
#include "platform/text.h"

// The part of virtual_disk.h that is text in, values out.
namespace pavoline {
namespace {

constexpr std::string_view kForbiddenInNames = "\\/:*?\"<>|";
// Letters seldom taken, in order of preference. A to F, U and X belong to the system's drives, to
// the pre-installation system and to removable media.
constexpr std::string_view kVolumeLetters = "VZYWTSRQPONMLKJIHG";
constexpr std::size_t kLongestTerabyteText = 3;

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

std::string VolumeScript(const std::string& file, const std::string& command) {
  return "Select vdisk file=" + Quoted(file) + "\r\n" + command + "\r\nExit";
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' '; }

// A label as the script's line can carry it: blanks need quotes, and quotes have no place in it.
std::string ScriptLabel(std::string label) {
  std::erase_if(label, [](char c) { return c == '"' || IsControl(c); });
  return Contains(label, " ") ? Quoted(label) : label;
}

double MegabytesOf(SizeUnit unit) {
  switch (unit) {
    case SizeUnit::kTerabytes:
      return 1024 * 1024;
    case SizeUnit::kGigabytes:
      return 1024;
    case SizeUnit::kMegabytes:
      break;
  }
  return 1;
}

}  // namespace

std::string VirtualDiskPatterns(float osVersion) {
  return osVersion >= 6.2f ? "*.vhd;*.vhdx" : "*.vhd";
}

std::string WithVirtualDiskExtension(const std::string& file, VirtualDiskFormat format) {
  const std::string lower = LowerAscii(file);
  const bool vhd = EndsWith(lower, ".vhd");
  const bool vhdx = EndsWith(lower, ".vhdx");
  if (format == VirtualDiskFormat::kVhdx) return vhdx ? file : file + (vhd ? "x" : ".vhdx");
  if (vhdx) return file.substr(0, file.size() - 1);
  return vhd ? file : file + ".vhd";
}

bool IsVirtualDiskName(const std::string& baseName) {
  if (baseName.empty()) return false;
  for (const char c : baseName) {
    if (IsControl(c) || kForbiddenInNames.find(c) != std::string_view::npos) return false;
  }
  return true;
}

VirtualDiskSize VirtualDiskMegabytes(const std::string& size, SizeUnit unit) {
  const std::string text = Trim(size);
  if (!IsNumeric(text) || LeadingNumber(text) <= 0) return {SizeFault::kNoSize};
  if (unit == SizeUnit::kTerabytes && text.size() > kLongestTerabyteText) {
    return {SizeFault::kTooLarge};
  }
  const double megabytes = std::nearbyint(LeadingNumber(text) * MegabytesOf(unit));
  if (megabytes > std::numeric_limits<std::int32_t>::max()) return {SizeFault::kTooLarge};
  if (megabytes < 1) return {SizeFault::kNoSize};
  return {SizeFault::kNone, static_cast<std::int32_t>(megabytes)};
}

std::string GetULetter(const std::string& presentDrives) {
  for (const char letter : kVolumeLetters) {
    if (!Contains(presentDrives, std::string_view(&letter, 1))) return std::string(1, letter);
  }
  return {};
}

std::string AttachScript(const std::string& file) { return VolumeScript(file, "Attach vdisk"); }
std::string DetachScript(const std::string& file) { return VolumeScript(file, "Detach vdisk"); }

std::string CreateScript(const std::string& file, std::int32_t megabytes, VirtualDiskType type,
                         const std::string& label, const std::string& letter) {
  const std::string shown = ScriptLabel(label);  // an empty option would be refused
  return "Create vdisk file=" + Quoted(file) + " maximum " + std::to_string(megabytes) +
         " type=" + (type == VirtualDiskType::kFixed ? "Fixed" : "Expandable") +
         "\r\nSelect vdisk file=" + Quoted(file) +
         "\r\nAttach vdisk"
         "\r\nCreate partition primary"
         "\r\nFormat FS=NTFS" +
         (shown.empty() ? "" : " LABEL=" + shown) + " quick" + "\r\nAssign letter=" + letter +
         "\r\nExit";
}

}  // namespace pavoline
