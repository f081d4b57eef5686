#include "disk/lister.h"

#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_services.h"
#include "run/command_runner.h"
#include "run/command_words.h"

namespace pavoline {

std::optional<std::vector<std::string>> RunLister(Session& session, const std::string& argument,
                                                  const std::string& base) {
  RunBatch(session, BatchTool(session, Tool::kLister) + " " + argument, base);
  if (Interrupted(session)) return std::nullopt;
  const std::string path = TempFile(session, base + ".log");
  const auto log = session.platform.files.read(path);
  if (!log) return std::nullopt;
  session.platform.files.remove(path);
  auto lines = Split(ReplaceAll(session.platform.text.fromAnsi(*log), "\r", ""), "\n");
  std::erase(lines, "");
  return lines;
}

}  // namespace pavoline
