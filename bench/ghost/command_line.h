#pragma once

#include <string>

namespace bench {

// What a restore is told on its command line:
//   -noide -clone,mode=pload,src="D:\X.GHO":1,dst=@os:E: -sure   (or dst=1:2)
struct GhostOrder {
  std::wstring image;        // path, without quotes
  std::wstring drive;        // "E:" when the destination is a drive letter
  std::wstring destination;  // "1:2" when it is an address
  std::string error;         // why the real program would refuse; empty when all is well
};

GhostOrder ReadGhostOrder(const std::wstring& arguments);

}  // namespace bench
