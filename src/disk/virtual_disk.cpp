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
bool DrivesChange(Session& session, const std::string& before) {
  for (int waited = 0; !session.form.unloaded(); waited += kLookEvery) {
    if (DriveList(session, 0) != before) return true;
    if (waited >= kLongestDelay) return false;
    session.platform.processes.handleEventsFor(kLookEvery);
  }
  return false;
}

struct MoveTexts {
  const char* journal;
  int done, failed;
};

bool MoveVirtualDisk(Session& session, const std::string& file, const std::string& script,
                     const MoveTexts& texts) {
  if (file.empty()) return false;
  const std::string before = DriveList(session, 0);
  RunDiskpart(session, script, kJobName);
  const bool changed = DrivesChange(session, before);
  if (session.form.unloaded()) return true;
  Journal(session, std::string("virtual disk ") + texts.journal + " " + file +
                       (changed ? ": done" : ": no drive letter changed"));
  if (changed) {
    Message(session, ReplaceAll(String(session, texts.done), "%F%", file), kInformationMessage,
            String(session, kTextVirtualDiskDone));
  } else {
    Message(session, String(session, texts.failed), kInformationMessage,
            String(session, kTextInformation));
  }
  return changed;
}

bool Refuse(Session& session, int text, const std::string& title) {
  Message(session, String(session, text), kErrorMessage, title);
  return false;
}

// Relative paths are refused with the folders that do not exist: diskpart has another current
// folder.
bool FolderExists(Session& session, const std::string& file) {
  const std::string folder = WithBackslash(ParentFolder(file));
  return folder.size() >= 3 && folder[1] == ':' && session.platform.files.isFolder(folder);
}

bool CheckEntries(Session& session, const VirtualDiskRequest& request,
                  const VirtualDiskSize& size) {
  if (!FolderExists(session, request.file)) {
    return Refuse(session, kTextFolderMissing, String(session, kTextError));
  }
  if (!IsVirtualDiskName(FileName(request.file))) {
    return Refuse(session, kTextBadFileName, kEntryTitle);
  }
  if (size.fault == SizeFault::kNoSize) return Refuse(session, kTextBadSize, kEntryTitle);
  if (size.fault == SizeFault::kTooLarge) return Refuse(session, kTextSizeTooLarge, kEntryTitle);
  return true;
}

// An expandable disk is held to the same free space: it may grow to its full size.
bool HasSpace(Session& session, const std::string& file, std::int32_t megabytes) {
  const auto free = session.platform.drives.freeBytes(file.substr(0, 2));
  return free.value_or(0) >= static_cast<std::uint64_t>(megabytes) << 20;
}

bool ReportCreation(Session& session, const std::string& file, const std::string& label,
                    const std::string& drive) {
  for (int waited = 0;
       waited < kLongestDelay && !session.platform.files.exists(drive) && !session.form.unloaded();
       waited += kLookEvery) {
    session.platform.processes.handleEventsFor(kLookEvery);
  }
  if (session.form.unloaded()) return true;
  const bool created = session.platform.files.exists(drive);
  Journal(session, "virtual disk " + file + (created ? " created as " + drive : ": not created"));
  if (!created) return Refuse(session, kTextCreateFailed, "");
  Message(session,
          String(session, kTextCreated) + " " + label + "\r\n" +
              String(session, kTextCreatedDrive) + " " + drive,
          kInformationMessage, String(session, kTextVirtualDiskDone));
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

bool CreateVirtualDisk(Session& session, const VirtualDiskRequest& request) {
  const VirtualDiskSize size = VirtualDiskMegabytes(request.size, request.unit);
  if (!CheckEntries(session, request, size)) return false;

  const std::string file = WithVirtualDiskExtension(request.file, request.format);
  if (!HasSpace(session, file, size.megabytes)) {
    return Refuse(session, kTextNotEnoughSpace, String(session, kTextError));
  }
  const std::string letter = GetULetter(DriveList(session, 0));
  if (letter.empty()) return Refuse(session, kTextNoLetter, String(session, kTextError));

  RunDiskpart(session, CreateScript(file, size.megabytes, request.type, request.label, letter),
              kJobName);
  if (session.form.unloaded()) return true;
  return ReportCreation(session, file, request.label, letter + ":");
}

}  // namespace pavoline
