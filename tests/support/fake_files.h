#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/paths.h"

namespace pavoline::testing {

enum class FileOperation { kWrite, kRename, kCopy };  // kWrite: also creating

// A tree of drives in memory. Paths are matched without regard to case and by long or 8.3 names.
// Tests build and look at it with the methods of the first part, the program uses the second.
struct FakeFiles : Files {
  void folder(const std::string& path) { make(path, true); }  // with all that lies above it
  void put(const std::string& path, const std::string& content = "") {
    Node& node = make(path, false);
    node.content = content;
    node.size.reset();
  }
  void sized(const std::string& path, std::uint64_t bytes) {  // a large file without its content
    make(path, false).size = bytes;
  }
  void version(const std::string& path, const std::string& number) {  // file is made if missing
    make(path, false).version = number;
  }
  void attributes(const std::string& file, std::uint32_t word) {
    make(file, false).attributes = word;
  }
  bool drop(const std::string& path);          // a file or folder with all below it
  std::string text(const std::string& path) {  // content; empty for a missing file
    const Node* node = find(path);
    return node ? node->content : std::string();
  }
  std::vector<std::string> below(const std::string& folder);  // paths of all files, in order

  bool shortNames = true;       // false: volumes keep none
  std::string noRoom = "none";  // folder or drive below which no byte finds room
  void failNext(FileOperation operation) { ++failures_[operation]; }
  std::set<std::string> stuck;  // files that cannot be removed, as the program calls them

  std::function<void()> onEntry;  // of a listing, which takes its time

  std::string currentFolder = "X:\\Pavoline";

  bool exists(const std::string& path) override { return find(path) != nullptr; }
  bool isFolder(const std::string& path) override {
    const Node* node = find(path);
    return node && node->folder;
  }
  bool accessible(const std::string& folder) override { return isFolder(folder); }
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
  bool copy(const std::string& from, const std::string& to) override {
    return copyWithProgress(from, to, [](std::uint64_t, std::uint64_t) { return true; });
  }
  bool copyWithProgress(const std::string& from, const std::string& to,
                        const CopyProgress& progress) override;
  void list(const std::string& pattern, const EntryVisitor& visit) override;
  std::string shortPath(const std::string& path) override;
  std::string fileVersion(const std::string& path) override {
    const Node* node = find(path);
    return node ? node->version : std::string();
  }
  bool setCurrentFolder(const std::string& path) override {
    if (!accessible(path)) return false;
    currentFolder = absolute(path);
    return true;
  }
  bool deleteTreeQuietly(const std::string& path) override { return exists(path) && drop(path); }

 private:
  struct Node {
    std::string name, shortName;
    bool folder = false;
    std::string content;
    std::optional<std::uint64_t> size;  // when it is not the content's
    std::uint32_t attributes = 0;
    std::string version;
    std::uint64_t bytes() const { return size.value_or(content.size()); }
  };

  std::string absolute(const std::string& path) const;
  std::string key(const std::string& path) const;  // lower case, long names, no end backslash
  Node* find(const std::string& path);
  Node& make(const std::string& path, bool folder);
  std::string derivedShortName(const std::string& parentKey, const std::string& name) const;
  bool fails(FileOperation operation) { return failures_[operation] > 0 && failures_[operation]--; }
  bool writable(const std::string& path) { return isFolder(ParentFolder(key(path))); }
  bool isFull(const std::string& path) const { return key(path).starts_with(key(noRoom) + "\\"); }

  std::map<std::string, Node> nodes_;  // by key
  std::map<FileOperation, int> failures_;
};

}  // namespace pavoline::testing
