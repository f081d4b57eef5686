#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/files.h"
#include "session/session.h"

namespace pavoline {

// One walk over folders on the user-interface thread.
struct FolderWalk {
  Session& session;
  bool locksSource = false;  // the source box must not change while the walk goes on

  bool ended() const { return session.search.stop || session.form.unloaded(); }
  // Called after each entry; handles events when some time has gone by since it last did.
  void handleEvents() const;

  mutable std::uint64_t handledAt = 0;  // milliseconds of the environment
};

// False for what is no folder, and for folders that belong to an installed system.
bool IsSearchedFolder(const FileEntry& entry);

// Adds the full paths of a folder's subfolders to `found`, but for those that belong to an
// installed system. A folder that is missing or not accessible has none. The current folder stays
// what it is: from a foreign medium's folder no program must ever be started by mistake.
void ListFolders(const FolderWalk& walk, const std::string& folder,
                 std::vector<std::string>& found);

// Roots ("D:") of the listed partitions, the last partition's first.
std::vector<std::string> DriveRoots(const Findings& findings);

}  // namespace pavoline
