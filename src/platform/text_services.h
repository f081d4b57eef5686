#pragma once

#include <string>

namespace pavoline {

// Conversions that follow the system's locale. Text is UTF-8 unless a name says otherwise.
class TextServices {
 public:
  virtual ~TextServices() = default;

  // Bytes in the system's ANSI code page; a character that has none becomes "?".
  virtual std::string toAnsi(const std::string& text) = 0;
  virtual std::string fromAnsi(const std::string& bytes) = 0;

  // The same in the code page in which the command interpreter reads a batch file. In most Western
  // locales that is another one than the ANSI code page.
  virtual std::string toConsole(const std::string& text) = 0;
  virtual std::string fromConsole(const std::string& bytes) = 0;

  // Bytes of UTF-16LE without a byte-order mark. An odd last byte is dropped, a lone surrogate
  // becomes U+FFFD.
  virtual std::string fromUtf16(const std::string& bytes) = 0;

  // Bytes of UTF-16LE without a byte-order mark.
  virtual std::string toUtf16(const std::string& text) = 0;

  virtual std::string lower(const std::string& text) = 0;
  virtual std::string upper(const std::string& text) = 0;
};

}  // namespace pavoline
