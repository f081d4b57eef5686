#include "support/fake_machine.h"

#include <algorithm>

namespace pavoline::testing {

LocalTime FakeEnvironment::now() {
  const int ms = static_cast<int>(time_.now()), seconds = ms / 1000;
  return {2024, 5, 6, seconds / 3600 % 24, seconds / 60 % 60, seconds % 60, ms % 1000};
}

std::string FirmwareTable(const std::string& serial, const std::string& model) {
  const std::string zero(1, '\0'), handle(2, 'h');
  return std::string(8, 'a') + "\x02\x05" + handle + "\x01" + "board" + zero + zero +  //
         "\x01\x08" + handle + "\x01\x02" + zero + "\x03" + "maker" + zero + model + zero + serial +
         zero + zero + "\x7F\x04" + handle + zero + zero;
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
  drives_[Upper(drive)].volume.serial += 0x100;
}

bool FakeDrives::assignLetter(const VolumePosition& position, const std::string& drive) {
  const auto [disk, partition] = position;
  letterCalls.push_back("assign " + drive + " " + std::to_string(disk) + " " +
                        std::to_string(partition));
  const bool there = std::ranges::any_of(letterless, [&](const VolumePosition& each) {
    return each.disk == position.disk && each.partition == position.partition;
  });
  if (there && !refusesLetters) add(drive, kDriveFixed, position);
  return there && !refusesLetters;
}

bool FakeDrives::removeLetter(const std::string& drive) {
  letterCalls.push_back("remove " + drive);
  if (refusesLetters || type(drive) == kDriveNoRoot) return false;
  remove(drive);
  return true;
}

const FakeDrives::Facts& FakeDrives::find(const std::string& drive) const {
  static const Facts none;
  const auto it = drives_.find(Upper(drive.substr(0, 2)));
  return it == drives_.end() ? none : it->second;
}

std::vector<ForeignWindow> FakeForeignWindows::find(std::string Window::*field,
                                                    const std::string& value) {
  std::vector<ForeignWindow> result;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].open && Lower(all[i].*field) == Lower(value)) result.push_back(i + 1);
  }
  return result;
}

}  // namespace pavoline::testing
