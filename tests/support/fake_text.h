#pragma once

#include <string>
#include <string_view>

#include "platform/text_services.h"

namespace pavoline::testing {

// Upper and lower case of UTF-8 text in every script, whatever locale the test runs in.
std::string Lower(std::string_view text);
std::string Upper(std::string_view text);

std::wstring Decode(std::string_view utf8);  // a byte that fits nowhere becomes U+FFFD
std::string Encode(std::wstring_view characters);

// Conversions by the C library, for any code page it knows ("CP1252", "CP936").
struct FakeTextServices : TextServices {
  std::string codePage = "CP1252", consoleCodePage;  // empty: the same

  const std::string& console() const {
    return consoleCodePage.empty() ? codePage : consoleCodePage;
  }

  std::string toAnsi(const std::string& text) override;
  std::string fromAnsi(const std::string& bytes) override;
  std::string toConsole(const std::string& text) override;
  std::string fromConsole(const std::string& bytes) override;
  std::string fromUtf16(const std::string& bytes) override;
  std::string toUtf16(const std::string& text) override;
  std::string lower(const std::string& text) override { return Lower(text); }
  std::string upper(const std::string& text) override { return Upper(text); }
};

}  // namespace pavoline::testing
