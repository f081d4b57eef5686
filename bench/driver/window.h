#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

// Pressing a program's real windows from the outside, as a person would: by what is on the screen.
// Texts are UTF-8. A window that does not answer within two seconds counts as empty.
namespace bench {

// One window or control of another process. Cheap to copy; empty when nothing was found.
class Window {
 public:
  Window() = default;
  explicit Window(HWND handle) : handle_(handle) {}

  explicit operator bool() const { return handle_ != nullptr && IsWindow(handle_); }
  bool operator==(const Window&) const = default;
  HWND handle() const { return handle_; }

  std::string text() const;
  std::string className() const;
  int id() const { return GetDlgCtrlID(handle_); }
  bool enabled() const { return IsWindowEnabled(handle_); }
  bool visible() const { return IsWindowVisible(handle_); }
  RECT rectangle() const;
  bool drawn() const;  // it and its controls have nothing left to draw

  Window child(int id) const;                               // at any depth
  Window childOfClass(const std::string& className) const;  // the first, at any depth
  Window childWithText(const std::string& part) const;  // access-key marks in captions are ignored
  std::vector<Window> children() const;                 // all, at every depth, in Z order

  // Puts a text into a text box, or the field of a combo box, in one change or letter by letter.
  void enterText(const std::string& text) const;
  void typeText(const std::string& text) const;

  void click() const;  // buttons; returns at once, whatever the click opens
  bool ticked() const;
  void tick(bool on) const;  // clicks when it stands otherwise

  // Combo and list boxes.
  std::vector<std::string> items() const;
  int selected() const;
  void select(int index) const;

  // List views: the cells of every row.
  std::vector<std::vector<std::string>> rows() const;
  void selectRow(int row) const;
  void doubleClickRow(int row) const;

  int progress() const;

  // Posts a key to the control that has the keyboard in this window, without modifiers.
  void key(int virtualKey) const;
  // Brings the window to the front and presses a real key there, modifiers held down.
  void chord(std::vector<int> virtualKeys) const;

  void systemCommand(int id) const;
  void dropFiles(const std::vector<std::string>& paths) const;
  void close() const;

 private:
  LRESULT ask(UINT message, WPARAM wParam, LPARAM lParam) const;
  void tellParent(int notification) const;
  Window editField() const;

  HWND handle_ = nullptr;
};

// Top-level windows of every process of this image name ("Pavoline.exe"), front first.
std::vector<Window> WindowsOf(const std::string& program);

// The first top-level window of the program with this class or, when empty, any class, whose title
// contains the text.
Window TopWindow(const std::string& program, const std::string& className,
                 const std::string& title);

// True as soon as the condition holds; false after the time, in milliseconds.
bool WaitUntil(int milliseconds, const std::function<bool()>& condition);

// One line per window: depth, class, id, state, text, items.
std::string DumpWindows(const std::string& program);

}  // namespace bench
