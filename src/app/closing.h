#pragma once

#include "session/session.h"

namespace pavoline {

// The window is asked to close. While an installation or a boot repair runs a person is asked first
// (an unattended run takes it as agreed); then the tools of the installation are ended. False: it
// stays open.
bool QueryUnload(Session& session);

// The Stop button: asks first and ends the same tools as closing, but the window stays, so that the
// person can choose anew. An unattended run ends.
void StopRequested(Session& session);

// The window goes: what the program mounted is dismounted and what it searches is stopped.
void Unload(Session& session);

}  // namespace pavoline
