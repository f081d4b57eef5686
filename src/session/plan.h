#pragma once

#include <string>
#include <vector>

#include "platform/drives.h"
#include "session/options.h"
#include "session/source_kinds.h"

namespace pavoline {

// The volume to install to, as the list and the platform know it. Two looks at the same volume are
// equal; another volume under the same letter is not.
struct TargetVolume {
  std::string drive;    // "E:"
  std::string address;  // disk:partition, as the Ghost program writes it
  std::string label, size, fileSystem, disk;
  VolumeFacts facts;
  bool operator==(const TargetVolume&) const = default;
};

// The files are left in the image, and the system keeps running from it.
inline constexpr char kWimbootOption[] = "--wimboot";

// How the imaging program is told to write.
struct ApplyChoice {
  std::string options;   // its switch, for example "--compact=lzx"
  bool wimcopy = false;  // the image is first copied into the target
};

// Everything that an installation will use, fixed by the checks of Start. No later step looks at a
// control or at the menu. Paths are full paths.
struct Plan {
  std::string source;
  ImageKind kind = ImageKind::kNone;
  std::vector<std::string> furtherParts;  // of a split image, whose first is the source
  int edition = 1;                        // from 1
  std::string editionName;
  std::string language;  // of the edition, for the boot files; "en-US"
  TargetVolume target;
  std::string bootDrive;  // "S:"
  bool format = false;
  ApplyChoice apply;
  std::string ghostProgram;
  double ghostBuild = 0;
  bool minimizeGhost = true;
  bool repairBoot = false;  // boot files for every Windows found, not for the new one alone
  std::string answerFile;   // empty: none is wanted; a full path once it was checked
  std::string driverFolder;
  std::string plugin;  // a command line, or a discovered plug-in's name
  bool restart = false;
};

inline bool IsGhost(const Plan& plan) {
  return SourceKindOf(plan.kind).installedBy == InstalledBy::kGhostProgram;
}
// The source is the first file of several.
inline bool IsSplit(const Plan& plan) {
  return SourceKindOf(plan.kind).readBy == ReadBy::kFirstPart;
}

}  // namespace pavoline
