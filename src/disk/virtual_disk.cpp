#include "disk/virtual_disk.h"

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "run/command_runner.h"
#include "session/drive_list.h"

namespace pavoline {
namespace {

constexpr char kEntryTitle[] = "Tips:";
constexpr char kJobName[] = "vhd";

constexpr int kLongestDelay = 5000;  // milliseconds until a volume has its letter
constexpr int kLookEvery = 250;

// A volume may come or go some time after diskpart has ended: waits for the drives to change.
bool DrivesChange(Workplace& workplace, const std::string& before) {
  for (int waited = 0; !workplace.form.unloaded(); waited += kLookEvery) {
    if (DriveList(workplace, 0) != before) return true;
    if (waited >= kLongestDelay) return false;
    workplace.platform.processes.handleEventsFor(kLookEvery);
  }
  return false;
}

struct MoveTexts {
  const char* journal;
  int done, failed;
};

bool MoveVirtualDisk(Workplace& workplace, const std::string& file, const std::string& script,
                     const MoveTexts& texts) {
  if (file.empty()) return false;
  const std::string before = DriveList(workplace, 0);
  RunDiskpart(workplace, script, kJobName);
  const bool changed = DrivesChange(workplace, before);
  if (workplace.form.unloaded()) return true;
  Journal(workplace, std::string("virtual disk ") + texts.journal + " " + file +
                         (changed ? ": done" : ": no drive letter changed"));
  if (changed) {
    Message(workplace, ReplaceAll(String(workplace, texts.done), "%F%", file), kInformationMessage,
            String(workplace, kTextVirtualDiskDone));
  } else {
    Message(workplace, String(workplace, texts.failed), kInformationMessage,
            String(workplace, kTextInformation));
  }
  return changed;
}

bool Refuse(Ground& ground, int text, const std::string& title) {
  Message(ground, String(ground, text), kErrorMessage, title);
  return false;
}

// Relative paths are refused with the folders that do not exist: diskpart has another current
// folder.
bool FolderExists(Ground& ground, const std::string& file) {
  const std::string folder = WithBackslash(ParentFolder(file));
  return folder.size() >= 3 && folder[1] == ':' && ground.platform.files.isFolder(folder);
}

bool CheckEntries(Ground& ground, const VirtualDiskRequest& request, const VirtualDiskSize& size) {
  if (!FolderExists(ground, request.file)) {
    return Refuse(ground, kTextFolderMissing, String(ground, kTextError));
  }
  if (!IsVirtualDiskName(FileName(request.file))) {
    return Refuse(ground, kTextBadFileName, kEntryTitle);
  }
  if (size.fault == SizeFault::kNoSize) return Refuse(ground, kTextBadSize, kEntryTitle);
  if (size.fault == SizeFault::kTooLarge) return Refuse(ground, kTextSizeTooLarge, kEntryTitle);
  return true;
}

// An expandable disk is held to the same free space: it may grow to its full size.
bool HasSpace(Ground& ground, const std::string& file, std::int32_t megabytes) {
  const auto free = ground.platform.drives.freeBytes(file.substr(0, 2));
  return free.value_or(0) >= static_cast<std::uint64_t>(megabytes) << 20;
}

bool ReportCreation(Workplace& workplace, const std::string& file, const std::string& label,
                    const std::string& drive) {
  for (int waited = 0; waited < kLongestDelay && !workplace.platform.files.exists(drive) &&
                       !workplace.form.unloaded();
       waited += kLookEvery) {
    workplace.platform.processes.handleEventsFor(kLookEvery);
  }
  if (workplace.form.unloaded()) return true;
  const bool created = workplace.platform.files.exists(drive);
  Journal(workplace, "virtual disk " + file + (created ? " created as " + drive : ": not created"));
  if (!created) return Refuse(workplace, kTextCreateFailed, "");
  Message(workplace,
          String(workplace, kTextCreated) + " " + label + "\r\n" +
              String(workplace, kTextCreatedDrive) + " " + drive,
          kInformationMessage, String(workplace, kTextVirtualDiskDone));
  return true;
}

}  // namespace

bool AttachVirtualDisk(Session& session, const std::string& file) {
  return MoveVirtualDisk(session, file, AttachScript(file),
                         {"attach", kTextAttached, kTextAttachFailed});
}

bool DetachVirtualDisk(Session& session, const std::string& file) {
  return MoveVirtualDisk(session, file, DetachScript(file),
                         {"detach", kTextDetached, kTextDetachFailed});
}

bool CreateVirtualDisk(Workplace& workplace, const VirtualDiskRequest& request) {
  const VirtualDiskSize size = VirtualDiskMegabytes(request.size, request.unit);
  if (!CheckEntries(workplace, request, size)) return false;

  const std::string file = WithVirtualDiskExtension(request.file, request.format);
  if (!HasSpace(workplace, file, size.megabytes)) {
    return Refuse(workplace, kTextNotEnoughSpace, String(workplace, kTextError));
  }
  const std::string letter = GetULetter(DriveList(workplace, 0));
  if (letter.empty()) return Refuse(workplace, kTextNoLetter, String(workplace, kTextError));

  RunDiskpart(workplace, CreateScript(file, size.megabytes, request.type, request.label, letter),
              kJobName);
  return ReportCreation(workplace, file, request.label, letter + ":");
}

}  // namespace pavoline
