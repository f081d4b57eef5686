#pragma once

#include <windows.h>

#include <map>
#include <memory>

#include "platform/drives.h"

namespace pavoline {

class WinDrives : public Drives {
 public:
  int type(const std::string& drive) override;
  std::optional<std::uint64_t> freeBytes(const std::string& drive) override;
  std::vector<std::optional<std::uint64_t>> freeBytesSoon(const std::vector<std::string>& drives,
                                                          int milliseconds) override;
  std::optional<VolumePosition> position(const std::string& drive) override;
  VolumeFacts facts(const std::string& drive) override;
  bool assignLetter(const VolumePosition& position, const std::string& drive) override;
  bool removeLetter(const std::string& drive) override;

 private:
  struct Question;
  // Those not answered yet, by drive: a drive that hangs is not asked a second time meanwhile.
  std::map<std::string, std::shared_ptr<Question>> open_;
};

}  // namespace pavoline
