#include <sstream>

#include "driver/window.h"

namespace bench {
namespace {

int DepthBelow(HWND window, HWND top) {
  int depth = 0;
  for (; window && window != top; window = GetAncestor(window, GA_PARENT)) ++depth;
  return depth;
}

void Describe(std::ostream& out, const Window& window, int depth) {
  const RECT place = window.rectangle();
  out << std::string(2 * depth, ' ') << window.className() << " #" << window.id()
      << (window.visible() ? "" : " hidden") << (window.enabled() ? "" : " disabled") << " "
      << place.right - place.left << "x" << place.bottom - place.top << "+" << place.left << "+"
      << place.top << " \"" << window.text() << "\"";
  const std::string className = window.className();
  if (className == "Button" && window.ticked()) out << " [x]";
  if (className.find("Combo") == 0) {
    for (const std::string& item : window.items()) out << " | " << item;
  }
  if (className == "msctls_progress32") out << " " << window.progress();
  out << "\n";
  if (className != "SysListView32") return;
  for (const auto& row : window.rows()) {
    out << std::string(2 * depth + 2, ' ');
    for (const std::string& cell : row) out << "| " << cell << " ";
    out << "\n";
  }
}

}  // namespace

std::string DumpWindows(const std::string& program) {
  std::ostringstream out;
  for (const Window& top : WindowsOf(program)) {
    if (!top.visible()) continue;
    Describe(out, top, 0);
    for (const Window& child : top.children())
      Describe(out, child, DepthBelow(child.handle(), top.handle()));
  }
  return out.str();
}

}  // namespace bench
