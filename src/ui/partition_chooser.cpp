#include <algorithm>

#include "disk/partitions.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/text.h"
#include "session/activity_scope.h"
#include "ui/dialog_layout.h"
#include "ui/small_windows.h"

namespace pavoline {
namespace {

class PartitionChooser : public Form {
 public:
  PartitionChooser(const Session& session, const std::vector<PartitionRow>& rows, int title,
                   TextBox& field);

 private:
  void fillList(const Session& session, const std::vector<PartitionRow>& rows);
  void layOut();
  void take();

  TextBox& field_;
  ListView list_;
  Label noPartition_;
  Button ok_, cancel_;
};

PartitionChooser::PartitionChooser(const Session& session, const std::vector<PartitionRow>& rows,
                                   int title, TextBox& field)
    : Form("PartitionChooser"), field_(field) {
  setCaption(String(session, title));
  setFont(session.form.font());
  ok_.setText(String(session, kTextOk));
  cancel_.setText(String(session, kTextCancel));
  noPartition_.setText(String(session, kTextNoPartition));
  for (Control* control : std::initializer_list<Control*>{&list_, &noPartition_, &ok_, &cancel_}) {
    add(*control);
  }
  defaultButton = &ok_;
  cancelButton = &cancel_;
  layOut();
  fillList(session, rows);

  list_.onActivate = [this] { take(); };
  list_.onChange = [this] { ok_.setEnabled(list_.selected() >= 0); };
  ok_.onClick = [this] { take(); };
  cancel_.onClick = [this] { close(); };
}

void PartitionChooser::fillList(const Session& session, const std::vector<PartitionRow>& rows) {
  list_.setColumns({{String(session, kTextColumnDrive), 74 * kTwipsPerPixel},
                    {String(session, kTextColumnLabel), 116 * kTwipsPerPixel},
                    {String(session, kTextColumnDisk), 182 * kTwipsPerPixel},
                    {String(session, kTextColumnFileSystem), 116 * kTwipsPerPixel},
                    {String(session, kTextColumnSize), 90 * kTwipsPerPixel, true}});
  std::vector<std::vector<std::string>> lines;
  for (const PartitionRow& row : rows) lines.push_back(row.columns);
  list_.setRows(lines);

  const std::string current = LowerAscii(field_.text());
  const auto match = std::find_if(rows.begin(), rows.end(), [&](const PartitionRow& row) {
    return LowerAscii(row.drive()) == current;
  });
  list_.select(match == rows.end() ? 0 : static_cast<int>(match - rows.begin()));

  list_.setVisible(!rows.empty());
  noPartition_.setVisible(rows.empty());
  ok_.setEnabled(!rows.empty());
  focus(rows.empty() ? static_cast<Control&>(cancel_) : list_);
}

void PartitionChooser::layOut() {
  constexpr int kWidth = 622;
  constexpr int kHeight = 290;
  SetInnerSize(*this, kWidth, kHeight);
  PlaceEndButtons({&ok_, &cancel_}, kWidth, kHeight);
  const int height = kHeight - 3 * kMargin - kButtonHeight;
  list_.setBounds(Pixels(kMargin, kMargin, kWidth - 2 * kMargin, height));
  noPartition_.setBounds(list_.bounds());
}

void PartitionChooser::take() {
  if (list_.selected() < 0) return;
  field_.setText(list_.rows()[static_cast<std::size_t>(list_.selected())].front());
  close();
}

}  // namespace

void ShowPartitionChooser(Session& session, PartitionPurpose purpose) {
  const bool boot = purpose == PartitionPurpose::kBoot;
  // Disks may have come or gone since the last look; a tool that runs for the source is not
  // disturbed by another one.
  if (session.activity == Activity::kIdle) {
    const ActivityScope listing(session, Activity::kListing);
    RefreshPartitions(session);
  }
  if (session.form.unloaded()) return;
  PartitionChooser chooser(session, boot ? session.bootRows : session.installRows,
                           boot ? kTextChooseBootTitle : kTextChooseInstallTitle,
                           session.form.text[boot ? kBootPartition : kInstallPartition]);
  session.platform.dialogs.showModal(chooser);
}

}  // namespace pavoline
