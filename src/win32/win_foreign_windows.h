#pragma once

#include "platform/foreign_windows.h"

namespace pavoline {

class WinForeignWindows : public ForeignWindows {
 public:
  ForeignWindow findByClass(const std::string& className) override;
  ForeignWindow findByTitle(const std::string& title) override;
  std::string title(ForeignWindow window) override;
  void hide(ForeignWindow window) override;
  void minimize(ForeignWindow window) override;
};

}  // namespace pavoline
