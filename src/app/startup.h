#pragma once

#include "session/session.h"

// From process start to a window that is ready, or to an installation begun on the user's behalf.
namespace pavoline {

// Before any control exists.
void InitializeProgram(Workplace& workplace);

// Locale, command line, language, layout, directories, image tool, menu, settings; ends with the
// start-up timer on. False when the image tool is missing: the process ends after the message.
bool LoadMainWindow(Session& session);

// The first tick of Timer2, so that the window is there before the slow work: partitions,
// plug-ins, the source of the command line.
void StartupTick(Session& session);

// Timer4: presses Start for an unattended run once the image has been read, or ends the program
// when the partitions are not the ones it was told to use.
void AutoStartTick(Session& session);

}  // namespace pavoline
