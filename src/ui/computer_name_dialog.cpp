#include <initializer_list>

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/platform.h"
#include "session/machine_facts.h"
#include "ui/dialog_layout.h"
#include "ui/left_bytes.h"
#include "ui/small_windows.h"

namespace pavoline {
namespace {

// Bytes that Windows takes of each name.
constexpr int kUserNameBytes = 20;
constexpr int kComputerNameBytes = 15;
constexpr int kWorkgroupBytes = 15;

constexpr char32_t kBackspace = 8;

// Typed characters are held to what all three names may contain; pasted text is not.
bool IsNameCharacter(char32_t c) {
  return c == kBackspace || c == '-' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
         (c >= 'A' && c <= 'Z');
}

enum NameField { kComputer = 0, kGroup = 1 };

class Form2 : public Form {
 public:
  explicit Form2(Session& session);

 private:
  void fill();
  void layOut();
  void equalHeights();
  void store();

  Session& session_;
  Label label_[3];
  ComboBox combo1_{true};  // user name
  TextBox text_[2];
  Button ok_;
};

Form2::Form2(Session& session) : Form("Form2"), session_(session) {
  for (Control* control : std::initializer_list<Control*>{
           &label_[0], &combo1_, &label_[1], &text_[kComputer], &label_[2], &text_[kGroup], &ok_}) {
    add(*control);
  }
  setCaption(String(session, kTextNamesTitle));
  setFont(session.form.font());
  label_[0].setText(String(session, kTextUserName));
  label_[1].setText(String(session, kTextComputerName));
  label_[2].setText(String(session, kTextWorkgroup));
  ok_.setText(String(session, kTextOk));
  // Every way of closing stores, so there is no button that would promise otherwise.
  defaultButton = &ok_;
  cancelButton = &ok_;
  fill();
  layOut();
  focus(combo1_);

  combo1_.onKeyPress = IsNameCharacter;
  for (TextBox& field : text_) field.onKeyPress = IsNameCharacter;
  combo1_.onDropDown = [this] { equalHeights(); };
  ok_.onClick = [this] { close(); };
  onUnload = [this] { store(); };
}

void Form2::fill() {
  const InstallOptions& options = session_.options;
  combo1_.addItem("Administrator");  // the user that the built-in answer file logs on
  combo1_.setText(options.pcUser);
  text_[kComputer].setText(options.computerName);
  text_[kGroup].setText(options.workGroup.empty() ? "WorkGroup" : options.workGroup);
}

void Form2::layOut() {
  constexpr int kWidth = 372;
  constexpr int kLabelWidth = 142;
  constexpr int kFieldLeft = kMargin + kLabelWidth + kGap;
  constexpr int kRowPitch = 32;
  constexpr int kHeight = kMargin + 3 * kRowPitch + kGap + kButtonHeight + kMargin;
  SetInnerSize(*this, kWidth, kHeight);
  PlaceEndButtons({&ok_}, kWidth, kHeight);
  Control* const fields[] = {&combo1_, &text_[kComputer], &text_[kGroup]};
  for (int row = 0; row < 3; ++row) {
    const int top = kMargin + row * kRowPitch;
    label_[row].setBounds(Pixels(kMargin, top + 4, kLabelWidth, kLabelHeight));
    fields[row]->setBounds(Pixels(kFieldLeft, top, kWidth - kMargin - kFieldLeft, kFieldHeight));
  }
  equalHeights();
}

// A drop-down box takes its height from the font; the fields follow it.
void Form2::equalHeights() {
  for (TextBox& field : text_) {
    Rect bounds = field.bounds();
    bounds.height = combo1_.bounds().height;
    field.setBounds(bounds);
  }
}

// The names need not be whole characters: only single-byte ones can be typed.
void Form2::store() {
  TextServices& services = session_.platform.text;
  const auto cut = [&](const std::string& text, int bytes) {
    return LeftBytes(services, text, bytes, CutMode::kSplit);
  };
  InstallOptions& options = session_.options;
  options.pcUser = cut(combo1_.text(), kUserNameBytes);
  // A placeholder is longer than what it stands for.
  const std::string& computer = text_[kComputer].text();
  options.computerName = NamesMachine(computer) ? computer : cut(computer, kComputerNameBytes);
  options.workGroup = cut(text_[kGroup].text(), kWorkgroupBytes);
}

}  // namespace

void ShowComputerNameDialog(Session& session) {
  Form2 dialog(session);
  session.platform.dialogs.showModal(dialog);
}

}  // namespace pavoline
