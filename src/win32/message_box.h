#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "platform/dialogs.h"

namespace pavoline {

// A further button, which leaves the box open. Without a text there is none.
struct BoxButton {
  std::wstring text;
  std::function<void()> press;
};

// The system's message box, which ends by itself when its limit has passed; its title shows the
// seconds left ("Please note (57)"). A box that has one over it waits for that to be answered, one
// with a window over it closes that first.
Answer ShowMessageBox(HWND owner, const std::wstring& text, const std::wstring& title, UINT style,
                      const MessageLimit& limit, const BoxButton& further);

}  // namespace pavoline
