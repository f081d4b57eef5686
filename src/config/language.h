#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// Chooses the file of the session's language (with fallbacks that change it and the thread's
// locale), reads the options and all texts and gives the main window its captions and font. Acts on
// "Form1" only.
void LoadLanguage(Session& session);

// Writes the texts in use as a language file that loads back to the same. False when the
// file could not be written; no half-written file stays under the name.
bool WriteLanguageFile(Ground& ground, const std::string& path);

}  // namespace pavoline
