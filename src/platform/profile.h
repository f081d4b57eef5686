#pragma once

#include <string>

namespace pavoline {

// Sections and keys of INI files, ANSI or UTF-16LE with a byte-order mark. Names are matched
// without regard to case, the first matching key wins.
class Profile {
 public:
  virtual ~Profile() = default;

  // The value without blanks and one pair of quotes around it, cut to at most `bufferBytes` - 1
  // bytes of its ANSI form (of its UTF-8 form where it has no exact ANSI form), never in the
  // middle of a character. Empty for a missing file, section or key.
  virtual std::string read(const std::string& file, const std::string& section,
                           const std::string& key, int bufferBytes) = 0;

  // Replaces the value in place or adds key, section and file as needed. False on failure.
  virtual bool write(const std::string& file, const std::string& section, const std::string& key,
                     const std::string& value) = 0;
};

}  // namespace pavoline
