#include "app/program.h"

#include <utility>

#include "app/browse.h"
#include "app/closing.h"
#include "app/hot_keys.h"
#include "app/main_buttons.h"
#include "app/startup.h"
#include "disk/partitions.h"
#include "form/text_numbers.h"
#include "install/installation.h"
#include "install/record.h"
#include "platform/dialogs.h"
#include "platform/text.h"
#include "source/image_source.h"
#include "ui/system_menu.h"

namespace pavoline {

Program::Program(Platform& platform, Form1& form) : session_(platform, form) { connect(); }

bool Program::load() {
  InitializeProgram(session_);
  return LoadMainWindow(session_);
}

void Program::fault(const std::string& what) {
  Journal(session_, "unexpected error: " + what);
  Message(session_, ReplaceAll(More(session_, kMoreFault), "%e%", what), kErrorMessage,
          String(session_, kTextError));
  const auto ended = std::exchange(session_.installation, nullptr);
  session_.exitCode = ExitCode::kFault;
  session_.form.unload();
  // Behind the window's end: nothing is waited for in a state that nobody expected.
  CloseRecord(session_, ended.get(),
              {Outcome::kFailed, "", {what, "", kErrorMessage, ExitCode::kFault}});
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
  form.menu.onClick = [&session] { OpenMenu(session); };
  form.stop.onClick = [&session] { StopRequested(session); };
  for (int index = 0; index <= kStart; ++index) {
    form.command1[index].onClick = [&session, index] { Command1_Click(session, index); };
  }
  for (const OptionRow& row : form.optionRows) {
    row.box.onChange = [&row] { Check_Click(row); };
  }

  for (const int index : {kBootPartition, kInstallPartition}) {
    form.text[index].onChange = [&session] { ShowPartitionFacts(session); };
  }

  form.timer1.onTick = [&session] { ApplyTick(session); };
  // One timer serves start-up and the Ghost restore.
  form.timer2.onTick = [&session] {
    session.installation ? RestoreTick(session) : StartupTick(session);
  };
  form.timer3.onTick = [&session] { DriverTick(session); };
  form.timer4.onTick = [&session] { AutoStartTick(session); };
  form.overallTimer.onTick = [&session] { OverallTick(session); };
}

}  // namespace pavoline
