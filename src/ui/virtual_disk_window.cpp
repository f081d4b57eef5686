#include <initializer_list>

#include "disk/partitions.h"
#include "disk/virtual_disk.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "session/activity_scope.h"
#include "ui/dialog_layout.h"
#include "ui/small_windows.h"
#include "ui/virtual_disk_creation.h"

namespace pavoline {
namespace {

class VirtualDiskWindow : public Form {
 public:
  explicit VirtualDiskWindow(Session& session);

 private:
  using Action = bool (*)(Session&, const std::string& file);

  void layOut();
  void onChosenFile(int title, Action action);
  void create();

  Session& session_;
  Button attach_, detach_, create_, close_;
  bool running_ = false;
};

VirtualDiskWindow::VirtualDiskWindow(Session& session)
    : Form("VirtualDiskWindow"), session_(session) {
  for (Button* button : {&attach_, &detach_, &create_, &close_}) add(*button);
  setCaption(String(session, kTextVirtualDisk));
  setFont(session.form.font());
  attach_.setText(String(session, kTextAttach));
  detach_.setText(String(session, kTextDetach));
  create_.setText(String(session, kTextCreate));
  close_.setText(String(session, kTextClose));
  defaultButton = &attach_;
  cancelButton = &close_;
  layOut();
  focus(attach_);

  attach_.onClick = [this] { onChosenFile(kTextAttachTitle, AttachVirtualDisk); };
  detach_.onClick = [this] { onChosenFile(kTextDetachTitle, DetachVirtualDisk); };
  create_.onClick = [this] { create(); };
  close_.onClick = [this] { close(); };
  onQueryUnload = [this] { return !running_; };
}

void VirtualDiskWindow::layOut() {
  constexpr int kWidth = 282;
  constexpr int kRowPitch = kButtonHeight + kGap;
  constexpr int kHeight = kMargin + 3 * kRowPitch + kMargin + kButtonHeight + kMargin;
  SetInnerSize(*this, kWidth, kHeight);
  int top = kMargin;
  for (Button* button : {&attach_, &detach_, &create_}) {
    button->setBounds(Pixels(kMargin, top, kWidth - 2 * kMargin, kButtonHeight));
    top += kRowPitch;
  }
  PlaceEndButtons({&close_}, kWidth, kHeight);
}

void VirtualDiskWindow::onChosenFile(int title, Action action) {
  const std::string patterns = VirtualDiskPatterns(session_.osVersion);
  FileRequest request;
  request.title = String(session_, title);
  request.filters = {{String(session_, kTextVirtualDiskFilter) + "(" + patterns + ")", patterns}};
  const std::string file = session_.platform.dialogs.openFile(request);
  if (file.empty()) return;

  // The script takes its time, in which the window is still there to be clicked at.
  running_ = true;
  for (Button* button : {&attach_, &detach_, &create_, &close_}) button->setEnabled(false);
  action(session_, file);
  for (Button* button : {&attach_, &detach_, &create_, &close_}) button->setEnabled(true);
  running_ = false;
}

void VirtualDiskWindow::create() { ShowVirtualDiskCreation(session_); }

}  // namespace

void ShowVirtualDiskWindow(Session& session) {
  {
    const ActivityScope working(session, Activity::kVirtualDisk);
    VirtualDiskWindow window(session);
    session.platform.dialogs.showModal(window);
  }
  if (session.form.unloaded()) return;
  // A volume may have come or gone whatever diskpart reported.
  const ActivityScope listing(session, Activity::kListing);
  RefreshPartitions(session);
}

}  // namespace pavoline
