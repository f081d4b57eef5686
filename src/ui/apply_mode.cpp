#include "ui/apply_mode.h"

#include <algorithm>

#include "ui/system_menu.h"

namespace pavoline {
namespace {

// Also with a copy of the image inside the target; only the check mark tells it from "Wimboot".
constexpr int kWimcopyCommand = kMenuFirstApplyMode + 2;

constexpr ApplyMode kModes[] = {
    {kMenuFirstApplyMode, "Normal mode ", "", ""},
    {kMenuFirstApplyMode + 1, "Wimboot", kWimbootOption, " - Wimboot"},
    {kWimcopyCommand, "Wimboot:WIMCOPY", kWimbootOption, " - Wimboot:WIMCOPY"},
    {kMenuFirstApplyMode + 3, "Compact:XPRESS4K", "--compact=xpress4k", " - Compact:XPRESS4K"},
    {kMenuFirstApplyMode + 4, "Compact:XPRESS8K", "--compact=xpress8k", " - Compact:XPRESS8K"},
    {kMenuFirstApplyMode + 5, "Compact:XPRESS16K", "--compact=xpress16k", " - Compact:XPRESS16K"},
    {kMenuFirstApplyMode + 6, "Compact:LZX", "--compact=lzx", " - Compact:LZX"},
};

// The modes stand in a submenu of their own; other items have no check marks.
void CheckMode(std::vector<MenuItem>& items, int commandId) {
  for (MenuItem& item : items) {
    const bool mode = std::ranges::find(kModes, item.id, &ApplyMode::commandId) != std::end(kModes);
    if (mode) item.checked = item.id == commandId;
    CheckMode(item.items, commandId);
  }
}

}  // namespace

std::span<const ApplyMode> ApplyModes() { return kModes; }

bool ChooseApplyMode(Session& session, int commandId) {
  const auto* mode = std::ranges::find(kModes, commandId, &ApplyMode::commandId);
  if (mode == std::end(kModes)) return false;
  session.apply = {mode->applyOptions, commandId == kWimcopyCommand};
  session.form.setCaption(session.titleCaption + mode->titleSuffix);
  std::vector<MenuItem> menu = session.form.systemMenu();
  CheckMode(menu, commandId);
  session.form.setSystemMenu(std::move(menu));
  return true;
}

}  // namespace pavoline
