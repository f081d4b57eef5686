#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace pavoline {

// The values of one section by key, whose letters (ASCII) are alike in both cases.
class ProfileSection {
 public:
  // Takes a line "key=value" up, without blanks and one pair of quotes around the value, which
  // `cut` then shortens. The first line of a key counts, also one without a sign, which is empty.
  void add(std::string_view line, const std::function<std::string(std::string_view)>& cut);

  // Empty for a missing key.
  std::string value(std::string_view key) const;

 private:
  std::map<std::string, std::string> values_;  // by key in lower case
};

// Sections and keys of INI files, ANSI or UTF-16LE with a byte-order mark. Names are matched
// without regard to case, the first matching section and key win.
class Profile {
 public:
  virtual ~Profile() = default;

  // All values of a section at once: the system opens and takes apart the whole file at each call.
  // Every value is without blanks and one pair of quotes around it, and cut to at most
  // `bufferBytes` - 1 bytes of its ANSI form (of its UTF-8 form where it has no exact ANSI form),
  // never in the middle of a character. Nothing for a missing file or section. The system promises
  // no more than 32,767 characters of a section.
  virtual ProfileSection readSection(const std::string& file, const std::string& section,
                                     int bufferBytes) = 0;

  // Replaces the value in place or adds key, section and file as needed. False on failure.
  virtual bool write(const std::string& file, const std::string& section, const std::string& key,
                     const std::string& value) = 0;
};

}  // namespace pavoline
