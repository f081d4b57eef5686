#pragma once

#include "platform/profile.h"

namespace pavoline {

class WinProfile : public Profile {
 public:
  std::string read(const std::string& file, const std::string& section, const std::string& key,
                   int bufferBytes) override;
  bool write(const std::string& file, const std::string& section, const std::string& key,
             const std::string& value) override;
};

}  // namespace pavoline
