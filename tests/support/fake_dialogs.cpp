#include "support/fake_dialogs.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/text.h"
#include "support/layout_check.h"

namespace pavoline::testing {
namespace {

template <class T>
T Take(std::deque<T>& queue, T otherwise) {
  if (queue.empty()) return otherwise;
  T next = std::move(queue.front());
  queue.pop_front();
  return next;
}

}  // namespace

int FakeDialogs::message(const std::string& text, int flags, const std::string& title,
                         const MessageLimit& limit) {
  const Shown shown{text, flags, title, limit};
  messages.push_back(shown);
  if (onMessage) onMessage(shown);
  const long limitMs = limit.seconds * 1000L;
  std::optional<int> answer = told(text);
  if (!answer && !nobodyThere) answer = kAnswerOk;
  if (!answer && limitMs == 0) throw std::runtime_error("a message waits for ever: " + text);
  if (!answer || (limitMs > 0 && messageMs >= limitMs)) {
    time_.advance(limitMs);
    return limit.answer;
  }
  time_.advance(messageMs);
  return *answer;
}

std::optional<int> FakeDialogs::told(const std::string& text) {
  for (const auto& [part, answer] : standing_) {
    if (Contains(text, part)) return answer;
  }
  return answers.empty() ? std::nullopt : std::optional(Take(answers, kAnswerOk));
}

std::string FakeDialogs::openFile(const FileRequest& request) {
  openRequests.push_back(request);
  return Take(files, std::string());
}

std::string FakeDialogs::saveFile(const FileRequest& request) {
  saveRequests.push_back(request);
  return Take(savedFiles, std::string());
}

std::string FakeDialogs::chooseFolder(const std::string&, const std::string&) {
  return Take(folders, std::string());
}

void FakeDialogs::showModal(Form& form) {
  shownForms.push_back(form.name());
  EXPECT_EQ(LayoutFaults(form), "");
  time_.watch(form);
  if (const auto act = Take(modals, {}); act) act(form);
  if (!form.unloaded()) form.unload();
  time_.forget(form);
}

}  // namespace pavoline::testing
