#pragma once

#include <windows.h>

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "win32/process_watch.h"

namespace pavoline {

class Form;
class FormWindow;

// The one place where the program takes messages from the system: it hands them to the windows
// and brings these up to date with their forms after each.
class MessageLoop {
 public:
  // Windows announce themselves, the main window first; the last one is on top.
  void add(FormWindow& window) { windows_.push_back(&window); }
  void remove(FormWindow& window);

  // Shows in every window what has changed in its form.
  void sync();

  // Handles what is pending and returns.
  void handlePending();

  // Handles messages for that long, sleeping in between, unless the main window goes before.
  void handleFor(long milliseconds);

  // Sleeps until the handle is signalled, messages are pending or the time is over, whichever is
  // first; handles the messages.
  void waitFor(HANDLE handle, DWORD milliseconds);

  // Handles messages, sleeping in between, until `done` or the main window is gone.
  void runUntil(const std::function<bool()>& done);

  // Each of these waits tells the ends of the processes watched here. An action may watch others,
  // and let go of any.
  ProcessWatch& processes() { return processes_; }

  // The main window is gone; every loop ends.
  bool ended() const { return ended_; }
  void end() { ended_ = true; }

  // What to do about an exception that nobody expected, given its text. Only the first is told:
  // after it the program is in no state to go on. Without an answer here the process ends at once.
  void onFault(std::function<void(const std::string&)> action) { onFault_ = std::move(action); }

  // Does something that calls the program's own code, from a place where the system called: an
  // exception must not cross the system's frames, so it becomes a fault.
  template <class Action>
  void guard(const Action& action) {
    try {
      action();
    } catch (const std::exception& fault) {
      tellFault(fault.what());
    } catch (...) {
      tellFault("an exception of an unknown kind");
    }
  }

  FormWindow* windowOf(const Form& form) const;  // null: none shows it

  // The program's own windows for others to lean on: null before the first was made.
  HWND mainWindow() const;
  // The window that a dialog belongs to: the topmost, or a dialog that lies over it already.
  HWND dialogOwner() const;

 private:
  void handle(MSG& message);
  void callEnded();
  DWORD sleep(HANDLE handle, DWORD milliseconds);
  void tellFault(const char* text);

  std::vector<FormWindow*> windows_;
  ProcessWatch processes_;
  std::function<void(const std::string&)> onFault_;
  bool ended_ = false;
  bool faulted_ = false;
};

}  // namespace pavoline
