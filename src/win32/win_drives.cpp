#include "win32/win_drives.h"

#include <windows.h>

#include "platform/paths.h"
#include "win32/handle.h"
#include "win32/volume_facts.h"
#include "win32/volume_number.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// A volume's own name, with a backslash at its end; empty when none lies there.
std::wstring VolumeAt(const VolumePosition& position) {
  wchar_t name[64] = L"";
  const VolumeSearchHandle search(FindFirstVolumeW(name, 64));
  if (!search) return {};
  do {
    const std::wstring volume = name;
    const auto number = VolumeNumberOfDevice(volume.substr(0, volume.size() - 1));
    if (number && number->disk + 1 == position.disk && number->partition == position.partition) {
      return volume;
    }
  } while (FindNextVolumeW(search.get(), name, 64));
  return {};
}

}  // namespace

int WinDrives::type(const std::string& drive) {
  return static_cast<int>(GetDriveTypeW(Wide(WithBackslash(drive)).c_str()));
}

std::optional<std::uint64_t> WinDrives::freeBytes(const std::string& drive) {
  ULARGE_INTEGER available{};
  if (!GetDiskFreeSpaceExW(Wide(WithBackslash(drive)).c_str(), &available, nullptr, nullptr)) {
    return std::nullopt;
  }
  return available.QuadPart;
}

// Whoever asks may have stopped waiting, or be gone, when the answer comes: both own the question.
struct WinDrives::Question {
  explicit Question(const std::string& ofDrive)
      : drive(ofDrive), answered(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

  static DWORD WINAPI ask(void* shared) {
    const std::unique_ptr<std::shared_ptr<Question>> own(
        static_cast<std::shared_ptr<Question>*>(shared));
    Question& question = **own;
    ULARGE_INTEGER available{};
    if (GetDiskFreeSpaceExW(Wide(WithBackslash(question.drive)).c_str(), &available, nullptr,
                            nullptr)) {
      question.bytes = available.QuadPart;
    }
    SetEvent(question.answered.get());
    return 0;
  }
  bool isAnswered() const { return WaitForSingleObject(answered.get(), 0) == WAIT_OBJECT_0; }

  const std::string drive;
  std::optional<std::uint64_t> bytes;  // written before the event is set, read after
  const Handle answered;
};

std::vector<std::optional<std::uint64_t>> WinDrives::freeBytesSoon(
    const std::vector<std::string>& drives, int milliseconds) {
  std::vector<std::shared_ptr<Question>> questions;
  for (const std::string& drive : drives) {
    std::shared_ptr<Question>& question = open_[drive];
    if (!question) {
      question = std::make_shared<Question>(drive);
      auto own = std::make_unique<std::shared_ptr<Question>>(question);
      const Handle thread(CreateThread(nullptr, 0, Question::ask, own.get(), 0, nullptr));
      if (thread) {
        own.release();
      } else {
        SetEvent(question->answered.get());
      }
    }
    questions.push_back(question);
  }
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  std::vector<std::optional<std::uint64_t>> result;
  for (const auto& question : questions) {
    const ULONGLONG now = GetTickCount64();
    WaitForSingleObject(question->answered.get(), now < end ? static_cast<DWORD>(end - now) : 0);
    result.push_back(question->isAnswered() ? question->bytes : std::nullopt);
  }
  std::erase_if(open_, [](const auto& entry) { return entry.second->isAnswered(); });
  return result;
}

std::optional<VolumePosition> WinDrives::position(const std::string& drive) {
  const std::optional<VolumeNumber> number = VolumeNumberOfDrive(drive);
  if (!number || number->partition == 0) return std::nullopt;
  return VolumePosition{number->disk + 1, number->partition};
}

VolumeFacts WinDrives::facts(const std::string& drive) { return VolumeFactsOfDrive(drive); }

bool WinDrives::assignLetter(const VolumePosition& position, const std::string& drive) {
  if (type(drive) != kDriveNoRoot) return false;
  const std::wstring volume = VolumeAt(position);
  return !volume.empty() &&
         SetVolumeMountPointW(Wide(WithBackslash(drive)).c_str(), volume.c_str()) != 0;
}

bool WinDrives::removeLetter(const std::string& drive) {
  return DeleteVolumeMountPointW(Wide(WithBackslash(drive)).c_str()) != 0;
}

}  // namespace pavoline
