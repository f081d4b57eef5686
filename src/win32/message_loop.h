#pragma once

#include <windows.h>

#include <functional>
#include <vector>

namespace pavoline {

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

  // Sleeps until the handle is signalled or messages are pending, whichever is first; handles
  // the messages.
  void waitFor(HANDLE handle);

  // Handles messages, sleeping in between, until `done` or the main window is gone.
  void runUntil(const std::function<bool()>& done);

  // The main window is gone; every loop ends.
  bool ended() const { return ended_; }
  void end() { ended_ = true; }

  // The program's own windows for others to lean on: null before the first was made.
  HWND mainWindow() const;
  // The window that a dialog belongs to: the topmost, or a dialog that lies over it already.
  HWND dialogOwner() const;

 private:
  void handle(MSG& message);

  std::vector<FormWindow*> windows_;
  bool ended_ = false;
};

}  // namespace pavoline
