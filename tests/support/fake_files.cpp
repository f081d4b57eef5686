#include "support/fake_files.h"

#include <algorithm>

#include "platform/paths.h"
#include "platform/text.h"
#include "support/fold_case.h"

namespace pavoline::testing {
namespace {

bool Matches(std::u32string_view pattern, std::u32string_view name) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] == U'*') {
    return Matches(pattern.substr(1), name) || (!name.empty() && Matches(pattern, name.substr(1)));
  }
  return !name.empty() && (pattern[0] == U'?' || pattern[0] == name[0]) &&
         Matches(pattern.substr(1), name.substr(1));
}

bool LiesBelow(const std::string& key, const std::string& folder) {
  return key.size() > folder.size() && key.starts_with(folder) && key[folder.size()] == '\\';
}

// The letters that an 8.3 name keeps.
std::string ShortLetters(const std::string& name) {
  std::string result;
  for (char c : Upper(name)) {
    if (static_cast<unsigned char>(c) < 0x80 && c != ' ' && c != '.') {
      result += Contains("+,;=[]", std::string(1, c)) ? '_' : c;
    }
  }
  return result;
}

}  // namespace

std::string FakeFiles::absolute(const std::string& path) const {
  const bool rooted = path.size() >= 2 && path[1] == ':';
  std::string full = rooted                   ? path
                     : path.starts_with("\\") ? currentFolder.substr(0, 2) + path
                                              : WithBackslash(currentFolder) + path;
  std::string result;
  for (const std::string& part : Split(ReplaceAll(full, "/", "\\"), "\\")) {
    if (part.empty() || part == ".") continue;
    if (part == "..") {
      result = ParentFolder(result);
    } else {
      result += (result.empty() ? "" : "\\") + part;
    }
  }
  return result;
}

std::string FakeFiles::key(const std::string& path) const {
  std::string result;
  for (const std::string& part : Split(Lower(absolute(path)), "\\")) {
    std::string next = result.empty() ? part : result + "\\" + part;
    if (!result.empty() && !nodes_.contains(next) && Contains(part, "~")) {
      for (const auto& [other, node] : nodes_) {
        if (ParentFolder(other) == result && Lower(node.shortName) == part) next = other;
      }
    }
    result = next;
  }
  return result;
}

FakeFiles::Node* FakeFiles::find(const std::string& path) {
  if (path.empty()) return nullptr;
  const auto it = nodes_.find(key(path));
  return it == nodes_.end() ? nullptr : &it->second;
}

std::string FakeFiles::derivedShortName(const std::string& parentKey,
                                        const std::string& name) const {
  const auto dot = name.rfind('.');
  const std::string base = name.substr(0, dot);
  const std::string extension = dot == std::string::npos ? "" : name.substr(dot + 1);
  const bool plain = base.size() <= 8 && extension.size() <= 3 && Lower(name).size() &&
                     ShortLetters(base) == Upper(base) &&
                     ShortLetters(extension) == Upper(extension);
  if (plain) return name;
  for (int n = 1;; ++n) {
    std::string candidate = ShortLetters(base).substr(0, 6) + "~" + std::to_string(n);
    if (!extension.empty()) candidate += "." + ShortLetters(extension).substr(0, 3);
    const bool taken = std::any_of(nodes_.begin(), nodes_.end(), [&](const auto& entry) {
      return ParentFolder(entry.first) == parentKey && entry.second.shortName == candidate;
    });
    if (!taken) return candidate;
  }
}

FakeFiles::Node& FakeFiles::make(const std::string& path, bool folder) {
  const std::string full = absolute(path);
  const std::string parent = ParentFolder(full);
  if (!parent.empty() && !nodes_.contains(key(parent))) make(parent, true);
  auto [it, isNew] = nodes_.try_emplace(key(full));
  if (isNew) {
    it->second.name = FileName(full);
    it->second.shortName = parent.empty() ? full : derivedShortName(key(parent), FileName(full));
    it->second.folder = folder;
    it->second.attributes = folder ? kFolderAttribute : 32;
  }
  return it->second;
}

void FakeFiles::folder(const std::string& path) { make(path, true); }

void FakeFiles::put(const std::string& path, const std::string& content) {
  Node& node = make(path, false);
  node.content = content;
  node.size.reset();
}

void FakeFiles::sized(const std::string& path, std::uint64_t bytes) {
  make(path, false).size = bytes;
}
void FakeFiles::version(const std::string& path, const std::string& fileVersion) {
  make(path, false).version = fileVersion;
}
void FakeFiles::attributes(const std::string& path, std::uint32_t word) {
  make(path, (word & kFolderAttribute) != 0).attributes = word;
}
void FakeFiles::modified(const std::string& path, const std::string& time) {
  make(path, false).modified = time;
}
void FakeFiles::shortName(const std::string& path, const std::string& name) {
  make(path, false).shortName = name;
}

void FakeFiles::drop(const std::string& path) {
  const std::string gone = key(path);
  std::erase_if(nodes_, [&](const auto& entry) {
    return entry.first == gone || LiesBelow(entry.first, gone);
  });
}

std::string FakeFiles::text(const std::string& path) {
  const Node* node = find(path);
  return node ? node->content : std::string();
}

std::vector<std::string> FakeFiles::below(const std::string& folder) {
  std::vector<std::string> result;
  for (const auto& [path, node] : nodes_) {
    if (LiesBelow(path, key(folder)) && !node.folder) result.push_back(path);
  }
  return result;
}

bool FakeFiles::fails(FileOperation operation) {
  int& left = failures_[operation];
  if (left == 0) return false;
  --left;
  return true;
}

bool FakeFiles::writable(const std::string& path) const {
  const std::string wanted = key(path);
  const auto parent = nodes_.find(ParentFolder(wanted));
  return parent != nodes_.end() && parent->second.folder &&
         std::none_of(readOnlyFolders.begin(), readOnlyFolders.end(),
                      [&](const std::string& folder) { return LiesBelow(wanted, folder); });
}

bool FakeFiles::isFull(const std::string& path) const {
  return std::any_of(fullFolders.begin(), fullFolders.end(),
                     [&](const std::string& folder) { return LiesBelow(key(path), folder); });
}

bool FakeFiles::exists(const std::string& path) { return find(path) != nullptr; }

bool FakeFiles::isFolder(const std::string& path) {
  const Node* node = find(path);
  return node && node->folder;
}

std::optional<std::string> FakeFiles::read(const std::string& path) {
  const Node* node = find(path);
  if (fails(FileOperation::kRead) || !node || node->folder) return std::nullopt;
  return node->content;
}

bool FakeFiles::write(const std::string& path, const std::string& bytes) {
  if (fails(FileOperation::kWrite) || isFolder(path) || !writable(path)) return false;
  put(path, isFull(path) ? "" : bytes);
  return !isFull(path) || bytes.empty();
}

bool FakeFiles::append(const std::string& path, const std::string& bytes) {
  if (fails(FileOperation::kAppend) || isFolder(path) || !writable(path)) return false;
  if (isFull(path)) return false;
  make(path, false).content += bytes;
  return true;
}

std::optional<std::uint64_t> FakeFiles::size(const std::string& path) {
  const Node* node = find(path);
  if (!node || node->folder) return std::nullopt;
  return node->size.value_or(node->content.size());
}

bool FakeFiles::remove(const std::string& path) {
  const Node* node = find(path);
  if (fails(FileOperation::kRemove) || !node || node->folder || !writable(path)) return false;
  nodes_.erase(key(path));
  return true;
}

bool FakeFiles::rename(const std::string& from, const std::string& to) {
  const Node* node = find(from);
  if (fails(FileOperation::kRename) || !node || node->folder || isFolder(to)) return false;
  if (!writable(from) || !writable(to)) return false;
  Node moved = *node;
  nodes_.erase(key(from));
  nodes_.erase(key(to));
  Node& target = make(to, false);
  moved.name = target.name;
  moved.shortName = target.shortName;
  target = moved;
  return true;
}

bool FakeFiles::createFolder(const std::string& path) {
  if (fails(FileOperation::kCreateFolder) || exists(path) || !writable(path)) return false;
  make(path, true);
  return true;
}

bool FakeFiles::copy(const std::string& from, const std::string& to) {
  return copyWithProgress(from, to, [](std::uint64_t, std::uint64_t) { return true; });
}

bool FakeFiles::copyWithProgress(const std::string& from, const std::string& to,
                                 const CopyProgress& progress) {
  const Node* source = find(from);
  if (fails(FileOperation::kCopy) || !source || source->folder || isFolder(to)) return false;
  if (!writable(to) || isFull(to)) return false;
  const Node copied = *source;
  const std::uint64_t total = copied.size.value_or(copied.content.size());
  for (int step = 1; step <= copySteps; ++step) {
    const auto done = total / static_cast<unsigned>(copySteps) * static_cast<unsigned>(step);
    if (!progress(step == copySteps ? total : done, total)) return false;  // leaves nothing
  }
  put(to, copied.content);
  Node& target = *find(to);
  target.size = copied.size;
  target.version = copied.version;
  return true;
}

void FakeFiles::list(const std::string& pattern, const EntryVisitor& visit) {
  listed.push_back(pattern);
  const std::string parent = key(ParentFolder(pattern) + "\\");
  const auto parentNode = nodes_.find(parent);
  if (parentNode == nodes_.end() || !parentNode->second.folder) return;
  const std::string mask = FileName(pattern) == "*.*" ? "*" : Lower(FileName(pattern));
  std::vector<FileEntry> entries;
  if (mask == "*" && parent.size() > 2) {
    for (const char* dots : {".", ".."}) entries.push_back({dots, kFolderAttribute, 0, ""});
  }
  for (const auto& [path, node] : nodes_) {
    if (ParentFolder(path) != parent || !Matches(Decode(mask), Decode(FileName(path)))) continue;
    entries.push_back(
        {node.name, node.attributes, node.size.value_or(node.content.size()), node.modified});
  }
  for (const FileEntry& entry : entries) {
    if (!visit(entry)) return;
  }
}

std::string FakeFiles::shortPath(const std::string& path) {
  if (!exists(path)) return {};
  std::string result, longPath;
  for (const std::string& part : Split(absolute(path), "\\")) {
    longPath += (longPath.empty() ? "" : "\\") + part;
    const Node* node = find(longPath);
    result += (result.empty() ? "" : "\\") + (shortNames ? node->shortName : node->name);
  }
  return path.ends_with('\\') ? result + "\\" : result;
}

std::string FakeFiles::fileVersion(const std::string& path) {
  const Node* node = find(path);
  return node ? node->version : std::string();
}

bool FakeFiles::setCurrentFolder(const std::string& path) {
  if (!isFolder(path)) return false;
  currentFolder = absolute(path);
  return true;
}

bool FakeFiles::deleteTree(const std::string& path, unsigned flags) {
  deleted.push_back(path);
  deleteFlags.push_back(flags);
  if (fails(FileOperation::kDeleteTree) || !exists(path) || !writable(path)) return false;
  drop(path);
  return true;
}

}  // namespace pavoline::testing
