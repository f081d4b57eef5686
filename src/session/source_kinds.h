#pragma once

#include <span>
#include <string>

// What can be installed from: the one table of it. A new kind is a row there; where it is read or
// written as no other is, it needs an enumerator here as well, which every switch then asks for.
namespace pavoline {

// What a source path is, told by its last four characters.
enum class ImageKind { kNone, kWim, kEsd, kIso, kGho, kSwm };

// How the editions of a source become known.
enum class ReadBy {
  kNothing,
  kImagingProgram,  // describes them
  kFirstPart,       // the same, of the file that stands for a set of them
  kGhostProgram,    // is itself listed, in place of editions
  kMounting,        // the image inside becomes the source
};

// What writes the image to the partition.
enum class InstalledBy {
  kNothing,  // only what it holds can be installed
  kImagingProgram,
  kGhostProgram,  // overwrites the partition itself, formatted or not
};

struct SourceKind {
  ImageKind kind = ImageKind::kNone;
  const char* extension = "";  // the last four characters, in lower case
  ReadBy readBy = ReadBy::kNothing;
  InstalledBy installedBy = InstalledBy::kNothing;
  int searchPlace = 0;             // among the kinds as a folder is searched for them, from 0
  bool ownFilter = false;          // stands in file dialogs apart from the others
  const char* onMedium = nullptr;  // where installation media hold one; null: nowhere
  bool backsRunning = false;       // a system can keep running from a copy of the file
};

// In the order of file dialogs and of a look at an installation medium.
std::span<const SourceKind> SourceKinds();

// The row of kNone is none of these: it is read and installed by nothing.
const SourceKind& SourceKindOf(const std::string& path);
const SourceKind& SourceKindOf(ImageKind kind);
ImageKind KindOf(const std::string& path);

// "*.iso;*.wim" of the kinds that share a filter; inside a mounted image without those that would
// be mounted.
enum class DialogPlace { kAnywhere, kInsideMounted };
std::string SharedFilter(DialogPlace place);

}  // namespace pavoline
