#pragma once

#include "platform/text_services.h"

namespace pavoline {

class WinTextServices : public TextServices {
 public:
  std::string toAnsi(const std::string& text) override;
  std::string fromAnsi(const std::string& bytes) override;
  std::string toConsole(const std::string& text) override;
  std::string fromConsole(const std::string& bytes) override;
  std::string fromUtf16(const std::string& bytes) override;
  std::string toUtf16(const std::string& text) override;
  std::string lower(const std::string& text) override;
  std::string upper(const std::string& text) override;
};

}  // namespace pavoline
