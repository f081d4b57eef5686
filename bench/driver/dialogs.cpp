#include "driver/dialogs.h"

namespace bench {
namespace {

constexpr char kDialogClass[] = "#32770";
constexpr int kAnswerTime = 5000;  // milliseconds
constexpr int kFileNameField =
    0x480;  // of the system's file chooser; 0x47C where it is a combo box
constexpr int kFileNameCombo = 0x47C;

bool gone(const Window& window) { return !window || !window.visible(); }

// A message box is a dialog of nothing but an icon, texts and buttons.
bool isMessage(const Window& window) {
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
Window buttonOf(const Window& dialog, int id) { return Window(GetDlgItem(dialog.handle(), id)); }

Window fileNameField(const Window& dialog) {
  const Window field = dialog.child(kFileNameField);
  return field ? field : dialog.child(kFileNameCombo);
}

}  // namespace

std::optional<Message> shownMessage(const std::string& program) {
  for (const Window& window : windowsOf(program)) {
    if (!isMessage(window)) continue;
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

std::optional<Message> waitForMessage(const std::string& program, int milliseconds) {
  std::optional<Message> message;
  waitUntil(milliseconds, [&] { return (message = shownMessage(program)).has_value(); });
  return message;
}

bool answer(const Message& message, int button) {
  // A box with a single button may have given it either identifier.
  Window pressed = message.window.child(button);
  if (!pressed) pressed = message.window.childOfClass("Button");
  pressed.click();
  return waitUntil(kAnswerTime, [&] { return gone(message.window); });
}

bool answerFileDialog(const std::string& program, const std::string& path, int milliseconds) {
  Window dialog;
  const bool shown = waitUntil(milliseconds, [&] {
    for (const Window& window : windowsOf(program)) {
      if (window.visible() && window.className() == kDialogClass && !isMessage(window))
        dialog = window;
    }
    return static_cast<bool>(dialog) && buttonOf(dialog, IDOK);
  });
  if (!shown) return false;
  if (path.empty()) {
    buttonOf(dialog, IDCANCEL).click();
  } else {
    const Window field = fileNameField(dialog);
    (field ? field : dialog.childOfClass("Edit")).enterText(path);
    buttonOf(dialog, IDOK).click();
  }
  return waitUntil(kAnswerTime, [&] { return gone(dialog); });
}

}  // namespace bench
