// shoot PROGRAM FOLDER SUFFIX PART...: a picture FOLDER/<window>SUFFIX.png of each window of the
// running program. Parts: main, small, installation. FOLDER is a Unix path.
// shoot font NAME,NAME...: titles, menus and messages of programs started later have the first of
// these fonts that is there, as a system of another language has one of its own; Wine has the same
// for all.
#include <algorithm>
#include <cstdio>
#include <sstream>

#include "bridge/unix_side.h"
#include "tour/tour.h"

namespace {

using bench::Window;

// An open menu belongs to the picture of its window.
RECT AreaOf(const std::string& program, const Window& window) {
  RECT area = window.rectangle();
  for (const Window& other : bench::WindowsOf(program)) {
    if (!other.visible() || other.className() != "#32768") continue;
    const RECT menu = other.rectangle();
    area = {std::min(area.left, menu.left), std::min(area.top, menu.top),
            std::max(area.right, menu.right), std::max(area.bottom, menu.bottom)};
  }
  return area;
}

bool Shoot(const RECT& area, const std::string& file) {
  const std::string geometry = std::to_string(area.right - area.left) + "x" +
                               std::to_string(area.bottom - area.top) + "+" +
                               std::to_string(area.left) + "+" + std::to_string(area.top);
  return bench::RunUnix({"import", "-window", "root", "-crop", geometry, "+repage", file}) == 0;
}

bool (*PartOf(const std::wstring& name))(const std::string&, const bench::Visit&) {
  if (name == L"main") return bench::TourMainWindow;
  if (name == L"small") return bench::TourSmallWindows;
  return name == L"installation" ? bench::TourInstallation : nullptr;
}

int CALLBACK NoteFont(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) {
  *reinterpret_cast<bool*>(found) = true;
  return 0;
}

bool FontThere(const std::wstring& name) {
  LOGFONTW wanted{};
  wanted.lfCharSet = DEFAULT_CHARSET;
  lstrcpynW(wanted.lfFaceName, name.c_str(), LF_FACESIZE);
  bool found = false;
  const HDC screen = GetDC(nullptr);
  EnumFontFamiliesExW(screen, &wanted, NoteFont, reinterpret_cast<LPARAM>(&found), 0);
  ReleaseDC(nullptr, screen);
  return found;
}

bool SetSystemFont(const std::wstring& names) {
  std::wstring name;
  std::wistringstream list(names);
  while (std::getline(list, name, L',') && !FontThere(name)) name.clear();
  if (name.empty()) return false;
  wprintf(L"font: %ls\n", name.c_str());
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
  for (LOGFONTW* font : {&metrics.lfCaptionFont, &metrics.lfSmCaptionFont, &metrics.lfMenuFont,
                         &metrics.lfStatusFont, &metrics.lfMessageFont}) {
    lstrcpynW(font->lfFaceName, name.c_str(), LF_FACESIZE);
  }
  return SystemParametersInfoW(SPI_SETNONCLIENTMETRICS, sizeof(metrics), &metrics,
                               SPIF_UPDATEINIFILE);
}

}  // namespace

int wmain(int count, wchar_t** values) {
  if (count == 3 && values[1] == std::wstring(L"font")) return SetSystemFont(values[2]) ? 0 : 1;
  if (count < 5) return 2;
  const std::string program = bench::ToUtf8(values[1]);
  const std::string folder = bench::ToUtf8(values[2]), suffix = bench::ToUtf8(values[3]);
  SetCursorPos(0, 0);  // nothing lights up below the pointer
  bool good = true;
  const bench::Visit visit = [&](const std::string& name, const Window& window) {
    good &= Shoot(AreaOf(program, window), folder + "/" + name + suffix + ".png");
  };
  for (int i = 4; i < count; ++i) {
    const auto part = PartOf(values[i]);
    if (!part || !part(program, visit)) return 1;
  }
  return good ? 0 : 1;
}
