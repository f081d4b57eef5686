#pragma once

#include <windows.h>
// After windows.h, on which it leans.
#include <commctrl.h>

#include <memory>
#include <string>

#include "form/control.h"

namespace pavoline {

// What the views of one window share.
struct ViewStyle {
  int dpi = 96;
  HFONT font = nullptr;
};

// The real control of a form's control: shows its state and passes the user's input to it.
class ControlView {
 public:
  virtual ~ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  HWND handle() const { return handle_; }
  const Control& control() const { return control_; }

  // Shows what has changed in the control since the last call.
  void sync(const ViewStyle& style);

  // Takes over a new resolution or font.
  void restyle(const ViewStyle& style);

  // The user did something: the code of a WM_COMMAND, the header of a WM_NOTIFY.
  virtual void onCommand(int /*code*/) {}
  virtual void onNotify(const NMHDR& /*header*/) {}

  // Enter was pressed in the control; false when it has no use for it.
  virtual bool onEnter() { return false; }

  // The control's windows that the pointer meets; tooltips hang on these.
  virtual HWND inner() const { return nullptr; }

 protected:
  ControlView(Control& control, HWND handle) : handle_(handle), control_(control) {}

  // Shows what the kind of control has of its own.
  virtual void show() = 0;
  // Moves the control's window into this area, in pixels.
  virtual void place(const RECT& area);
  virtual void onStyle() {}

  const ViewStyle& style() const { return style_; }

 private:
  HWND handle_;
  Control& control_;
  ViewStyle style_;
  unsigned shownRevision_ = ~0u;
  Rect shownBounds_;
};

// Makes the real control for any kind of control, as a child with this identifier.
std::unique_ptr<ControlView> MakeControlView(Control& control, HWND parent, int id);

// Of the kinds that have a source of their own.
std::unique_ptr<ControlView> MakeTextBoxView(Control& control, HWND parent, int id);
std::unique_ptr<ControlView> MakeTextViewView(Control& control, HWND parent, int id);
std::unique_ptr<ControlView> MakeComboBoxView(Control& control, HWND parent, int id);
std::unique_ptr<ControlView> MakeListViewView(Control& control, HWND parent, int id);

HWND CreateControl(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, HWND parent,
                   int id);

std::string WindowText(HWND window);

// Sets a window's text where it differs, so that a cursor in it stays.
void ShowText(HWND window, const std::string& text);

// Asks the filter before a typed character reaches the edit control. The filter must outlive it.
void FilterTyping(HWND edit, const KeyFilter& filter);

}  // namespace pavoline
