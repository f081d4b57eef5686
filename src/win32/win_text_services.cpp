#include "win32/win_text_services.h"

#include <windows.h>

#include <cstring>

#include "win32/wide_text.h"

namespace pavoline {

namespace {

std::string ToCodePage(const std::string& text, UINT codePage) {
  // A code page of UTF-8 takes no options and lacks no character.
  if (codePage == CP_UTF8) return text;
  const std::wstring wide = Wide(text);
  const int length = static_cast<int>(wide.size());
  const int wanted = WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, wide.data(), length,
                                         nullptr, 0, "?", nullptr);
  std::string bytes(static_cast<std::size_t>(wanted), '\0');
  WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, wide.data(), length, bytes.data(), wanted,
                      "?", nullptr);
  return bytes;
}

std::string FromCodePage(const std::string& bytes, UINT codePage) {
  const int length = static_cast<int>(bytes.size());
  const int wanted = MultiByteToWideChar(codePage, 0, bytes.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(wanted), L'\0');
  MultiByteToWideChar(codePage, 0, bytes.data(), length, wide.data(), wanted);
  return Narrow(wide);
}

}  // namespace

std::string WinTextServices::toAnsi(const std::string& text) { return ToCodePage(text, GetACP()); }

std::string WinTextServices::toConsole(const std::string& text) {
  return ToCodePage(text, GetOEMCP());
}

std::string WinTextServices::fromAnsi(const std::string& bytes) {
  return FromCodePage(bytes, CP_ACP);
}

std::string WinTextServices::fromConsole(const std::string& bytes) {
  return FromCodePage(bytes, CP_OEMCP);
}

std::string WinTextServices::fromUtf16(const std::string& bytes) {
  std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(wide.data(), bytes.data(), wide.size() * sizeof(wchar_t));
  return Narrow(wide);
}

std::string WinTextServices::toUtf16(const std::string& text) {
  const std::wstring wide = Wide(text);
  return std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t));
}

std::string WinTextServices::lower(const std::string& text) {
  std::wstring wide = Wide(text);
  CharLowerBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  return Narrow(wide);
}

std::string WinTextServices::upper(const std::string& text) {
  std::wstring wide = Wide(text);
  CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
  return Narrow(wide);
}

}  // namespace pavoline
