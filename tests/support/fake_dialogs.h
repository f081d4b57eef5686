#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "form/form.h"
#include "platform/dialogs.h"
#include "support/simulated_time.h"

namespace pavoline::testing {

// The person at the screen: answers as told, OK and "cancelled" where nothing was told.
struct FakeDialogs : Dialogs {
  explicit FakeDialogs(SimulatedTime& time) : time_(time) {}

  struct Shown {
    std::string text;
    MessageKind kind = kErrorMessage;
    std::string title;
    MessageLimit limit;
    MessageButton further;
  };
  std::vector<Shown> messages;
  std::deque<Answer> answers;                   // to the next messages, whatever they say
  std::function<void(const Shown&)> onMessage;  // while the message is open
  long messageMs = 0;                           // how long each stays open; timers go on
  // Messages end by their limit; one without a limit is a fault.
  bool nobodyThere = false;

  std::deque<std::string> files, savedFiles, folders;  // the next choices; empty: cancelled
  std::vector<FileRequest> openRequests, saveRequests;

  // What the person does in the next windows; one left open is then closed.
  std::deque<std::function<void(Form&)>> modals;
  std::vector<std::string> shownForms;  // names

  std::vector<std::string> documents;
  bool opensDocuments = true;   // the system has a program for them
  std::deque<int> menuChoices;  // the next entries chosen; none is 0

  Answer message(const std::string& text, MessageKind kind, const std::string& title,
                 const MessageLimit& limit, const MessageButton& further) override;
  std::string openFile(const FileRequest& request) override {
    openRequests.push_back(request);
    return next(files, {});
  }
  std::string saveFile(const FileRequest& request) override {
    saveRequests.push_back(request);
    return next(savedFiles, {});
  }
  std::string chooseFolder(const std::string&, const std::string&) override {
    return next(folders, {});
  }
  int chooseFromMenu(const Form&, const Control&, const std::vector<MenuItem>&) override {
    return next(menuChoices, 0);
  }
  void showModal(Form& form) override;
  bool openDocument(const std::string& pathOrAddress) override {
    documents.push_back(pathOrAddress);
    return opensDocuments;
  }

 private:
  template <class T>
  static T next(std::deque<T>& queue, T otherwise) {
    if (queue.empty()) return otherwise;
    otherwise = std::move(queue.front());
    queue.pop_front();
    return otherwise;
  }

  SimulatedTime& time_;
};

}  // namespace pavoline::testing
