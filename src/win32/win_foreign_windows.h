#pragma once

#include "platform/foreign_windows.h"

namespace pavoline {

class WinForeignWindows : public ForeignWindows {
 public:
  std::vector<ForeignWindow> listByClass(const std::string& className) override;
  ForeignWindow findByTitle(const std::string& title) override;
  bool exists(ForeignWindow window) override;
  std::uint32_t processOf(ForeignWindow window) override;
  std::string title(ForeignWindow window) override;
  void hide(ForeignWindow window) override;
  void minimize(ForeignWindow window) override;
};

}  // namespace pavoline
