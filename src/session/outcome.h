#pragma once

#include <string>

#include "platform/dialogs.h"
#include "session/exit_code.h"

// How steps and whole installations end.
namespace pavoline {

// Why an installation cannot go on, as it is shown.
struct Failure {
  std::string text;
  std::string title;
  MessageKind kind = kErrorMessage;
  ExitCode code = ExitCode::kImagingFailed;
};

// What a step tells whoever runs it.
struct StepResult {
  enum Kind {
    kDone,    // on to the next step
    kWaits,   // its program runs; a timer will tell the end
    kFailed,  // `failure` says why
    kClosed,  // the window is gone, or the installation was stopped
  };
  Kind kind = kDone;
  Failure failure;

  static StepResult Done() { return {}; }
  static StepResult Waits() { return {kWaits, {}}; }
  static StepResult Closed() { return {kClosed, {}}; }
  static StepResult Failed(Failure why) { return {kFailed, std::move(why)}; }
};

// The one end of an installation.
struct Outcome {
  enum Kind { kDone, kRefused, kCancelled, kFailed };
  Kind kind = kDone;
  const char* step = "";  // in which it failed
  Failure failure;        // of a refusal or a failure; a text that is empty was told already
};

}  // namespace pavoline
