#pragma once

#include <optional>
#include <string>

#include "session/session.h"

// A boot partition without a drive letter gets one for the time of an installation: an EFI system
// partition usually has none.
namespace pavoline {

struct LetterlessBoot {
  std::uint32_t disk = 0, partition = 0;  // from 1
  std::string letter;                     // that it could get, "V:"
};

// The boot partition of the install partition's disk that lacks a letter (LetterlessBootEntry), and
// a letter for it. Nothing when there is none, or no letter is free.
std::optional<LetterlessBoot> FindLetterlessBoot(Session& session, const std::string& installDrive);

// Gives it its letter and enters that as the boot partition. False when the system refused. A dry
// run only enters it.
bool LendLetter(Session& session, const LetterlessBoot& boot);

// Takes a lent letter back, if there is one.
void TakeLetterBack(Session& session);

}  // namespace pavoline
