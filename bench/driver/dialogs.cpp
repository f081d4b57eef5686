#include "driver/dialogs.h"

namespace bench {
namespace {

constexpr char kDialogClass[] = "#32770";
constexpr int kAnswerTime = 5000;  // milliseconds
constexpr int kFileNameField =
    0x480;  // of the system's file chooser; 0x47C where it is a combo box
constexpr int kFileNameCombo = 0x47C;

bool Gone(const Window& window) { return !window || !window.visible(); }

// A message box is a dialog of nothing but an icon, texts and buttons.
bool IsMessage(const Window& window) {
  if (!window.visible() || window.className() != kDialogClass) return false;
  bool button = false;
  for (const Window& child : window.children()) {
    const std::string name = child.className();
    if (name != "Static" && name != "Button") return false;
    button |= name == "Button";
  }
  return button;
}

// The file list below the chooser bears the number of its OK button, too.
Window ButtonOf(const Window& dialog, int id) { return Window(GetDlgItem(dialog.handle(), id)); }

Window FileNameField(const Window& dialog) {
  const Window field = dialog.child(kFileNameField);
  return field ? field : dialog.child(kFileNameCombo);
}

}  // namespace

std::optional<Message> ShownMessage(const std::string& program) {
  for (const Window& window : WindowsOf(program)) {
    if (!IsMessage(window)) continue;
    Message message{window.text(), "", false, window};
    for (const Window& child : window.children()) {
      if (child.className() == "Static" && !child.text().empty()) message.text = child.text();
      if (child.className() == "Button" && child.id() == IDCANCEL && window.child(IDOK)) {
        message.cancellable = true;
      }
    }
    return message;
  }
  return std::nullopt;
}

std::optional<Message> WaitForMessage(const std::string& program, int milliseconds) {
  std::optional<Message> message;
  WaitUntil(milliseconds, [&] { return (message = ShownMessage(program)).has_value(); });
  return message;
}

bool Answer(const Message& message, int button) {
  // A box with a single button may have given it either identifier.
  Window pressed = message.window.child(button);
  if (!pressed) pressed = message.window.childOfClass("Button");
  pressed.click();
  return WaitUntil(kAnswerTime, [&] { return Gone(message.window); });
}

bool AnswerFileDialog(const std::string& program, const std::string& path, int milliseconds) {
  Window dialog;
  const bool shown = WaitUntil(milliseconds, [&] {
    for (const Window& window : WindowsOf(program)) {
      if (window.visible() && window.className() == kDialogClass && !IsMessage(window))
        dialog = window;
    }
    return static_cast<bool>(dialog) && ButtonOf(dialog, IDOK);
  });
  if (!shown) return false;
  if (path.empty()) {
    ButtonOf(dialog, IDCANCEL).click();
  } else {
    const Window field = FileNameField(dialog);
    (field ? field : dialog.childOfClass("Edit")).enterText(path);
    ButtonOf(dialog, IDOK).click();
  }
  return WaitUntil(kAnswerTime, [&] { return Gone(dialog); });
}

}  // namespace bench
