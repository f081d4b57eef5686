#include "cxdir/volume_query.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "win32/handle.h"
#include "win32/volume_number.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// path: a root with its closing backslash.
Volume Describe(std::vector<VolumeExtent> extents, std::string root, const std::wstring& path) {
  Volume volume{std::move(extents), std::move(root), {}, {}};
  wchar_t label[MAX_PATH + 1] = L"";
  wchar_t fileSystem[MAX_PATH + 1] = L"";
  if (GetVolumeInformationW(path.c_str(), label, MAX_PATH + 1, nullptr, nullptr, nullptr,
                            fileSystem, MAX_PATH + 1)) {
    volume.label = Narrow(label);
    volume.fileSystem = Narrow(fileSystem);
  }
  return volume;
}

// What never lies on a disk here is not asked: a server that is gone is waited for, a drive wakes
// up.
bool MayLieOnDisk(const std::wstring& path) {
  const UINT type = GetDriveTypeW(path.c_str());
  return type != DRIVE_REMOTE && type != DRIVE_CDROM;
}

void AddLetters(std::vector<Volume>& volumes) {
  const DWORD present = GetLogicalDrives();
  for (int i = 0; i < 26; ++i) {
    if ((present >> i & 1) == 0) continue;
    const std::string root = {static_cast<char>('A' + i), ':'};
    const std::wstring path = {static_cast<wchar_t>(L'A' + i), L':', L'\\'};
    if (!MayLieOnDisk(path)) continue;
    auto extents = VolumeExtentsOfDrive(root);
    if (!extents.empty()) volumes.push_back(Describe(std::move(extents), root, path));
  }
}

bool IsKnown(const std::vector<Volume>& volumes, const std::vector<VolumeExtent>& extents) {
  return std::any_of(volumes.begin(), volumes.end(),
                     [&](const Volume& volume) { return volume.extents == extents; });
}

// System and recovery partitions usually have no letter, yet a file system and a label.
void AddLetterless(std::vector<Volume>& volumes) {
  wchar_t name[MAX_PATH + 1];
  VolumeSearchHandle search(FindFirstVolumeW(name, MAX_PATH + 1));
  if (!search) return;
  do {
    const std::wstring path = name;
    auto extents = VolumeExtentsOfDevice(path.substr(0, path.find_last_not_of(L'\\') + 1));
    if (extents.empty() || IsKnown(volumes, extents)) continue;
    volumes.push_back(Describe(std::move(extents), "", path));
  } while (FindNextVolumeW(search.get(), name, MAX_PATH + 1));
}

}  // namespace

std::vector<Volume> QueryVolumes() {
  std::vector<Volume> volumes;
  AddLetters(volumes);
  AddLetterless(volumes);
  return volumes;
}

}  // namespace pavoline
