#include "app/hot_keys.h"

#include "app/main_buttons.h"
#include "form/main_layout.h"
#include "form/text_numbers.h"
#include "ui/companion_tools.h"
#include "ui/small_windows.h"
#include "ui/system_menu.h"

namespace pavoline {
namespace {

// A tool that takes the program's place closes it; one that is not found is ignored.
bool StartByKey(Workplace& workplace, int keyCode) {
  const CompanionTool* tool = ToolOfKey(keyCode);
  if (!tool) return false;
  if (StartTool(workplace, *tool) && tool->closesProgram) workplace.form.unload();
  return true;
}

void ShowHelp(Session& session) { HandleSystemCommand(session, kMenuHelp); }

struct HotKey {
  int keyCode;
  int shift;
  void (*run)(Session&);
};

constexpr HotKey kHotKeys[] = {
    {kKeyF1, kShiftNone, ShowHelp},
    {kKeyF2, kShiftNone, ToggleWidth},
    {kKeyF3, kShiftNone, ToggleSearch},
    {'N', kControlKey, ShowComputerNameDialog},
};

}  // namespace

bool HandleHotKey(Session& session, int keyCode, int shift) {
  if (!May(session, Action::kUseKeys)) return false;
  for (const HotKey& key : kHotKeys) {
    if (key.keyCode != keyCode || key.shift != shift) continue;
    key.run(session);
    return true;
  }
  return shift == kControlKey && StartByKey(session, keyCode);
}

void ToggleWidth(Session& session) {
  Form1& form = session.form;
  const bool wide = form.width() == kNarrowWidth;
  form.setSize(wide ? kWideWidth : kNarrowWidth, form.height());
  form.status.setText(String(session, wide ? kTextStatusWide : kTextStatusNormal));
  ShowOptionFrames(form, wide);
}

}  // namespace pavoline
