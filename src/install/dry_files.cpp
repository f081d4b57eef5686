#include "install/dry_files.h"

#include <algorithm>

#include "platform/paths.h"
#include "platform/text.h"

namespace pavoline {

const DryFiles::Changed* DryFiles::changed(const std::string& path) const {
  const auto found = changed_.find(LowerAscii(path));
  return found == changed_.end() ? nullptr : &found->second;
}

bool DryFiles::wiped(const std::string& path) const {
  return !wiped_.empty() && LowerAscii(path).starts_with(wiped_);
}

void DryFiles::tell(const std::string& from, const std::string& to) {
  if (LowerAscii(to).starts_with(LowerAscii(temp_))) return;
  tell_((from.empty() ? "" : from + " ") + "-> " + to);
}

void DryFiles::appears(const std::string& path, const std::string& content,
                       const std::string& version) {
  changed_[LowerAscii(path)] = {true, content, version};
}

void DryFiles::wipe(const std::string& drive) {
  wiped_ = LowerAscii(drive) + "\\";
  std::erase_if(changed_, [&](const auto& entry) { return entry.first.starts_with(wiped_); });
}

std::string DryFiles::written(const std::string& path) const {
  const Changed* file = changed(path);
  return file != nullptr && file->there ? file->content : std::string();
}

bool DryFiles::exists(const std::string& path) {
  if (const Changed* file = changed(path)) return file->there;
  return !wiped(path) && real_.exists(path);
}

// Of what has changed, whatever holds something is a folder.
bool DryFiles::isFolder(const std::string& path) {
  const std::string inside = LowerAscii(path) + "\\";
  const auto holds = [&](const auto& entry) {
    return entry.second.there && entry.first.starts_with(inside);
  };
  if (std::ranges::any_of(changed_, holds)) return true;
  return changed(path) == nullptr && !wiped(path) && real_.isFolder(path);
}

std::optional<std::string> DryFiles::read(const std::string& path) {
  if (!exists(path)) return std::nullopt;
  const Changed* file = changed(path);
  return file != nullptr ? file->content : real_.read(path);
}

std::optional<std::string> DryFiles::readPart(const std::string& path, std::uint64_t offset,
                                              std::size_t room) {
  if (!exists(path)) return std::nullopt;
  const Changed* file = changed(path);
  if (file == nullptr) return real_.readPart(path, offset, room);
  return offset < file->content.size()
             ? file->content.substr(static_cast<std::size_t>(offset), room)
             : std::string();
}

bool DryFiles::create(const std::string& path, const std::string& bytes) {
  return !exists(path) && write(path, bytes);
}

bool DryFiles::write(const std::string& path, const std::string& bytes) {
  appears(path, bytes);
  tell("", path);
  return true;
}

std::optional<std::uint64_t> DryFiles::size(const std::string& path) {
  if (!exists(path)) return std::nullopt;
  const Changed* file = changed(path);
  return file != nullptr ? file->content.size() : real_.size(path);
}

bool DryFiles::remove(const std::string& path) {
  const bool there = exists(path);
  changed_[LowerAscii(path)].there = false;
  return there;
}

bool DryFiles::rename(const std::string& from, const std::string& to) {
  if (!exists(from)) return false;
  remove(from);
  appears(to);
  tell(from, to);
  return true;
}

bool DryFiles::createFolder(const std::string& path) {
  appears(path);
  return true;
}

bool DryFiles::copy(const std::string& from, const std::string& to) {
  if (!exists(from)) return false;
  appears(to);
  tell(from, to);
  return true;
}

bool DryFiles::copyWithProgress(const std::string& from, const std::string& to,
                                const CopyProgress&) {
  return copy(from, to);
}

std::string DryFiles::shortPath(const std::string& path) {
  std::string known = real_.shortPath(path);
  if (!known.empty() || !exists(path)) return known;
  const std::string folder = shortPath(ParentFolder(path));
  return (folder.empty() ? ParentFolder(path) : folder) + "\\" + FileName(path);
}

std::string DryFiles::fileVersion(const std::string& path) {
  if (!exists(path)) return {};
  const Changed* file = changed(path);
  return file != nullptr ? file->version : real_.fileVersion(path);
}

bool DryFiles::deleteTreeQuietly(const std::string& path) { return remove(path); }

}  // namespace pavoline
