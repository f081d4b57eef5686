#include "engine/command_runner.h"
#include "engine/text_mode_repair.h"
#include "platform/files.h"
#include "platform/text_services.h"

namespace pavoline {
namespace {

constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";
constexpr std::size_t kUtf16MarkBytes = 2;

}  // namespace

std::string ReadUnicodeFile(Session& session, const std::string& path) {
  const auto bytes = session.platform.files.read(path);
  if (!bytes || bytes->size() < kUtf16MarkBytes) return {};
  return session.platform.text.fromUtf16(RepairTextMode(*bytes).substr(kUtf16MarkBytes));
}

std::string ReadUtf8File(Session& session, const std::string& path) {
  return session.platform.files.read(path).value_or(std::string());
}

bool WriteUtf8File(Session& session, const std::string& text, const std::string& path,
                   bool withBom) {
  if (text.empty()) return true;
  return session.platform.files.write(path, (withBom ? kUtf8Mark : "") + text);
}

bool DeleteTree(Session& session, const std::string& path, unsigned flags) {
  return session.platform.files.deleteTree(path, flags);
}

}  // namespace pavoline
