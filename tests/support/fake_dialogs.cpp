#include "support/fake_dialogs.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/layout_check.h"

namespace pavoline::testing {
Answer FakeDialogs::message(const std::string& text, MessageKind kind, const std::string& title,
                            const MessageLimit& limit, const MessageButton& further) {
  const Shown shown{text, kind, title, limit, further};
  messages.push_back(shown);
  if (onMessage) onMessage(shown);
  const long limitMs = limit.seconds * 1000L;
  if (nobodyThere && limitMs == 0) throw std::runtime_error("a message waits for ever: " + text);
  time_.advance(nobodyThere ? limitMs : messageMs);
  return nobodyThere ? limit.answer : next(answers, kAnswerOk);
}

void FakeDialogs::showModal(Form& form) {
  shownForms.push_back(form.name());
  EXPECT_EQ(LayoutFaults(form) + NamelessControls(form), "");
  time_.watch(form);
  if (const auto act = next(modals, {}); act) act(form);
  if (!form.unloaded()) form.unload();
  time_.forget(form);
}

}  // namespace pavoline::testing
