#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "form/form.h"
#include "win32/control_view.h"
#include "win32/owned.h"
#include "win32/system_menu_view.h"

namespace pavoline {

class MessageLoop;

// The real window of a form. Shows the form's state and passes the user's input to it; decides
// nothing. Control n of the form has the identifier kFirstControlId + n.
class FormWindow {
 public:
  static constexpr int kFirstControlId = 1000;

  // Without an owner the window is the main one: its end ends the loop.
  FormWindow(Form& form, MessageLoop& loop, HWND owner);
  ~FormWindow();
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  HWND handle() const { return handle_; }
  bool shows(const Form& form) const { return &form == &form_; }

  // Centres the window on its screen and shows it.
  void show();

  // Shows what has changed in the form since the last call.
  void sync();

  // A menu below a control; the number of the chosen entry, 0 for none.
  int chooseFromMenu(const Control& below, const std::vector<MenuItem>& items);

  // Keys on their way to a control: true when the window has dealt with the message.
  bool preTranslate(MSG& message);

 private:
  static LRESULT CALLBACK windowProcedure(HWND, UINT, WPARAM, LPARAM);
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void onCommand(WPARAM wParam, LPARAM lParam);
  void onNotify(const NMHDR& header);
  void onTimer(WPARAM number);
  bool onSystemCommand(WPARAM wParam);
  void onDropFiles(WPARAM drop);
  void onDpiChanged(int dpi, const RECT& suggested);
  void onActivate(bool active);
  void onDestroyed();

  bool isMain() const { return owner_ == nullptr; }
  void create();
  void refreshStyle();
  int fittingDpi() const;
  void syncForm();
  void syncDefaultButton();
  void syncTimers();
  void syncTooltips();
  void syncSpokenNames();
  void dropSpokenNames();
  void syncFocus();
  void keepFocusAlive();
  HWND innermost(HWND window);
  SIZE frameSize() const;
  SIZE outerSize() const;
  void resize();
  ControlView* viewOf(HWND control);
  ControlView* viewOf(const Control* control);
  void showTooltip(ControlView& view, const std::string& text);
  bool pressEscape();

  Form& form_;
  MessageLoop& loop_;
  HWND owner_;
  HWND handle_ = nullptr;
  HWND tooltips_ = nullptr;
  HWND lastFocus_ = nullptr;  // has the keyboard, or gets it back
  HWND refuge_ = nullptr;     // has it meanwhile
  int dpi_ = 96;              // of the screen
  OwnedFont font_;
  ViewStyle style_;  // its resolution may be lower, so that the window fits the screen
  std::vector<std::unique_ptr<ControlView>> views_;
  std::map<const ControlView*, std::string> shownTooltips_, spokenNames_;
  std::vector<unsigned> shownTimers_;
  SystemMenuView menu_;
  std::string shownFont_;
  const Button* shownDefault_ = nullptr;
  unsigned shownRevision_ = ~0u;
  unsigned seenFocusRequests_ = 0;
  bool shown_ = false;
  bool syncing_ = false;
};

}  // namespace pavoline
