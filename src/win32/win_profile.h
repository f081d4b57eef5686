#pragma once

#include "platform/profile.h"

namespace pavoline {

class WinProfile : public Profile {
 public:
  ProfileSection readSection(const std::string& file, const std::string& section,
                             int bufferBytes) override;
  bool write(const std::string& file, const std::string& section, const std::string& key,
             const std::string& value) override;
};

}  // namespace pavoline
