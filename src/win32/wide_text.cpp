#include "win32/wide_text.h"

#include <windows.h>

#include <algorithm>

namespace pavoline {

std::wstring Wide(std::string_view text) {
  const int length = static_cast<int>(text.size());
  const int wanted = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(wanted), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), wanted);
  return wide;
}

std::string Narrow(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int wanted =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(wanted), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), wanted, nullptr, nullptr);
  return narrow;
}

std::wstring WidePath(std::string_view path) {
  std::wstring wide = Wide(path);
  // Folders must leave room for an 8.3 name, hence the platform's limit of 248.
  constexpr std::size_t kSafeLength = 247;
  if (wide.size() <= kSafeLength || wide.starts_with(L"\\\\?\\")) return wide;
  std::replace(wide.begin(), wide.end(), L'/', L'\\');
  if (wide.size() > 2 && wide[1] == L':' && wide[2] == L'\\') return L"\\\\?\\" + wide;
  if (wide.starts_with(L"\\\\")) return L"\\\\?\\UNC" + wide.substr(1);
  return wide;
}

}  // namespace pavoline
