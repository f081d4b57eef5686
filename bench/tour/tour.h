#pragma once

#include <functional>
#include <string>

#include "driver/window.h"

// A walk through every window of the installer, so that each can be looked at: by a camera
// (shoot.cpp) or by a ruler (tests/fit).
namespace bench {

// Called while the window stands there as a person would see it; `name` is fit for a file name.
using Visit = std::function<void(const std::string& name, const Window& window)>;

// The main window as it starts and in its other width. It must have been started with a source.
// False, with a line on standard error, as soon as something does not show within its time; so do
// the others.
bool TourMainWindow(const std::string& program, const Visit& visit);

// The small windows, and the opened system menu. The search must find an image within seconds.
bool TourSmallWindows(const std::string& program, const Visit& visit);

// The confirmation, an installation half-way and the question at its end, which ends the program.
// The imaging tool must be slow enough to be caught ("pace").
bool TourInstallation(const std::string& program, const Visit& visit);

}  // namespace bench
