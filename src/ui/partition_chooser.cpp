#include <algorithm>

#include "disk/partitions.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/text.h"
#include "session/activity_scope.h"
#include "ui/dialog_layout.h"
#include "ui/small_windows.h"

namespace pavoline {
namespace {

class PartitionChooser : public Form {
 public:
  PartitionChooser(Session& session, const std::vector<PartitionEntry>& rows, int title,
                   TextBox& field);

 private:
  void fillList(Session& session, const std::vector<PartitionEntry>& rows);
  void layOut();
  void take();

  TextBox& field_;
  std::vector<std::string> drives_;  // of the rows
  ListView list_;
  Label noPartition_;
  Button ok_, cancel_;
};

PartitionChooser::PartitionChooser(Session& session, const std::vector<PartitionEntry>& rows,
                                   int title, TextBox& field)
    : Form("PartitionChooser"), field_(field) {
  setCaption(String(session, title));
  setFont(session.form.font());
  ok_.setText(String(session, kTextOk));
  cancel_.setText(String(session, kTextCancel));
  noPartition_.setText(String(session, kTextNoPartition));
  list_.setSpokenName(String(session, title));
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

// The disk's number as diskpart and Disk Management count, from 0.
std::string DiskNumber(const PartitionEntry& row) {
  return row.diskNumber > 0 ? std::to_string(row.diskNumber - 1) : std::string();
}

// The stated columns, and behind them what tells equal disks apart.
void PartitionChooser::fillList(Session& session, const std::vector<PartitionEntry>& rows) {
  list_.setColumns({{String(session, kTextColumnDrive), 104 * kTwipsPerPixel},
                    {String(session, kTextColumnLabel), 112 * kTwipsPerPixel},
                    {String(session, kTextColumnDisk), 156 * kTwipsPerPixel},
                    {String(session, kTextColumnFileSystem), 112 * kTwipsPerPixel},
                    {String(session, kTextColumnSize), 78 * kTwipsPerPixel, true},
                    {More(session, kMoreColumnDiskNumber), 86 * kTwipsPerPixel, true},
                    {More(session, kMoreColumnFree), 84 * kTwipsPerPixel, true}});
  for (const PartitionEntry& row : rows) drives_.push_back(row.drive);
  constexpr int kLongestWait = 500;  // milliseconds; a card reader may take seconds to answer
  const auto free = session.platform.drives.freeBytesSoon(drives_, kLongestWait);
  std::vector<std::vector<std::string>> lines;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const PartitionEntry& row = rows[i];
    lines.push_back({row.drive, row.label, row.disk, row.fileSystem, row.size});
    const bool letterless = drives_[i].empty();  // the answer is then another drive's
    if (letterless) lines.back().front() = More(session, kMoreLetterless);
    lines.back().push_back(DiskNumber(row));
    lines.back().push_back(free[i] && !letterless ? ReadableSize(*free[i]) : std::string());
  }
  list_.setRows(lines);

  const std::string current = LowerAscii(field_.text());
  const auto match = std::find_if(drives_.begin(), drives_.end(), [&](const std::string& drive) {
    return LowerAscii(drive) == current;
  });
  list_.select(match == drives_.end() ? 0 : static_cast<int>(match - drives_.begin()));

  list_.setVisible(!rows.empty());
  noPartition_.setVisible(rows.empty());
  ok_.setEnabled(!rows.empty());
  focus(rows.empty() ? static_cast<Control&>(cancel_) : list_);
}

void PartitionChooser::layOut() {
  constexpr int kWidth = 776;
  constexpr int kHeight = 290;
  SetInnerSize(*this, kWidth, kHeight);
  PlaceEndButtons({&ok_, &cancel_}, kWidth, kHeight);
  const int height = kHeight - 3 * kMargin - kButtonHeight;
  list_.setBounds(Pixels(kMargin, kMargin, kWidth - 2 * kMargin, height));
  noPartition_.setBounds(list_.bounds());
}

void PartitionChooser::take() {
  if (list_.selected() < 0) return;
  field_.setText(drives_[static_cast<std::size_t>(list_.selected())]);
  close();
}

}  // namespace

void ShowPartitionChooser(Session& session, PartitionListKind kind) {
  const bool boot = kind == PartitionListKind::kBoot;
  // Disks may have come or gone since the last look; a tool that runs for the source is not
  // disturbed by another one.
  if (session.activity == Activity::kIdle) {
    const ActivityScope listing(session, Activity::kListing);
    RefreshPartitions(session);
  }
  if (session.form.unloaded()) return;
  std::vector<PartitionEntry> rows = boot ? session.bootRows : session.installRows;
  // Without a letter it is chosen by an empty field: Start offers to lend it one.
  const PartitionEntry* letterless =
      boot ? LetterlessBootEntry(session, session.form.text[kInstallPartition].text()) : nullptr;
  if (letterless != nullptr) rows.push_back(*letterless);
  PartitionChooser chooser(session, rows, boot ? kTextChooseBootTitle : kTextChooseInstallTitle,
                           session.form.text[boot ? kBootPartition : kInstallPartition]);
  session.platform.dialogs.showModal(chooser);
}

}  // namespace pavoline
