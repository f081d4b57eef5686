#pragma once

namespace pavoline {

inline constexpr unsigned kEnglish = 1033;  // its texts stand in for those that a language lacks

// What holds of a locale with or without a language file of its own.
struct Locale {
  unsigned id = 0;                // the system's locale identifier; 0: all the others
  const char* bootTag = "en-US";  // names the language of boot files whose system names none
  unsigned related = 0;           // the language that it reads without a file of its own; 0: none
  bool chineseTools = false;      // companion tools go by their Chinese names
};

const Locale& LocaleOf(unsigned id);

}  // namespace pavoline
