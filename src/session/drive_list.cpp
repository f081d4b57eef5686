#include "session/drive_list.h"

#include "platform/drives.h"
#include "platform/files.h"

namespace pavoline {
namespace {

bool Belongs(Platform& platform, const std::string& drive, int type) {
  if (type != 0) return platform.drives.type(drive) == type;
  return platform.files.exists(drive) || platform.drives.type(drive) >= kDriveRemovable;
}

}  // namespace

std::string DriveList(Ground& ground, int type) {
  std::string list;
  for (char letter = 'C'; letter <= 'Z'; ++letter) {
    const std::string drive = std::string(1, letter) + ":";
    if (Belongs(ground.platform, drive, type)) list += drive + ",";
  }
  return list;
}

}  // namespace pavoline
