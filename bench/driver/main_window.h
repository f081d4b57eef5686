#pragma once

#include <algorithm>
#include <string>

#include "driver/dialogs.h"
#include "driver/window.h"
#include "form/form1.h"

// The installer's main window seen from outside, its controls by the names they have inside.
namespace bench {

class MainWindow {
 public:
  explicit MainWindow(std::string program = "Pavoline.exe") : program_(std::move(program)) {}

  const std::string& program() const { return program_; }

  // Told from the program's dialogs by its class: their controls are numbered alike.
  Window window() const {
    for (const Window& window : WindowsOf(program_)) {
      if (window.visible() && window.className() == "Pavoline." + model_.name()) return window;
    }
    return {};
  }
  bool waitUntilShown(int milliseconds) const {
    return WaitUntil(milliseconds, [this] { return static_cast<bool>(window()); });
  }

  // control([](auto& form) -> auto& { return form.command1[kStart]; })
  template <class Choice>
  Window control(Choice choice) const {
    return window().child(idOf(choice(model_)));
  }
  Window source() const { return window().child(idOf(model_.combo1)); }
  Window editions() const { return window().child(idOf(model_.combo[pavoline::kEditions])); }
  Window plugin() const { return window().child(idOf(model_.combo2)); }
  Window text(int index) const { return window().child(idOf(model_.text[index])); }
  Window check(int index) const { return window().child(idOf(model_.check[index])); }
  Window command(int index) const { return window().child(idOf(model_.command1[index])); }
  Window search() const { return window().child(idOf(model_.search)); }
  Window menu() const { return window().child(idOf(model_.menu)); }
  Window stop() const { return window().child(idOf(model_.stop)); }
  Window overall() const { return window().child(idOf(model_.overall)); }
  Window status() const { return window().child(idOf(model_.status)); }
  Window progressBar() const { return window().child(idOf(model_.progressBar1)); }

 private:
  static constexpr int kFirstId = 1000;

  int idOf(const pavoline::Control& control) const {
    const auto& controls = model_.controls();
    const auto place = std::find(controls.begin(), controls.end(), &control);
    return kFirstId + static_cast<int>(place - controls.begin());
  }

  std::string program_;
  pavoline::Form1 model_;
};

}  // namespace bench
