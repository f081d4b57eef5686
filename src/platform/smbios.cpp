#include "platform/smbios.h"

#include <algorithm>
#include <cstddef>

#include "platform/text.h"

namespace pavoline {
namespace {

constexpr std::size_t kAnswerHead = 8;     // calling method, version, length
constexpr std::size_t kStructureHead = 4;  // type, length, handle
constexpr unsigned kSystemInformation = 1;
constexpr unsigned kEndOfTable = 127;
// Places in the structure that describes the system; each holds the number of a string.
constexpr std::size_t kProductName = 5;
constexpr std::size_t kSerialNumber = 7;

unsigned ByteAt(std::string_view bytes, std::size_t place) {
  return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0;
}

// String n, from 1, of the zero-terminated ones behind a structure.
std::string NumberedString(std::string_view strings, unsigned n) {
  while (n > 1 && !strings.empty()) {
    const auto end = strings.find('\0');
    strings.remove_prefix(end == std::string_view::npos ? strings.size() : end + 1);
    --n;
  }
  if (n == 0) return {};
  std::string text(strings.substr(0, strings.find('\0')));
  std::erase_if(text, [](unsigned char c) { return c < ' ' || c > '~'; });
  return Trim(text);
}

// The bytes of a structure's strings, which two zeros end.
std::string_view StringsBehind(std::string_view table, std::size_t formatted) {
  const std::string_view rest = table.substr(formatted);
  const auto end = rest.find(std::string_view("\0\0", 2));
  return rest.substr(0, end);
}

}  // namespace

FirmwareNames ReadFirmwareTable(std::string_view answer) {
  FirmwareNames names;
  std::string_view table = answer.substr(std::min(answer.size(), kAnswerHead));
  while (table.size() >= kStructureHead) {
    const unsigned type = ByteAt(table, 0);
    const std::size_t formatted = ByteAt(table, 1);
    if (formatted < kStructureHead || formatted > table.size() || type == kEndOfTable) break;
    const std::string_view strings = StringsBehind(table, formatted);
    if (type == kSystemInformation) {
      const std::string_view fields = table.substr(0, formatted);
      names.model = NumberedString(strings, ByteAt(fields, kProductName));
      names.serial = NumberedString(strings, ByteAt(fields, kSerialNumber));
      break;
    }
    table.remove_prefix(std::min(table.size(), formatted + strings.size() + 2));
  }
  return names;
}

}  // namespace pavoline
