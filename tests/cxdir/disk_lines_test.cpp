#include "cxdir/disk_lines.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>

namespace pavoline {

using Ends = std::vector<std::byte>;

void Put(Ends& end, std::size_t at, std::string_view bytes) {
  std::memcpy(end.data() + at, bytes.data(), bytes.size());
}

WholeDisk Empty(PartitionStyle style, std::uint32_t sector = 512) {
  WholeDisk whole;
  whole.disk = {2, style, "My SSD", {}};
  whole.bytes = 64ull << 30;
  whole.sectorBytes = sector;
  whole.serial = "S\t1";
  whole.writable = true;
  whole.first = whole.last = Ends(kEndBytes);
  if (style != PartitionStyle::kRaw) Put(whole.first, 510, "\x55\xAA");
  if (style == PartitionStyle::kGpt) {
    Put(whole.first, 450, "\xEE");
    Put(whole.first, sector, "EFI PART");
    Put(whole.last, kEndBytes - sector, "EFI PART");
  }
  return whole;
}

TEST(DiskLines, OnlyADiskThatHoldsNothingIsEmpty) {
  constexpr auto kRaw = PartitionStyle::kRaw, kMbr = PartitionStyle::kMbr,
                 kGpt = PartitionStyle::kGpt;
  const auto bytes = [](std::size_t at, std::string_view what) {
    return [=](WholeDisk& whole) { Put(whole.first, at, what); };
  };
  const auto atEnd = [](std::size_t before, std::string_view what) {
    return [=](WholeDisk& whole) { Put(whole.last, kEndBytes - before, what); };
  };
  const auto entry = [](std::uint8_t type) {
    return [=](WholeDisk& whole) { whole.disk.entries = {{}, {0, 0, 0, type, false, {}}}; };
  };
  const std::tuple<WholeDisk, std::function<void(WholeDisk&)>, const char*> cases[] = {
      {Empty(kRaw), entry(0), "empty"},
      {Empty(kGpt), {}, "empty"},
      {Empty(kGpt, 4096), {}, "empty"},
      {Empty(kMbr), bytes(0, "\x33\xC0\x8E"), "empty"},  // the system's own code
      {Empty(kMbr), bytes(0, "\xEB\x58\x90"), "data"},   // a file system's
      {Empty(kMbr), bytes(510, std::string_view("\0\0", 2)), "data"},
      {Empty(kMbr), bytes(1024, "R"), "data"},
      {Empty(kMbr), atEnd(1, "P"), "data"},
      {Empty(kRaw), bytes(1080, "\x53\xEF"), "data"},  // ext
      {Empty(kRaw), atEnd(1024, "Intel Raid"), "data"},
      {Empty(kGpt), bytes(450, "\x07"), "data"},
      {Empty(kGpt), bytes(466, "\x07"), "data"},   // beside the place holder
      {Empty(kGpt), bytes(1024, "\x01"), "data"},  // an entry that the layout does not tell
      {Empty(kGpt), atEnd(512, "efi"), "data"},
      {Empty(kMbr), entry(0x05), "partitions"},
      {Empty(kMbr), entry(0xEE), "partitions"},
      {Empty(kGpt),
       [](WholeDisk& whole) {
         whole.disk.entries = {{1, 0, 0, 0, false, {1}}};
       },
       "partitions"},
      {Empty(kRaw), [](WholeDisk& whole) { whole.disk.number = 3; }, "volume"},
      {Empty(kRaw), [](WholeDisk& whole) { whole.writable = false; }, "read-only"},
      {Empty(kRaw), [](WholeDisk& whole) { whole.first.clear(); }, "data"}};
  const std::vector<Volume> volumes = {{{{0, 0, 9}, {3, 0, 9}}, "", "", ""}};
  for (auto [whole, change, state] : cases) {
    if (change) change(whole);
    EXPECT_EQ(DiskState(whole, volumes), state) << "case " << &state - &std::get<2>(cases[0]);
  }
  EXPECT_EQ(DiskLine(Empty(kGpt), {}), "2\t68719476736\tMy SSD\tS 1\tGPT\t0\tfixed\tempty");
}

}  // namespace pavoline
