#include "run/tool_files.h"

#include <algorithm>
#include <utility>

#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_services.h"
#include "run/text_mode_repair.h"

namespace pavoline {
namespace {

constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";
constexpr std::size_t kUtf16MarkBytes = 2;

constexpr std::size_t kWordsRead = 4096;  // bytes
constexpr std::size_t kWordsKept = 400;   // characters, for a message
constexpr std::size_t kLinesKept = 4;

// Lines that say something, cut at either kind of line end.
std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (const std::string& line : Split(ReplaceAll(text, "\r", "\n"), "\n")) {
    if (!Trim(line).empty()) lines.push_back(Trim(line));
  }
  return lines;
}

// The text cut to so many bytes or a little less: no letter is cut in two.
std::string Cut(const std::string& text, std::size_t bytes) {
  while (bytes < text.size() && (static_cast<unsigned char>(text[bytes]) & 0xC0) == 0x80) --bytes;
  return text.substr(0, bytes);
}

}  // namespace

std::string ReadUnicodeFile(Ground& ground, const std::string& path) {
  auto bytes = ground.platform.files.read(path);
  if (!bytes) return {};
  std::string mended = RepairTextMode(*std::move(bytes));
  if (mended.size() < kUtf16MarkBytes) return {};
  return ground.platform.text.fromUtf16(mended.erase(0, kUtf16MarkBytes));
}

std::string ReadUtf8File(Ground& ground, const std::string& path) {
  return ground.platform.files.read(path).value_or(std::string());
}

bool WriteUtf8File(Ground& ground, const std::string& text, const std::string& path, bool withBom) {
  if (text.empty()) return true;
  return ground.platform.files.write(path, (withBom ? kUtf8Mark : "") + text);
}

std::string ReadEnd(Ground& ground, const std::string& path, std::size_t room) {
  Files& files = ground.platform.files;
  const std::uint64_t size = files.size(path).value_or(0);
  return files.readPart(path, size > room ? size - room : 0, room).value_or(std::string());
}

std::string LastWords(Ground& ground, const std::string& path) {
  std::string bytes = ReadEnd(ground, path, kWordsRead);
  // Some tools write in two-byte characters; what counts of those are the plain letters.
  std::erase(bytes, '\0');
  const auto lines = Lines(ground.platform.text.fromAnsi(bytes));
  std::string words;
  for (std::size_t i = lines.size() - std::min(lines.size(), kLinesKept); i < lines.size(); ++i) {
    words += (words.empty() ? "" : "\n") + Cut(lines[i], kWordsKept / kLinesKept * 2);
  }
  return words;
}

}  // namespace pavoline
