#include "cxdir/text.h"

#include <windows.h>

#include "win32/wide_text.h"

namespace pavoline {

std::string AnsiText(std::string_view utf8) {
  const std::wstring wide = Wide(utf8);
  const int length = static_cast<int>(wide.size());
  // A system may have UTF-8 for its ANSI code page, and that one takes no flags.
  const DWORD flags = GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const int size =
      WideCharToMultiByte(CP_ACP, flags, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, flags, wide.data(), length, text.data(), size, nullptr, nullptr);
  return text;
}

}  // namespace pavoline
