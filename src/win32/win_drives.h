#pragma once

#include "platform/drives.h"

namespace pavoline {

class WinDrives : public Drives {
 public:
  int type(const std::string& drive) override;
  std::optional<std::uint64_t> freeBytes(const std::string& drive) override;
  std::optional<VolumePosition> position(const std::string& drive) override;
  VolumeFacts facts(const std::string& drive) override;
  bool assignLetter(const VolumePosition& position, const std::string& drive) override;
  bool removeLetter(const std::string& drive) override;
};

}  // namespace pavoline
