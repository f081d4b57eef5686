#include "app/program.h"

#include "app/browse.h"
#include "app/closing.h"
#include "app/hot_keys.h"
#include "app/main_buttons.h"
#include "app/startup.h"
#include "engine/apply_monitor.h"
#include "engine/ghost_restore.h"
#include "postinstall/driver_injection.h"
#include "source/image_source.h"
#include "ui/system_menu.h"

namespace pavoline {

Program::Program(Platform& platform, Form1& form) : session_(platform, form) { connect(); }

bool Program::load() {
  InitializeProgram(session_);
  return LoadMainWindow(session_);
}

void Program::connect() {
  Session& session = session_;
  Form1& form = session.form;
  form.onQueryUnload = [&session] { return QueryUnload(session); };
  form.onUnload = [&session] { Unload(session); };
  form.onKeyDown = [&session](int key, int shift) { return HandleHotKey(session, key, shift); };
  form.onSystemCommand = [&session](int id) { return HandleSystemCommand(session, id); };
  form.onDropFiles = [&session](const auto& files) { SourceDropped(session, files); };

  form.combo1.onChange = [&session] { SourceChanged(session); };
  form.combo[kEditions].onChange = [&session] { ShowEditionDetails(session); };
  form.search.onClick = [&session] { ToggleSearch(session); };
  for (int index = 0; index <= kStart; ++index) {
    form.command1[index].onClick = [&session, index] { Command1_Click(session, index); };
  }
  for (int index = kUseAnswerFile; index <= kRunPlugin; ++index) {
    form.check[index].onChange = [&session, index] { Check_Click(session, index); };
  }

  form.timer1.onTick = [&session] { ApplyMonitorTick(session); };
  // One timer serves start-up and the Ghost restore; its interval tells which.
  form.timer2.onTick = [&session] {
    session.form.timer2.interval() == kStartupInterval ? StartupTick(session) : GhostTick(session);
  };
  form.timer3.onTick = [&session] { DriverMonitorTick(session); };
  form.timer4.onTick = [&session] { AutoStartTick(session); };
}

}  // namespace pavoline
