#include <initializer_list>
#include <optional>

#include "disk/disk_preparation.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/text.h"
#include "session/activity_scope.h"
#include "ui/dialog_layout.h"
#include "ui/small_windows.h"

namespace pavoline {
namespace {

class PrepareDiskWindow : public Form {
 public:
  PrepareDiskWindow(Session& session, std::vector<PhysicalDisk> disks);

  // What was chosen and confirmed.
  const std::optional<DiskPreparation>& taken() const { return taken_; }

 private:
  void setTexts();
  void fillList();
  void layOut();
  void connect();
  void suggest();
  void show();
  DiskPreparation chosen() const;
  bool confirmed(const DiskPreparation& preparation);
  void take();

  Session& session_;
  std::vector<PhysicalDisk> disks_;
  std::optional<DiskPreparation> taken_;
  Label hint_, noDisk_, partitions_;
  ListView list_;
  OptionButton uefi_, bios_;
  Button prepare_, cancel_;
};

PrepareDiskWindow::PrepareDiskWindow(Session& session, std::vector<PhysicalDisk> disks)
    : Form("PrepareDisk"), session_(session), disks_(std::move(disks)) {
  for (Control* control : std::initializer_list<Control*>{&hint_, &list_, &noDisk_, &uefi_, &bios_,
                                                          &partitions_, &prepare_, &cancel_}) {
    add(*control);
  }
  defaultButton = &prepare_;
  cancelButton = &cancel_;
  setTexts();
  layOut();
  fillList();
  suggest();
  connect();
  show();
}

void PrepareDiskWindow::setTexts() {
  setCaption(More(session_, kMorePrepareTitle));
  setFont(session_.form.font());
  hint_.setText(More(session_, kMoreOnlyEmptyDisks));
  list_.setSpokenName(More(session_, kMoreOnlyEmptyDisks));
  noDisk_.setText(More(session_, kMoreNoEmptyDisk));
  uefi_.setText(More(session_, kMoreUefi));
  bios_.setText(More(session_, kMoreBios));
  prepare_.setText(More(session_, kMorePrepare));
  cancel_.setText(String(session_, kTextCancel));
}

void PrepareDiskWindow::fillList() {
  list_.setColumns({{More(session_, kMoreDiskNumber), 76 * kTwipsPerPixel},
                    {String(session_, kTextColumnDisk), 312 * kTwipsPerPixel},
                    {String(session_, kTextColumnSize), 110 * kTwipsPerPixel, true}});
  std::vector<std::vector<std::string>> rows;
  for (const PhysicalDisk& disk : disks_) {
    rows.push_back({std::to_string(disk.number), disk.model, ReadableSize(disk.bytes)});
  }
  list_.setRows(rows);
  list_.select(disks_.empty() ? -1 : 0);
  list_.setVisible(!disks_.empty());
  noDisk_.setVisible(disks_.empty());
  uefi_.setEnabled(!disks_.empty());
  bios_.setEnabled(!disks_.empty());
  focus(disks_.empty() ? static_cast<Control&>(cancel_) : list_);
}

void PrepareDiskWindow::layOut() {
  constexpr int kWidth = 542;
  constexpr int kInside = kWidth - 2 * kMargin;
  constexpr int kHintHeight = 2 * kLabelHeight, kListHeight = 130;
  constexpr int kListTop = kMargin + kHintHeight + kGap;
  constexpr int kOptionTop = kListTop + kListHeight + kMargin;
  constexpr int kPartitionsTop = kOptionTop + kCheckHeight + kGap;
  constexpr int kHeight = kPartitionsTop + 2 * kLabelHeight + kMargin + kButtonHeight + kMargin;
  SetInnerSize(*this, kWidth, kHeight);
  PlaceEndButtons({&prepare_, &cancel_}, kWidth, kHeight);
  hint_.setBounds(Pixels(kMargin, kMargin, kInside, kHintHeight));
  list_.setBounds(Pixels(kMargin, kListTop, kInside, kListHeight));
  noDisk_.setBounds(list_.bounds());
  constexpr int kOptionWidth = (kInside - kGap) / 2;
  uefi_.setBounds(Pixels(kMargin, kOptionTop, kOptionWidth, kCheckHeight));
  bios_.setBounds(Pixels(kMargin + kOptionWidth + kGap, kOptionTop, kOptionWidth, kCheckHeight));
  partitions_.setBounds(Pixels(kMargin, kPartitionsTop, kInside, 2 * kLabelHeight));
}

void PrepareDiskWindow::connect() {
  list_.onChange = [this] {
    suggest();
    show();
  };
  uefi_.onChange = [this] {
    bios_.setChosen(!uefi_.chosen());
    show();
  };
  bios_.onChange = [this] { uefi_.setChosen(!bios_.chosen()); };
  prepare_.onClick = [this] { take(); };
  cancel_.onClick = [this] { close(); };
}

void PrepareDiskWindow::suggest() {
  if (list_.selected() < 0) return;
  const auto firmware = session_.platform.environment.firmware();
  const bool uefi = SuggestedLayout(firmware, chosen().disk.bytes) == DiskLayout::kUefi;
  uefi_.setChosen(uefi);
  bios_.setChosen(!uefi);
}

// What the disk would get, or why it cannot.
void PrepareDiskWindow::show() {
  const bool any = list_.selected() >= 0;
  const bool fits = any && FitsLayout(chosen().disk.bytes, chosen().layout);
  prepare_.setEnabled(fits);
  partitions_.setText(!any   ? ""
                      : fits ? DescribePartitions(session_, chosen())
                             : More(session_, kMoreBiosTooLarge));
}

// Of a row that is chosen.
DiskPreparation PrepareDiskWindow::chosen() const {
  return {disks_[static_cast<std::size_t>(list_.selected())],
          uefi_.chosen() ? DiskLayout::kUefi : DiskLayout::kBios};
}

bool PrepareDiskWindow::confirmed(const DiskPreparation& preparation) {
  const PhysicalDisk& disk = preparation.disk;
  std::string question = More(session_, kMorePrepareQuestion);
  question = ReplaceAll(question, "%n%", std::to_string(disk.number));
  question = ReplaceAll(question, "%size%", ReadableSize(disk.bytes));
  question = ReplaceAll(question, "%disk%", disk.model);  // last: a model may hold anything
  question += "\n\n" + DescribePartitions(session_, preparation);
  return Message(session_, question + "\n\n" + String(session_, kTextConfirmTail),
                 kQuestionDefaultCancel, More(session_, kMoreConfirm)) == kAnswerOk;
}

void PrepareDiskWindow::take() {
  if (list_.selected() < 0) return;
  const DiskPreparation preparation = chosen();
  if (!confirmed(preparation)) return;
  taken_ = preparation;
  close();
}

}  // namespace

void PrepareEmptyDisk(Session& session) {
  // The question included: nothing else may begin before it is over.
  const ActivityScope preparing(session, Activity::kPreparingDisk);
  const auto disks = ListEmptyDisks(session);
  if (session.form.unloaded()) return;
  if (!disks) {
    Message(session, More(session, kMoreNoList), kErrorMessage, String(session, kTextError));
    return;
  }
  PrepareDiskWindow window(session, *disks);
  session.platform.dialogs.showModal(window);
  if (window.taken() && !session.form.unloaded()) PrepareDisk(session, *window.taken());
}

}  // namespace pavoline
