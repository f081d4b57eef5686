#include "support/fake_machine.h"

#include "support/fold_case.h"

namespace pavoline::testing {

std::string FakeEnvironment::variable(const std::string& name) {
  const auto it = variables.find(Lower(name));
  return it == variables.end() ? std::string() : it->second;
}

LocalTime FakeEnvironment::now() {
  const int seconds = static_cast<int>(time_.now() / 1000);
  return {2024,
          5,
          6,
          seconds / 3600 % 24,
          seconds / 60 % 60,
          seconds % 60,
          static_cast<int>(time_.now() % 1000)};
}

double FakeEnvironment::random() {
  if (randoms.empty()) return 0.5;
  const double next = randoms.front();
  randoms.pop_front();
  return next;
}

namespace {

VolumeFacts DefaultFacts(const std::string& drive, std::optional<VolumePosition> position) {
  VolumeFacts facts;
  facts.name = "\\\\?\\Volume{" + Upper(drive.substr(0, 1)) + "}\\";
  facts.serial = 0x5E000000u + static_cast<unsigned char>(facts.name[11]);
  if (position) facts.disk = position->disk;
  if (position) facts.offset = std::uint64_t{position->partition} << 30;
  return facts;
}

}  // namespace

void FakeDrives::add(const std::string& drive, int type, std::optional<VolumePosition> position,
                     std::uint64_t free) {
  files_.folder(drive + "\\");
  drives_[Upper(drive)] = {type, position, free, DefaultFacts(drive, position)};
}

void FakeDrives::wipe(const std::string& drive) {
  files_.drop(drive);
  files_.folder(drive + "\\");
  const auto it = drives_.find(Upper(drive.substr(0, 2)));
  if (it != drives_.end()) it->second.volume.serial += 0x100;
}

std::string FakeDrives::placeForLetterless() const {
  std::string drive = "1:";
  while (letterless_.contains(drive)) ++drive[0];
  return drive;
}

std::string FakeDrives::addLetterless(VolumePosition position) {
  const std::string drive = placeForLetterless();
  files_.folder(drive + "\\");
  letterless_[drive] = {kDriveFixed, position, 100ull << 20, DefaultFacts(drive, position)};
  return drive;
}

bool FakeDrives::assignLetter(const VolumePosition& position, const std::string& drive) {
  letterCalls.push_back("assign " + drive + " " + std::to_string(position.disk) + " " +
                        std::to_string(position.partition));
  if (refusesLetters || find(drive)) return false;
  for (const auto& [name, facts] : letterless_) {
    if (facts.position->disk != position.disk || facts.position->partition != position.partition) {
      continue;
    }
    move(letterless_, std::string(name), drives_, Upper(drive));
    return true;
  }
  return false;
}

bool FakeDrives::removeLetter(const std::string& drive) {
  letterCalls.push_back("remove " + drive);
  if (refusesLetters || !find(drive)) return false;
  move(drives_, Upper(drive), letterless_, placeForLetterless());
  return true;
}

void FakeDrives::move(Table& from, const std::string& drive, Table& to,
                      const std::string& newDrive) {
  files_.moveDrive(drive, newDrive);
  to[newDrive] = from.at(drive);
  from.erase(drive);
}

const FakeDrives::Facts* FakeDrives::find(const std::string& drive) const {
  const auto it = drives_.find(Upper(drive.substr(0, 2)));
  return it == drives_.end() ? nullptr : &it->second;
}

std::vector<ForeignWindow> FakeForeignWindows::find(std::string Window::*field,
                                                    const std::string& value) {
  std::vector<ForeignWindow> result;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].open && Lower(all[i].*field) == Lower(value)) result.push_back(i + 1);
  }
  return result;
}

std::string FakeForeignWindows::title(ForeignWindow window) {
  return isOpen(window) ? Encode(Decode(at(window).title).substr(0, 254)) : std::string();
}

}  // namespace pavoline::testing
