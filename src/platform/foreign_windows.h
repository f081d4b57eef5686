#pragma once

#include <cstdint>
#include <string>

namespace pavoline {

// A window of another program; 0 is none.
using ForeignWindow = std::uintptr_t;

class ForeignWindows {
 public:
  virtual ~ForeignWindows() = default;

  virtual ForeignWindow findByClass(const std::string& className) = 0;
  virtual ForeignWindow findByTitle(const std::string& title) = 0;

  // At most 254 characters; empty when the window is gone or has no title.
  virtual std::string title(ForeignWindow window) = 0;
  virtual void hide(ForeignWindow window) = 0;
  virtual void minimize(ForeignWindow window) = 0;
};

}  // namespace pavoline
