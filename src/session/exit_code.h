#pragma once

namespace pavoline {

// What the process tells whoever started it.
enum class ExitCode {
  kInstalled = 0,
  kRefused = 1,          // by a check, before anything was changed
  kOtherPartitions = 2,  // those of the command line are not there
  kImagingFailed = 3,
  kToolMissing = 4,
  kIncomplete = 5,  // the image is there; boot files or drivers are not
  kCancelled = 6,   // by a person, or closed before anything was installed
  kFault = 7,       // an error that the program did not expect
};

}  // namespace pavoline
