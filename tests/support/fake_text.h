#pragma once

#include <string>

#include "platform/text_services.h"
#include "support/fold_case.h"

namespace pavoline::testing {

// Conversions by the C library, for any code page it knows ("CP1252", "CP936", "CP932").
struct FakeTextServices : TextServices {
  std::string codePage = "CP1252";
  std::string consoleCodePage;  // empty: the same

  std::string toAnsi(const std::string& text) override;
  std::string fromAnsi(const std::string& bytes) override;
  std::string toConsole(const std::string& text) override;
  std::string fromUtf16(const std::string& bytes) override;
  std::string toUtf16(const std::string& text) override;
  std::string lower(const std::string& text) override { return Lower(text); }
  std::string upper(const std::string& text) override { return Upper(text); }
};

}  // namespace pavoline::testing
