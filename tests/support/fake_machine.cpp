#include "support/fake_machine.h"

#include "support/fold_case.h"

namespace pavoline::testing {

std::string FakeEnvironment::variable(const std::string& name) {
  const auto it = variables.find(Lower(name));
  return it == variables.end() ? std::string() : it->second;
}

LocalTime FakeEnvironment::now() {
  const int seconds = static_cast<int>(time_.now() / 1000);
  return {2024, 5, 6, seconds / 3600 % 24, seconds / 60 % 60, seconds % 60};
}

double FakeEnvironment::random() {
  if (randoms.empty()) return 0.5;
  const double next = randoms.front();
  randoms.pop_front();
  return next;
}

void FakeDrives::add(const std::string& drive, int type, std::optional<VolumePosition> position,
                     std::uint64_t free) {
  files_.folder(drive + "\\");
  drives_[Upper(drive)] = {type, position, free};
}

const FakeDrives::Facts* FakeDrives::find(const std::string& drive) const {
  const auto it = drives_.find(Upper(drive.substr(0, 2)));
  return it == drives_.end() ? nullptr : &it->second;
}

ForeignWindow FakeForeignWindows::find(std::string Window::*field, const std::string& value) {
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].open && Lower(all[i].*field) == Lower(value)) return i + 1;
  }
  return 0;
}

std::string FakeForeignWindows::title(ForeignWindow window) {
  return isOpen(window) ? Encode(Decode(at(window).title).substr(0, 254)) : std::string();
}

}  // namespace pavoline::testing
