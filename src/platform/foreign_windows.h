#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pavoline {

// A window of another program; 0 is none.
using ForeignWindow = std::uintptr_t;

class ForeignWindows {
 public:
  virtual ~ForeignWindows() = default;

  // All top-level windows of a class, the topmost first.
  virtual std::vector<ForeignWindow> listByClass(const std::string& className) = 0;
  virtual ForeignWindow findByTitle(const std::string& title) = 0;

  virtual bool exists(ForeignWindow window) = 0;
  // The process that the window belongs to; 0 when the window is gone.
  virtual std::uint32_t processOf(ForeignWindow window) = 0;

  // At most 254 characters; empty when the window is gone or has no title.
  virtual std::string title(ForeignWindow window) = 0;
  virtual void hide(ForeignWindow window) = 0;
  virtual void minimize(ForeignWindow window) = 0;
};

}  // namespace pavoline
