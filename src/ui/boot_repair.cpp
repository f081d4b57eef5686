#include "ui/boot_repair.h"

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/text.h"
#include "postinstall/boot_configuration.h"

namespace pavoline {
namespace {

constexpr float kBootSectorVersion = 6.0F;  // asks for a boot sector of the NT 6 kind

// Without the list the old boot stores would be deleted and nothing written in their place.
bool PartitionsKnown(Session& session, const std::string& boot) {
  if (LeadingNumber(session.form.tag()) == 0) {
    Message(session, String(session, kTextListNotReady), kInformationMessage, "Initializing...");
    return false;
  }
  if (boot.empty() || !session.platform.files.exists(boot)) {
    Message(session, ReplaceAll(String(session, kTextBootMissing), "%bp%", boot), kErrorMessage,
            String(session, kTextError));
    return false;
  }
  return true;
}

bool Confirmed(Session& session, const std::string& boot) {
  const std::string question = ReplaceAll(String(session, kTextConfirmBootRepair), "%bp%", boot) +
                               "\n\n" + String(session, kTextConfirmTail);
  return Message(session, question, kQuestionWarning, String(session, kTextInformation)) ==
         kAnswerOk;
}

void Report(Session& session, const std::string& boot) {
  Files& files = session.platform.files;
  std::string stores;
  if (files.exists(boot + "\\boot\\bcd")) stores = "BIOS";
  if (files.exists(boot + "\\EFI\\Microsoft\\Boot\\bcd")) {
    stores += stores.empty() ? "UEFI" : " + UEFI";
  }
  Message(session,
          ReplaceAll(String(session, kTextBootReport), "%bp%", boot) + "\n[ " + stores + " ] ",
          kInformationMessage, String(session, kTextInformation));
}

void Repair(Session& session, const std::string& boot) {
  Form1& form = session.form;
  form.status.setText(String(session, kTextBootFiles));
  session.bootRepairRequested = true;
  CallBootMbr(session, kBootSectorVersion);
  session.bootRepairRequested = false;
  if (form.unloaded()) return;
  const bool wide = form.width() == kWideWidth;
  form.status.setText(String(session, wide ? kTextStatusWide : kTextStatusNormal));
  Report(session, boot);
}

}  // namespace

void RepairBootFiles(Session& session) {
  Form1& form = session.form;
  const std::string boot = form.text[kBootPartition].text();
  if (!PartitionsKnown(session, boot)) return;
  // Events are handled all the while: no installation may begin before the repair is over, and
  // the boot partition must stay the one that was asked about.
  Control* const locked[] = {&form.command1[kStart], &form.text[kBootPartition],
                             &form.command1[kChooseBoot]};
  bool enabledBefore[std::size(locked)];
  for (std::size_t i = 0; i < std::size(locked); ++i) {
    enabledBefore[i] = locked[i]->enabled();
    locked[i]->setEnabled(false);
  }
  session.starting = true;
  if (Confirmed(session, boot) && !form.unloaded()) Repair(session, boot);
  session.starting = false;
  for (std::size_t i = 0; i < std::size(locked); ++i) locked[i]->setEnabled(enabledBefore[i]);
}

}  // namespace pavoline
