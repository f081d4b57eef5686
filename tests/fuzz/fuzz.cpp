#include "fuzz/fuzz.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "support/fake_text.h"

namespace pavoline::testing {

void Holds(bool kept, const char* promise) {
  if (!kept) throw std::logic_error(promise);
}

std::string_view TakeLine(std::string_view& rest) {
  const std::string_view line = rest.substr(0, rest.find('\n'));
  rest.remove_prefix(std::min(rest.size(), line.size() + 1));
  return line;
}

unsigned TakeByte(std::string_view& rest) {
  const unsigned byte = rest.empty() ? 0 : static_cast<unsigned char>(rest.front());
  rest.remove_prefix(rest.empty() ? 0 : 1);
  return byte;
}

bool IsUtf8(std::string_view text) { return Encode(Decode(text)) == text; }

void FuzzShop::tidy() {
  files.remove("C:\\Windows\\temp\\Pavoline.log");
  processes.started.clear();
  processes.ran.clear();
  dialogs.messages.clear();
}

static FuzzTarget Chosen() {
  const char* name = std::getenv("PAVOLINE_FUZZ_TARGET");
  for (const auto& group : {LogTargets(), FileTargets(), CommandTargets(), DiskTargets()}) {
    for (const FuzzTarget& target : group) {
      if (name && std::string_view(name) == target.name) return target;
    }
  }
  throw std::logic_error("PAVOLINE_FUZZ_TARGET names no target");
}

}  // namespace pavoline::testing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto target = pavoline::testing::Chosen();
  target.run({reinterpret_cast<const char*>(data), size});
  return 0;
}
