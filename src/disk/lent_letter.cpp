#include "disk/lent_letter.h"

#include "disk/partitions.h"
#include "disk/virtual_disk.h"
#include "platform/drives.h"
#include "platform/text.h"
#include "session/drive_list.h"

namespace pavoline {

std::optional<LetterlessBoot> FindLetterlessBoot(Session& session,
                                                 const std::string& installDrive) {
  const PartitionEntry* found = LetterlessBootEntry(session, installDrive);
  const std::string letter = GetULetter(DriveList(session, 0));
  if (found == nullptr || letter.empty()) return std::nullopt;
  const std::string address = found->address;
  const auto colon = address.find(':');
  if (colon == std::string::npos) return std::nullopt;
  return LetterlessBoot{static_cast<std::uint32_t>(found->diskNumber),
                        static_cast<std::uint32_t>(LeadingNumber(address.substr(colon + 1))),
                        letter + ":"};
}

bool LendLetter(Session& session, const LetterlessBoot& boot) {
  const bool lent = session.commandLine.dryRun ||
                    session.platform.drives.assignLetter({boot.disk, boot.partition}, boot.letter);
  const char* given = session.commandLine.dryRun ? " would get " : " gets ";
  Journal(session, "boot partition " + std::to_string(boot.disk) + ":" +
                       std::to_string(boot.partition) + (lent ? given : " did not get ") +
                       boot.letter);
  if (!lent) return false;
  session.lentLetter = boot.letter;
  session.form.text[kBootPartition].setText(boot.letter);
  return true;
}

void TakeLetterBack(Session& session) {
  const std::string letter = session.lentLetter;
  if (letter.empty()) return;
  session.lentLetter.clear();
  if (!session.commandLine.dryRun) {
    const bool taken = session.platform.drives.removeLetter(letter);
    Journal(session, letter + (taken ? " is taken back" : " could not be taken back"));
  }
  if (session.form.text[kBootPartition].text() == letter) {
    session.form.text[kBootPartition].setText("");
  }
}

}  // namespace pavoline
