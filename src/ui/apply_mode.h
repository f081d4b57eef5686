#pragma once

#include <span>

#include "session/session.h"

namespace pavoline {

// A way of applying images: what the imaging program is told, and what the title adds.
struct ApplyMode {
  int commandId;
  const char* menuText;  // the same in every language
  const char* applyOptions;
  const char* titleSuffix;
};

// In the order of the menu; every run starts with the first.
std::span<const ApplyMode> ApplyModes();

// Takes over the mode of a menu command: switch, window title, check marks; nothing while the
// options must not change. False for other commands.
bool ChooseApplyMode(Session& session, int commandId);

}  // namespace pavoline
