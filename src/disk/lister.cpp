#include "disk/lister.h"

#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_services.h"
#include "run/command_runner.h"
#include "run/command_words.h"

namespace pavoline {

std::optional<std::vector<std::string>> RunLister(Workplace& workplace, const std::string& argument,
                                                  const std::string& base) {
  RunBatch(workplace, BatchTool(workplace, Tool::kLister) + " " + argument, base);
  if (Interrupted(workplace)) return std::nullopt;
  const std::string path = TempFile(workplace, base + ".log");
  const auto log = workplace.platform.files.read(path);
  if (!log) return std::nullopt;
  workplace.platform.files.remove(path);
  auto lines = Split(ReplaceAll(workplace.platform.text.fromAnsi(*log), "\r", ""), "\n");
  std::erase(lines, "");
  return lines;
}

}  // namespace pavoline
