#include "ui/boot_repair.h"

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/text.h"
#include "postinstall/boot_configuration.h"
#include "postinstall/boot_stores.h"
#include "session/activity_scope.h"

namespace pavoline {
namespace {

constexpr float kBootSectorVersion = 6.0F;  // asks for a boot sector of the NT 6 kind

// Without the list no system would be found to write boot files for.
bool CanRepair(Session& session, const std::string& boot) {
  if (session.form.marks.startupStage == 0) {
    Message(session, String(session, kTextListNotReady), kInformationMessage, "Initializing...");
    return false;
  }
  if (boot.empty() || !session.platform.files.exists(boot)) {
    Message(session, ReplaceAll(String(session, kTextBootMissing), "%bp%", boot), kErrorMessage,
            String(session, kTextError));
    return false;
  }
  if (AnythingToRepair(session)) return true;
  Message(session, More(session, kMoreNothingToRepair), kWarningMessage,
          String(session, kTextInformation));
  return false;
}

bool Confirmed(Ground& ground, const std::string& boot) {
  const std::string question = ReplaceAll(String(ground, kTextConfirmBootRepair), "%bp%", boot) +
                               "\n\n" + String(ground, kTextConfirmTail);
  return Message(ground, question, kQuestionWarning, String(ground, kTextInformation)) == kAnswerOk;
}

std::string StoresOn(Ground& ground, const std::string& boot) {
  Files& files = ground.platform.files;
  std::string stores;
  if (files.exists(BiosStore(boot))) stores = "BIOS";
  if (files.exists(UefiStore(boot))) stores += stores.empty() ? "UEFI" : " + UEFI";
  return ReplaceAll(String(ground, kTextBootReport), "%bp%", boot) + "\n[ " + stores + " ] ";
}

void Report(Ground& ground, const std::string& boot, bool written) {
  const std::string failed = written ? "" : More(ground, kMoreBootPutBack) + "\n";
  Message(ground, failed + StoresOn(ground, boot), written ? kInformationMessage : kWarningMessage,
          String(ground, kTextInformation));
}

void Repair(Session& session, const std::string& boot) {
  Form1& form = session.form;
  const BootJob job{boot, "", true, EditionLanguage(session)};
  const bool written = CallBootMbr(session, job, kBootSectorVersion);
  if (form.unloaded()) return;
  const bool wide = form.width() == kWideWidth;
  form.status.setText(String(session, wide ? kTextStatusWide : kTextStatusNormal));
  Report(session, boot, written);
}

}  // namespace

void RepairBootFiles(Session& session) {
  const std::string boot = session.form.text[kBootPartition].text();
  if (!CanRepair(session, boot)) return;
  // Events are handled all the while: nothing else may begin before the repair is over, and the
  // boot partition stays the one that was asked about.
  const ActivityScope repairing(session, Activity::kRepairingBoot);
  if (Confirmed(session, boot) && !session.form.unloaded()) Repair(session, boot);
}

}  // namespace pavoline
