// CxDir: prints the partitions of all disks, or with "/disks" the disks themselves, one
// tab-separated line each (docs/formats.md). Exit code 0 with a list, however short; 1 when it
// could not be written; 2 for bad arguments.

#include <windows.h>

#include <cstdint>
#include <cwchar>
#include <string>
#include <vector>

#include "cxdir/disk_query.h"
#include "cxdir/partition_lines.h"
#include "cxdir/text.h"
#include "cxdir/volume_query.h"

namespace pavoline {
namespace {

bool Write(DWORD stream, const std::string& text) {
  if (text.empty()) return true;
  const DWORD size = static_cast<DWORD>(text.size());
  DWORD written = 0;
  return WriteFile(GetStdHandle(stream), text.data(), size, &written, nullptr) && written == size;
}

void Complain(const std::string& text) { Write(STD_ERROR_HANDLE, "CxDir: " + text + "\r\n"); }

// The answers that came, of disks that could be read; those that could not are named.
template <class Answer>
auto Readable(Answer (*query)(std::uint32_t number)) {
  std::vector<typename decltype(Answer::disk)::value_type> disks;
  for (std::uint32_t number : DiskNumbers()) {
    Answer answer = query(number);
    if (answer.disk) {
      disks.push_back(std::move(*answer.disk));
    } else {
      Complain("\\\\.\\PhysicalDrive" + std::to_string(number) + " cannot be read (error " +
               std::to_string(answer.error) + ")");
    }
  }
  return disks;
}

std::vector<std::string> DiskLines() {
  // Volumes last: one that came meanwhile is seen.
  const auto disks = Readable(QueryWholeDisk);
  const std::vector<Volume> volumes = QueryVolumes();
  std::vector<std::string> lines;
  for (const WholeDisk& whole : disks) lines.push_back(DiskLine(whole, volumes));
  return lines;
}

int Print(const std::vector<std::string>& lines) {
  std::string list;
  for (const std::string& line : lines) list += AnsiText(line) + "\r\n";
  return Write(STD_OUTPUT_HANDLE, list) ? 0 : 1;
}

int Run(int count, wchar_t** arguments) {
  const bool disks = count == 2 && std::wcscmp(arguments[1], L"/disks") == 0;
  if (!disks && count != 1 && !(count == 2 && std::wcscmp(arguments[1], L"-vaskor") == 0)) {
    Complain("usage: CxDir [-vaskor | /disks]");
    return 2;
  }
  // A drive without a medium is an answer here, not a question to the user.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  return Print(disks ? DiskLines() : PartitionLines(Readable(QueryDisk), QueryVolumes()));
}

}  // namespace
}  // namespace pavoline

extern "C" int wmain(int count, wchar_t** arguments) { return pavoline::Run(count, arguments); }
