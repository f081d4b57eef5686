#include "cxdir/volume_query.h"

#include <windows.h>

#include <algorithm>
#include <string>

#include "win32/handle.h"
#include "win32/volume_number.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

struct VolumeSearchCloser {
  static void close(HANDLE handle) { FindVolumeClose(handle); }
};
using VolumeSearch = BasicHandle<VolumeSearchCloser>;

// path: a root with its closing backslash.
Volume Describe(const VolumeNumber& number, std::string root, const std::wstring& path) {
  Volume volume{number.disk, number.partition, std::move(root), {}, {}};
  wchar_t label[MAX_PATH + 1] = L"";
  wchar_t fileSystem[MAX_PATH + 1] = L"";
  if (GetVolumeInformationW(path.c_str(), label, MAX_PATH + 1, nullptr, nullptr, nullptr,
                            fileSystem, MAX_PATH + 1)) {
    volume.label = Narrow(label);
    volume.fileSystem = Narrow(fileSystem);
  }
  return volume;
}

void AddLetters(std::vector<Volume>& volumes) {
  const DWORD present = GetLogicalDrives();
  for (int i = 0; i < 26; ++i) {
    if ((present >> i & 1) == 0) continue;
    const std::string root = {static_cast<char>('A' + i), ':'};
    const auto number = VolumeNumberOfDrive(root);
    if (!number) continue;
    const std::wstring path = {static_cast<wchar_t>(L'A' + i), L':', L'\\'};
    volumes.push_back(Describe(*number, root, path));
  }
}

bool IsKnown(const std::vector<Volume>& volumes, const VolumeNumber& number) {
  return std::any_of(volumes.begin(), volumes.end(), [&](const Volume& volume) {
    return volume.disk == number.disk && volume.partition == number.partition;
  });
}

// System and recovery partitions usually have no letter, yet a file system and a label.
void AddLetterless(std::vector<Volume>& volumes) {
  wchar_t name[MAX_PATH + 1];
  VolumeSearch search(FindFirstVolumeW(name, MAX_PATH + 1));
  if (!search) return;
  do {
    const std::wstring path = name;
    const auto number = VolumeNumberOfDevice(path.substr(0, path.find_last_not_of(L'\\') + 1));
    if (number && !IsKnown(volumes, *number)) volumes.push_back(Describe(*number, "", path));
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
