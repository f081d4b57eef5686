#pragma once

#include <windows.h>

#include <utility>

namespace pavoline {

// Owns a Windows handle and closes it once. Null and INVALID_HANDLE_VALUE, the two ways in which
// the API says "none", both count as empty and are never closed. Closer: a type whose static
// close(HANDLE) gives the handle back.
template <typename Closer>
class BasicHandle {
 public:
  BasicHandle() = default;
  explicit BasicHandle(HANDLE handle) : handle_(handle) {}
  BasicHandle(BasicHandle&& other) noexcept : handle_(other.release()) {}
  BasicHandle& operator=(BasicHandle&& other) noexcept {
    reset(other.release());
    return *this;
  }
  ~BasicHandle() { reset(); }

  explicit operator bool() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }
  HANDLE release() { return std::exchange(handle_, nullptr); }

  void reset(HANDLE handle = nullptr) {
    HANDLE old = std::exchange(handle_, handle);
    if (old != nullptr && old != INVALID_HANDLE_VALUE && old != handle) Closer::close(old);
  }

 private:
  HANDLE handle_ = nullptr;
};

struct KernelObject {
  static void close(HANDLE handle) { CloseHandle(handle); }
};
struct FileSearch {
  static void close(HANDLE handle) { FindClose(handle); }
};
struct VolumeSearch {
  static void close(HANDLE handle) { FindVolumeClose(handle); }
};

using Handle = BasicHandle<KernelObject>;
using FindHandle = BasicHandle<FileSearch>;
using VolumeSearchHandle = BasicHandle<VolumeSearch>;

}  // namespace pavoline
