#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// What takes the place of "%ip%" and "%bp%" in a plug-in's command line.
struct PluginDrives {
  std::string install, boot;
};

// Runs the chosen plug-in: a command line, a path, or the name of a discovered one. Waits for its
// end; a program that is not there is passed over.
void CallPlugin(Session& session, const std::string& command, const PluginDrives& drives);

// The plug-in as the record and a dry run name it: "..." stands for its parameters, which may hold a
// password.
std::string RecordedPlugin(const std::string& command);

// Runs a discovered plug-in by name; nothing when there is none of that name.
void RunPlugin(Session& session, const std::string& name, const PluginDrives& drives);

}  // namespace pavoline
