#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace pavoline {

// One entry of a folder's listing.
struct FileEntry {
  std::string name;
  std::uint32_t attributes = 0;  // the platform's attribute word; 16 is a plain folder
  std::uint64_t size = 0;        // bytes
  std::string modified;          // local time, "YYYY-MM-DD HH:MM"
};

inline constexpr std::uint32_t kFolderAttribute = 16;

// Called for each entry; false ends the listing.
using EntryVisitor = std::function<bool(const FileEntry&)>;

// Called while a file is copied, with the bytes done and in all; false cancels the copy.
using CopyProgress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

// `read` takes no larger file (bytes): what the program reads whole are texts of its tools.
inline constexpr std::uint64_t kLargestRead = 64u << 20;

// Paths are absolute Windows paths, or relative to the current folder.
class Files {
 public:
  virtual ~Files() = default;

  virtual bool exists(const std::string& path) = 0;    // a file or a folder
  virtual bool isFolder(const std::string& path) = 0;  // an existing folder

  // True for a folder whose entries can be listed. Leaves the current folder as it is.
  virtual bool accessible(const std::string& folder) = 0;

  // The path from its drive on, "." and ".." worked out against the current folder; the path itself
  // need not exist.
  virtual std::string fullPath(const std::string& path) = 0;

  // All bytes of a file, also of one that another program is still writing.
  // Nothing when it cannot be read or is larger than kLargestRead.
  virtual std::optional<std::string> read(const std::string& path) = 0;

  // At most `room` bytes from `offset` on, of a file of any size, also of one that is being
  // written. Empty behind the end. Nothing when the file cannot be read.
  virtual std::optional<std::string> readPart(const std::string& path, std::uint64_t offset,
                                              std::size_t room) = 0;

  // Writes a file that must not be there yet: nothing that lies under the name is taken over. False
  // when something does, or when any byte could not be written; nothing of it stays then.
  virtual bool create(const std::string& path, const std::string& bytes) = 0;

  // Creates or truncates the file. False when any byte could not be written.
  virtual bool write(const std::string& path, const std::string& bytes) = 0;

  // Adds bytes to the end of a file, which is created when missing.
  virtual bool append(const std::string& path, const std::string& bytes) = 0;

  virtual std::optional<std::uint64_t> size(const std::string& path) = 0;   // bytes of a file
  virtual bool remove(const std::string& path) = 0;                         // a file
  virtual bool rename(const std::string& from, const std::string& to) = 0;  // replaces `to`
  virtual bool createFolder(const std::string& path) = 0;                   // one level

  virtual bool copy(const std::string& from, const std::string& to) = 0;  // replaces `to`

  // The same for a large file. Events are handled by the callee of `progress`, not here.
  virtual bool copyWithProgress(const std::string& from, const std::string& to,
                                const CopyProgress& progress) = 0;

  // Visits the entries that match a pattern such as "D:\\images\\*.wim", "." and ".." included
  // when the pattern covers them. A folder that cannot be listed has no entries.
  virtual void list(const std::string& pattern, const EntryVisitor& visit) = 0;

  // The 8.3 form of an existing path, as the system has it (the long form where the volume
  // keeps no short names). Empty for a path that does not exist.
  virtual std::string shortPath(const std::string& path) = 0;

  // The fixed file version of a program's version resource as "a.b.c.d"; empty without one.
  virtual std::string fileVersion(const std::string& path) = 0;

  // False when the folder is missing or not accessible.
  virtual bool setCurrentFolder(const std::string& path) = 0;

  // Deletes a file or a folder with all that is in it; neither asks nor shows anything. True on
  // success.
  virtual bool deleteTreeQuietly(const std::string& path) = 0;
};

}  // namespace pavoline
