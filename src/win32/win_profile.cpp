#include "win32/win_profile.h"

#include <windows.h>

#include <string>

#include "platform/text.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// The profile functions look for a bare or relative name in the Windows folder, not here.
std::wstring FullPath(const std::string& file) {
  const std::wstring path = Wide(file);
  const DWORD wanted = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  std::wstring full(wanted, L'\0');
  full.resize(GetFullPathNameW(path.c_str(), wanted, full.data(), nullptr));
  return full;
}

// Bytes of one character in the ANSI code page, or 0 when the page does not have it.
int AnsiSize(std::wstring_view character) {
  if (GetACP() == CP_UTF8) return 0;
  BOOL replaced = FALSE;
  const int size =
      WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, character.data(),
                          static_cast<int>(character.size()), nullptr, 0, nullptr, &replaced);
  return replaced ? 0 : size;
}

std::string CutToBytes(std::wstring_view text, int limit) {
  std::size_t kept = 0;
  for (int bytes = 0; kept < text.size();) {
    const bool pair = IS_HIGH_SURROGATE(text[kept]) && kept + 1 < text.size();
    const std::wstring_view character = text.substr(kept, pair ? 2 : 1);
    const int ansi = AnsiSize(character);
    bytes += ansi > 0 ? ansi : static_cast<int>(Narrow(character).size());
    if (bytes > limit) break;
    kept += character.size();
  }
  return Narrow(text.substr(0, kept));
}

constexpr std::size_t kLongestSection = 1 << 20;  // characters; whoever plants a longer one is cut

// The lines of a section without comments, each with a NUL behind it.
std::string SectionText(const std::string& file, const std::string& section) {
  const std::wstring name = Wide(section), path = FullPath(file);
  std::wstring lines(32767, L'\0');
  const auto read = [&] {
    return GetPrivateProfileSectionW(name.c_str(), lines.data(), static_cast<DWORD>(lines.size()),
                                     path.c_str());
  };
  DWORD length = read();
  // It did not hold all, or did so just.
  while (length + 2 >= lines.size() && lines.size() < kLongestSection) {
    lines.resize(lines.size() * 2);
    length = read();
  }
  lines.resize(length);
  return Narrow(lines);
}

}  // namespace

ProfileSection WinProfile::readSection(const std::string& file, const std::string& section,
                                       int bufferBytes) {
  ProfileSection values;
  const std::string lines = SectionText(file, section);
  for (const std::string& line : Split(lines, {"\0", 1})) {
    values.add(line,
               [&](std::string_view value) { return CutToBytes(Wide(value), bufferBytes - 1); });
  }
  return values;
}

bool WinProfile::write(const std::string& file, const std::string& section, const std::string& key,
                       const std::string& value) {
  return WritePrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), Wide(value).c_str(),
                                    FullPath(file).c_str()) != 0;
}

}  // namespace pavoline
