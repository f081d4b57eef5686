#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/files.h"

namespace pavoline {

// The machine's files as they would be: what is written, copied, renamed or removed here happens in
// memory only, over the real files. Each change outside the temporary folder is told as
// "from -> to", or "-> to" for a file written anew.
class DryFiles : public Files {
 public:
  DryFiles(Files& real, std::string tempFolder, std::function<void(const std::string&)> tell)
      : real_(real), temp_(std::move(tempFolder)), tell_(std::move(tell)) {}

  // What a program would do that is not started.
  void appears(const std::string& path, const std::string& content = "",
               const std::string& version = "");
  void wipe(const std::string& drive);  // "E:"

  // A file as it was written here; empty for any other.
  std::string written(const std::string& path) const;

  bool exists(const std::string& path) override;
  bool isFolder(const std::string& path) override;
  bool accessible(const std::string& folder) override { return isFolder(folder); }
  std::string fullPath(const std::string& path) override { return real_.fullPath(path); }
  std::optional<std::string> read(const std::string& path) override;
  std::optional<std::string> readPart(const std::string& path, std::uint64_t offset,
                                      std::size_t room) override;
  bool create(const std::string& path, const std::string& bytes) override;
  bool write(const std::string& path, const std::string& bytes) override;
  bool append(const std::string&, const std::string&) override { return true; }
  std::optional<std::uint64_t> size(const std::string& path) override;
  bool remove(const std::string& path) override;
  bool rename(const std::string& from, const std::string& to) override;
  bool createFolder(const std::string& path) override;
  bool copy(const std::string& from, const std::string& to) override;
  bool copyWithProgress(const std::string& from, const std::string& to,
                        const CopyProgress& progress) override;
  void list(const std::string& pattern, const EntryVisitor& visit) override {
    real_.list(pattern, visit);
  }
  // A path that would only appear has no short name yet: its own name stands for it.
  std::string shortPath(const std::string& path) override;
  std::string fileVersion(const std::string& path) override;
  bool setCurrentFolder(const std::string&) override { return true; }
  bool deleteTreeQuietly(const std::string& path) override;

 private:
  struct Changed {
    bool there = true;
    std::string content, version;
  };
  const Changed* changed(const std::string& path) const;
  bool wiped(const std::string& path) const;
  void tell(const std::string& from, const std::string& to);

  Files& real_;
  std::string temp_;
  std::function<void(const std::string&)> tell_;
  std::map<std::string, Changed> changed_;  // by path in lower case
  std::string wiped_;                       // "e:\"
};

}  // namespace pavoline
