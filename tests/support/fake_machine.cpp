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

void FakeDrives::remove(const std::string& drive) {
  files_.drop(drive);
  drives_.erase(Upper(drive));
}

void FakeDrives::wipe(const std::string& drive) {
  files_.drop(drive);
  files_.folder(drive + "\\");
}

const FakeDrives::Facts* FakeDrives::find(const std::string& drive) const {
  const auto it = drives_.find(Upper(drive.substr(0, 2)));
  return it == drives_.end() ? nullptr : &it->second;
}

int FakeDrives::type(const std::string& drive) {
  const Facts* facts = find(drive);
  return facts ? facts->type : kDriveNoRoot;
}

std::optional<std::uint64_t> FakeDrives::freeBytes(const std::string& drive) {
  const Facts* facts = find(drive);
  return facts ? std::optional(facts->free) : std::nullopt;
}

std::optional<VolumePosition> FakeDrives::position(const std::string& drive) {
  const Facts* facts = find(drive);
  return facts ? facts->position : std::nullopt;
}

ForeignWindow FakeForeignWindows::open(const std::string& className, const std::string& title) {
  all.push_back({className, title});
  return all.size();
}

FakeForeignWindows::Window* FakeForeignWindows::find(ForeignWindow window) {
  if (window == 0 || window > all.size() || !all[window - 1].open) return nullptr;
  return &all[window - 1];
}

ForeignWindow FakeForeignWindows::findByClass(const std::string& className) {
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].open && Lower(all[i].className) == Lower(className)) return i + 1;
  }
  return 0;
}

ForeignWindow FakeForeignWindows::findByTitle(const std::string& title) {
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].open && Lower(all[i].title) == Lower(title)) return i + 1;
  }
  return 0;
}

std::string FakeForeignWindows::title(ForeignWindow window) {
  const Window* found = find(window);
  return found ? Encode(Decode(found->title).substr(0, 254)) : std::string();
}

void FakeForeignWindows::hide(ForeignWindow window) {
  if (Window* found = find(window)) found->hidden = true;
}

void FakeForeignWindows::minimize(ForeignWindow window) {
  if (Window* found = find(window)) found->minimized = true;
}

}  // namespace pavoline::testing
