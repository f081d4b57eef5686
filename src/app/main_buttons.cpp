#include "app/main_buttons.h"

#include "app/browse.h"
#include "form/text_numbers.h"
#include "install/start.h"
#include "platform/dialogs.h"
#include "platform/text.h"
#include "source/image_search.h"
#include "ui/small_windows.h"

namespace pavoline {
namespace {

void ChoosePartition(Session& session, PartitionListKind kind) {
  if (session.form.marks.startupStage == 0) {
    Message(session, String(session, kTextListNotReady), kInformationMessage, "Initializing...");
    return;
  }
  if (May(session, Action::kChoose)) ShowPartitionChooser(session, kind);
}

void ChooseBoot(Session& session) { ChoosePartition(session, PartitionListKind::kBoot); }
void ChooseInstall(Session& session) { ChoosePartition(session, PartitionListKind::kInstall); }

}  // namespace

void Command1_Click(Session& session, int index) {
  static constexpr void (*kHandlers[])(Session&) = {
      BrowseImage,   ChooseBoot,   ChooseInstall,     BrowseAnswerFile,
      BrowseDrivers, BrowsePlugin, StartInstallation,
  };
  kHandlers[index](session);
}

void Check_Click(const OptionRow& row) {
  row.setOpen(row.box.ticked());
  if (row.box.ticked() && row.browsesWhenEmpty && row.field.text().empty()) row.browse.press();
}

void ToggleSearch(Session& session) {
  SearchState& search = session.search;
  if (search.running) {
    search.stop = true;
    return;
  }
  if (!May(session, Action::kSearch)) return;  // perhaps a mounted image is being searched
  if (!SearchDrives(session)) return;
  session.form.status.setText(
      ReplaceAll(String(session, kTextSearchDone), "%n%", std::to_string(search.found.size())));
  if (!search.found.empty()) ShowImageList(session);
}

bool SearchDrives(Session& session) {
  SearchState& search = session.search;
  Form1& form = session.form;
  search.found.clear();
  search.stop = false;
  search.running = true;
  form.search.setText(String(session, kTextStop));
  SearchImages(session, SearchMode::kDrives, "");
  search.running = false;
  form.search.setText(String(session, kTextSearch));
  return session.activity == Activity::kIdle;
}

void ShowEditionDetails(Session& session) {
  const WimImageInfo* edition = ChosenEdition(session);
  session.form.details.setText(edition == nullptr ? std::string() : edition->detailText);
}

}  // namespace pavoline
