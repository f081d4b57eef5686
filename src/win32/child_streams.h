#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "win32/handle.h"

namespace pavoline {

// What a started program gets in place of its console's streams: one file for its errors and,
// unless that is dropped, its output, and an empty input.
class ChildStreams {
 public:
  // The file is made anew. Without a path, or where it cannot be made, the console's streams stay.
  ChildStreams(const std::string& outputFile, bool errorsOnly);
  ~ChildStreams();
  ChildStreams(const ChildStreams&) = delete;
  ChildStreams& operator=(const ChildStreams&) = delete;

  explicit operator bool() const { return static_cast<bool>(output_); }

  // Puts the streams, if any, into the description of a start; gives the flags that the start
  // needs for it. Of this process's handles only these are inherited.
  DWORD describe(STARTUPINFOEXW& startup);

 private:
  bool makeList();

  Handle output_, input_, dropped_;
  HANDLE inherited_[3] = {};
  std::unique_ptr<char[]> listRoom_;
  LPPROC_THREAD_ATTRIBUTE_LIST list_ = nullptr;
};

}  // namespace pavoline
