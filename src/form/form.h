#pragma once

#include <functional>
#include <string>
#include <vector>

#include "form/control.h"

namespace pavoline {

// One entry of the menu that a form adds above its system menu's standard items.
struct MenuItem {
  int id = 0;        // command, or of a submenu 0
  std::string text;  // empty: a separator
  bool checked = false;
  int image = 0;                // resource number of the 16x16 picture; 0: none
  std::vector<MenuItem> items;  // of a submenu
  bool enabled = true;

  bool separator() const { return text.empty(); }
};

// Keys that logic knows by name; the values are the platform's virtual-key codes.
enum KeyCode { kKeyF1 = 0x70, kKeyF2 = 0x71, kKeyF3 = 0x72 };
// Modifiers in the `shift` argument of key handlers; they add up.
enum ShiftState { kShiftNone = 0, kShiftKey = 1, kControlKey = 2, kAltKey = 4 };

// A window as plain state: its controls in tab order and what happens to the window as a whole.
class Form {
 public:
  explicit Form(std::string name) : name_(std::move(name)) {}
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& name() const { return name_; }

  const std::string& caption() const { return caption_; }
  void setCaption(const std::string& caption) { set(caption_, caption); }

  // Size of the whole window in twips, frame and title bar included in the width as the
  // program's two widths are; the height is that of the inner area.
  int width() const { return width_; }
  int height() const { return height_; }
  void setSize(int width, int height) {
    set(width_, width);
    set(height_, height);
  }

  const std::string& font() const { return font_; }  // empty: the system's message font
  void setFont(const std::string& font) { set(font_, font); }

  // Controls in tab order. A control's window carries its place in this list + 1000 as identifier.
  const std::vector<Control*>& controls() const { return controls_; }
  void add(Control& control) { controls_.push_back(&control); }
  const std::vector<Timer*>& timers() const { return timers_; }
  void add(Timer& timer) { timers_.push_back(&timer); }

  // The buttons that Enter and Escape press.
  Button* defaultButton = nullptr;
  Button* cancelButton = nullptr;

  const std::vector<MenuItem>& systemMenu() const { return systemMenu_; }
  void setSystemMenu(std::vector<MenuItem> items) {
    systemMenu_ = std::move(items);
    ++revision_;
  }

  // The control that should have the keyboard; each call asks anew.
  void focus(Control& control) {
    focused_ = &control;
    ++focusRequests_;
  }
  Control* focused() const { return focused_; }
  unsigned focusRequests() const { return focusRequests_; }

  // The user, or code on the user's behalf, wants the window closed. False when it stays.
  bool close() {
    if (onQueryUnload && !onQueryUnload()) return false;
    unload();
    return true;
  }
  // Takes the window away without a question. For the main window this ends the program: every
  // wait returns soon, and code that resumes from one must check `unloaded` and do nothing more.
  void unload() {
    if (unloaded_) return;
    unloaded_ = true;
    if (onUnload) onUnload();
  }
  bool unloaded() const { return unloaded_; }

  unsigned revision() const { return revision_; }

  std::function<bool()> onQueryUnload;  // false keeps the window open
  std::function<void()> onUnload;
  std::function<bool(int keyCode, int shift)> onKeyDown;  // true: the key is used up
  std::function<bool(int id)> onSystemCommand;            // true: handled, else the system's own
  std::function<void(const std::vector<std::string>&)> onDropFiles;

 private:
  template <class T>
  void set(T& member, const T& value) {
    if (member == value) return;
    member = value;
    ++revision_;
  }

  std::string name_, caption_, font_;
  int width_ = 0, height_ = 0;
  std::vector<Control*> controls_;
  std::vector<Timer*> timers_;
  std::vector<MenuItem> systemMenu_;
  Control* focused_ = nullptr;
  unsigned focusRequests_ = 0;
  unsigned revision_ = 0;
  bool unloaded_ = false;
};

}  // namespace pavoline
