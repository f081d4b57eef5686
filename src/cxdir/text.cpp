#include "cxdir/text.h"

#include <windows.h>

namespace pavoline {
namespace {

std::string Narrow(UINT codePage, DWORD flags, std::wstring_view wide) {
  const int length = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(codePage, flags, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(codePage, flags, wide.data(), length, text.data(), size, nullptr, nullptr);
  return text;
}

std::wstring Wide(std::string_view utf8) {
  const int length = static_cast<int>(utf8.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), length, text.data(), size);
  return text;
}

}  // namespace

std::string Utf8Text(std::wstring_view wide) { return Narrow(CP_UTF8, 0, wide); }

std::string AnsiText(std::string_view utf8) {
  // A system may have UTF-8 for its ANSI code page, and that one takes no flags.
  const DWORD flags = GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
  return Narrow(CP_ACP, flags, Wide(utf8));
}

}  // namespace pavoline
