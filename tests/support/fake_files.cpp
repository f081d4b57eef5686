#include "support/fake_files.h"

#include <algorithm>

#include "platform/paths.h"
#include "platform/text.h"
#include "support/fake_text.h"

namespace pavoline::testing {
namespace {

bool Matches(std::wstring_view pattern, std::wstring_view name) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] == L'*') {
    return Matches(pattern.substr(1), name) || (!name.empty() && Matches(pattern, name.substr(1)));
  }
  return !name.empty() && (pattern[0] == L'?' || pattern[0] == name[0]) &&
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
      if (Contains(result, "\\")) result = ParentFolder(result);
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
  const auto dot = std::min(name.rfind('.'), name.size());
  const std::string base = ShortLetters(name.substr(0, dot));
  const std::string extension =
      dot < name.size() ? "." + ShortLetters(name.substr(dot + 1)) : std::string();
  if (base.size() <= 8 && extension.size() <= 4 && base + extension == Upper(name)) return name;
  for (int n = 1;; ++n) {
    std::string candidate = base.substr(0, 6) + "~" + std::to_string(n) + extension.substr(0, 4);
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

bool FakeFiles::drop(const std::string& path) {
  const std::string gone = key(path);
  return std::erase_if(nodes_, [&](const auto& entry) {
           return entry.first == gone || LiesBelow(entry.first, gone);
         }) > 0;
}

std::vector<std::string> FakeFiles::below(const std::string& folder) {
  std::vector<std::string> result;
  for (const auto& [path, node] : nodes_) {
    if (LiesBelow(path, key(folder)) && !node.folder) result.push_back(path);
  }
  return result;
}

std::string FakeFiles::fullPath(const std::string& path) {
  if (path.empty() || path.starts_with("\\\\")) return path;
  const std::string full = absolute(path);
  const bool endsInBackslash = path.ends_with('\\') || path.ends_with('/') || full.size() == 2;
  return endsInBackslash ? full + "\\" : full;
}

std::optional<std::string> FakeFiles::read(const std::string& path) {
  if (size(path).value_or(kLargestRead + 1) > kLargestRead) return std::nullopt;
  return find(path)->content;
}

std::optional<std::string> FakeFiles::readPart(const std::string& path, std::uint64_t offset,
                                               std::size_t room) {
  const std::optional<std::uint64_t> bytes = size(path);
  if (!bytes) return std::nullopt;
  if (offset >= *bytes) return std::string();
  const std::string& content = find(path)->content;
  std::string part = offset < content.size() ? content.substr(offset, room) : std::string();
  part.resize(std::min<std::uint64_t>(room, *bytes - offset));
  return part;
}

bool FakeFiles::create(const std::string& path, const std::string& bytes) {
  if (exists(path)) return false;
  if (write(path, bytes)) return true;
  drop(path);
  return false;
}

bool FakeFiles::write(const std::string& path, const std::string& bytes) {
  if (fails(FileOperation::kWrite) || isFolder(path) || !writable(path)) return false;
  put(path, isFull(path) ? "" : bytes);
  return !isFull(path) || bytes.empty();
}

bool FakeFiles::append(const std::string& path, const std::string& bytes) {
  if (isFolder(path) || !writable(path) || isFull(path)) return false;
  make(path, false).content += bytes;
  return true;
}

std::optional<std::uint64_t> FakeFiles::size(const std::string& path) {
  const Node* node = find(path);
  if (!node || node->folder) return std::nullopt;
  return node->bytes();
}

bool FakeFiles::remove(const std::string& path) {
  const Node* node = find(path);
  if (!node || node->folder || stuck.contains(path)) return false;
  nodes_.erase(key(path));
  return true;
}

bool FakeFiles::rename(const std::string& from, const std::string& to) {
  const Node* node = find(from);
  if (fails(FileOperation::kRename) || !node || node->folder || isFolder(to) || !writable(to)) {
    return false;
  }
  put(to, node->content);
  nodes_.erase(key(from));
  return true;
}

bool FakeFiles::createFolder(const std::string& path) {
  return !exists(path) && writable(path) && make(path, true).folder;
}

bool FakeFiles::copyWithProgress(const std::string& from, const std::string& to,
                                 const CopyProgress& progress) {
  const Node* source = find(from);
  if (fails(FileOperation::kCopy) || !source || source->folder || isFolder(to)) return false;
  if (!writable(to) || isFull(to)) return false;
  const std::uint64_t total = source->bytes();
  for (unsigned step = 1; step <= 4; ++step) {
    if (!progress(total * step / 4, total)) return false;  // leaves nothing
  }
  put(to, source->content);
  return true;
}

void FakeFiles::list(const std::string& pattern, const EntryVisitor& visit) {
  const std::string parent = key(ParentFolder(pattern) + "\\");
  const auto parentNode = nodes_.find(parent);
  if (parentNode == nodes_.end() || !accessible(parent)) return;
  const std::string mask = FileName(pattern) == "*.*" ? "*" : Lower(FileName(pattern));
  std::vector<FileEntry> entries;
  if (mask == "*" && parent.size() > 2) {
    for (const char* dots : {".", ".."}) entries.push_back({dots, kFolderAttribute, 0, ""});
  }
  const auto matches = [&](const std::string& name) { return Matches(Decode(mask), Decode(name)); };
  for (const auto& [path, node] : nodes_) {
    if (ParentFolder(path) != parent) continue;
    if (!matches(FileName(path)) && !(shortNames && matches(Lower(node.shortName)))) continue;
    entries.push_back({node.name, node.attributes, node.bytes(), "2024-05-06 07:08"});
  }
  for (const FileEntry& entry : entries) {
    if (onEntry) onEntry();
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

}  // namespace pavoline::testing
