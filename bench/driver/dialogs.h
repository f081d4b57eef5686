#pragma once

#include <optional>
#include <string>

#include "driver/window.h"

// The system's own dialogs as a program shows them: message boxes and file choosers.
namespace bench {

struct Message {
  std::string title;
  std::string text;
  bool cancellable = false;  // has a Cancel button
  Window window;
};

// The message box that the program shows now.
std::optional<Message> ShownMessage(const std::string& program);
std::optional<Message> WaitForMessage(const std::string& program, int milliseconds);

// Answers with IDOK or IDCANCEL and waits until the box has gone.
bool Answer(const Message& message, int button);

// Fills in the file or folder chooser that the program shows and accepts it; empty cancels it.
bool AnswerFileDialog(const std::string& program, const std::string& path, int milliseconds);

}  // namespace bench
