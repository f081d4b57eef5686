#pragma once

#include <windows.h>

#include <string>

#include "platform/dialogs.h"

namespace pavoline {

// The system's message box, which ends by itself when its limit has passed; its title shows the
// seconds left ("Please note (57)"). A box that has one over it waits for that to be answered.
int ShowMessageBox(HWND owner, const std::wstring& text, const std::wstring& title, UINT style,
                   const MessageLimit& limit);

}  // namespace pavoline
