#include "ghost/command_line.h"

#include <regex>

namespace bench {

GhostOrder ReadGhostOrder(const std::wstring& arguments) {
  static const std::wregex whole(
      L"-noide -clone,mode=pload,src=(\"[^\"]+\"|[^\", ]+):1,dst=(@os:([A-Za-z]:)|([0-9]+:[0-9]+)) "
      L"-sure *");
  GhostOrder order;
  std::wsmatch match;
  if (!std::regex_match(arguments, match, whole)) {
    order.error = "the command line is not one this program takes";
    return order;
  }
  order.image = match[1];
  std::erase(order.image, L'"');
  order.drive = match[3];
  order.destination = match[4];
  return order;
}

}  // namespace bench
