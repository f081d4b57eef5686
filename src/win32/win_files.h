#pragma once

#include "platform/files.h"

namespace pavoline {

class WinFiles : public Files {
 public:
  bool exists(const std::string& path) override;
  bool isFolder(const std::string& path) override;
  bool accessible(const std::string& folder) override;
  std::string fullPath(const std::string& path) override;
  std::optional<std::string> read(const std::string& path) override;
  std::optional<std::string> readPart(const std::string& path, std::uint64_t offset,
                                      std::size_t room) override;
  bool create(const std::string& path, const std::string& bytes) override;
  bool write(const std::string& path, const std::string& bytes) override;
  bool append(const std::string& path, const std::string& bytes) override;
  std::optional<std::uint64_t> size(const std::string& path) override;
  bool remove(const std::string& path) override;
  bool rename(const std::string& from, const std::string& to) override;
  bool createFolder(const std::string& path) override;
  bool copy(const std::string& from, const std::string& to) override;
  bool copyWithProgress(const std::string& from, const std::string& to,
                        const CopyProgress& progress) override;
  void list(const std::string& pattern, const EntryVisitor& visit) override;
  std::string shortPath(const std::string& path) override;
  std::string fileVersion(const std::string& path) override;
  bool setCurrentFolder(const std::string& path) override;
  bool deleteTreeQuietly(const std::string& path) override;
};

}  // namespace pavoline
