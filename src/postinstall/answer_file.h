#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// True for a text with "[Pavoline]" and "process=1": its placeholders are filled by this program.
bool IsTemplate(const std::string& text);

// The default answer file, which logs on as Administrator.
const std::string& BuiltInAnswerFile();

// Writes \Windows\Panther\unattend.xml on the install partition from the chosen template, unless
// the image brought one of its own or the template is missing.
void WriteAnswerFile(Session& session);

}  // namespace pavoline
