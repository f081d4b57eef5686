#pragma once

#include <windows.h>

#include <string>

namespace pavoline {

// What a screen reader calls a window; empty: what it finds itself. Nothing happens on a system
// without the service for it.
void SetSpokenName(HWND window, const std::string& name);

}  // namespace pavoline
