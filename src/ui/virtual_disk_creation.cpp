#include "ui/virtual_disk_creation.h"

#include <initializer_list>

#include "disk/virtual_disk.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "ui/dialog_layout.h"

namespace pavoline {
namespace {

constexpr float kFirstSystemWithVhdx = 6.2F;

class VirtualDiskCreation : public Form {
 public:
  explicit VirtualDiskCreation(Session& session);

 private:
  void setTexts();
  void layOut();
  void connect();
  VirtualDiskFormat format() const;
  void changeExtension();
  void browse();
  void create();

  Session& session_;
  Label fileLabel_, formatLabel_, sizeLabel_, typeLabel_, labelLabel_;
  TextBox file_, size_, label_;
  Button browse_, create_, close_;
  OptionButton vhd_, vhdx_, fixed_, expandable_;
  ComboBox unit_;
  bool running_ = false;
};

VirtualDiskCreation::VirtualDiskCreation(Session& session)
    : Form("VirtualDiskCreation"), session_(session) {
  for (Control* control : std::initializer_list<Control*>{
           &fileLabel_, &file_, &browse_, &formatLabel_, &vhd_, &vhdx_, &sizeLabel_, &size_, &unit_,
           &typeLabel_, &fixed_, &expandable_, &labelLabel_, &label_, &create_, &close_}) {
    add(*control);
  }
  defaultButton = &create_;
  cancelButton = &close_;
  setTexts();
  layOut();
  for (const char* unit : {"MB", "GB", "TB"}) unit_.addItem(unit);
  unit_.select(static_cast<int>(SizeUnit::kGigabytes));
  size_.setText("40");
  vhd_.setChosen(true);
  vhdx_.setEnabled(session.osVersion >= kFirstSystemWithVhdx);
  expandable_.setChosen(true);
  focus(file_);
  connect();
}

void VirtualDiskCreation::setTexts() {
  setCaption(String(session_, kTextCreateTitle));
  setFont(session_.form.font());
  fileLabel_.setText(String(session_, kTextFile));
  formatLabel_.setText(String(session_, kTextFormat));
  sizeLabel_.setText(String(session_, kTextSize));
  typeLabel_.setText(String(session_, kTextType));
  labelLabel_.setText(String(session_, kTextVolumeLabel));
  vhd_.setText("VHD");
  vhdx_.setText("VHDX");
  fixed_.setText(String(session_, kTextFixed));
  expandable_.setText(String(session_, kTextExpandable));
  browse_.setText("...");
  browse_.setSpokenName(String(session_, kTextBrowseTitle));
  browse_.setTooltip(String(session_, kTextBrowseTitle));
  unit_.setSpokenName("MB, GB, TB");
  create_.setText(String(session_, kTextCreateNow));
  close_.setText(String(session_, kTextClose));
}

void VirtualDiskCreation::layOut() {
  constexpr int kWidth = 480;
  constexpr int kLabelWidth = 134;
  constexpr int kFieldLeft = kMargin + kLabelWidth + kGap;
  constexpr int kFieldEnd = kWidth - kMargin;
  constexpr int kRowPitch = 32;
  constexpr int kRows = 5;
  constexpr int kHeight = kMargin + kRows * kRowPitch + kGap + kButtonHeight + kMargin;
  constexpr int kSizeWidth = 96;
  constexpr int kUnitWidth = 64;
  // Two options stand in one line.
  constexpr int kOptionWidth = (kFieldEnd - kFieldLeft - kGap) / 2;
  SetInnerSize(*this, kWidth, kHeight);
  PlaceEndButtons({&create_, &close_}, kWidth, kHeight);

  const auto top = [](int row) { return kMargin + row * kRowPitch; };
  int row = 0;
  for (Label* label : {&fileLabel_, &formatLabel_, &sizeLabel_, &typeLabel_, &labelLabel_}) {
    label->setBounds(Pixels(kMargin, top(row++) + 4, kLabelWidth, kLabelHeight));
  }
  const int browse = kFieldEnd - kBrowseWidth;
  file_.setBounds(Pixels(kFieldLeft, top(0), browse - kGap - kFieldLeft, kFieldHeight));
  browse_.setBounds(Pixels(browse, top(0), kBrowseWidth, kFieldHeight));
  const auto options = [&](OptionButton& left, OptionButton& right, int line) {
    left.setBounds(Pixels(kFieldLeft, top(line) + 3, kOptionWidth, kCheckHeight));
    right.setBounds(
        Pixels(kFieldLeft + kOptionWidth + kGap, top(line) + 3, kOptionWidth, kCheckHeight));
  };
  options(vhd_, vhdx_, 1);
  size_.setBounds(Pixels(kFieldLeft, top(2), kSizeWidth, kFieldHeight));
  unit_.setBounds(Pixels(kFieldLeft + kSizeWidth + kGap, top(2), kUnitWidth, kFieldHeight));
  options(fixed_, expandable_, 3);
  label_.setBounds(Pixels(kFieldLeft, top(4), kFieldEnd - kFieldLeft, kFieldHeight));
}

void VirtualDiskCreation::connect() {
  vhd_.onChange = [this] { vhdx_.setChosen(!vhd_.chosen()); };
  vhdx_.onChange = [this] {
    vhd_.setChosen(!vhdx_.chosen());
    changeExtension();
  };
  fixed_.onChange = [this] { expandable_.setChosen(!fixed_.chosen()); };
  expandable_.onChange = [this] { fixed_.setChosen(!expandable_.chosen()); };
  browse_.onClick = [this] { browse(); };
  create_.onClick = [this] { create(); };
  close_.onClick = [this] { close(); };
  onQueryUnload = [this] { return !running_; };
}

VirtualDiskFormat VirtualDiskCreation::format() const {
  return vhdx_.chosen() ? VirtualDiskFormat::kVhdx : VirtualDiskFormat::kVhd;
}

// Follows the format; a name that still lacks an extension gets it when the disk is created.
void VirtualDiskCreation::changeExtension() {
  const std::string name = LowerAscii(file_.text());
  if (!EndsWith(name, ".vhd") && !EndsWith(name, ".vhdx")) return;
  file_.setText(WithVirtualDiskExtension(file_.text(), format()));
}

void VirtualDiskCreation::browse() {
  const std::string patterns =
      format() == VirtualDiskFormat::kVhdx ? "*.vhdx;*.vhd" : "*.vhd;*.vhdx";
  FileRequest request;
  request.title = String(session_, kTextCreateTitle);
  request.filters = {{String(session_, kTextVirtualDiskFilter) + "(" + patterns + ")", patterns}};
  request.initialFolder = ParentFolder(file_.text());
  request.initialName = FileName(file_.text());
  const std::string path = session_.platform.dialogs.saveFile(request);
  if (!path.empty()) file_.setText(WithVirtualDiskExtension(path, format()));
}

void VirtualDiskCreation::create() {
  VirtualDiskRequest request;
  request.file = file_.text();
  request.format = format();
  request.size = size_.text();
  request.unit = static_cast<SizeUnit>(unit_.selected());
  request.type = fixed_.chosen() ? VirtualDiskType::kFixed : VirtualDiskType::kExpandable;
  request.label = label_.text();

  running_ = true;
  create_.setEnabled(false);
  close_.setEnabled(false);
  const bool created = CreateVirtualDisk(session_, request);
  create_.setEnabled(true);
  close_.setEnabled(true);
  running_ = false;
  if (created) close();
}

}  // namespace

void ShowVirtualDiskCreation(Session& session) {
  VirtualDiskCreation window(session);
  session.platform.dialogs.showModal(window);
}

}  // namespace pavoline
