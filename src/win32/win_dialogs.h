#pragma once

#include "platform/dialogs.h"

namespace pavoline {

class MessageLoop;

class WinDialogs : public Dialogs {
 public:
  explicit WinDialogs(MessageLoop& loop) : loop_(loop) {}

  Answer message(const std::string& text, MessageKind kind, const std::string& title,
                 const MessageLimit& limit, const MessageButton& further) override;
  std::string openFile(const FileRequest& request) override;
  std::string saveFile(const FileRequest& request) override;
  std::string chooseFolder(const std::string& title, const std::string& initialFolder) override;
  int chooseFromMenu(const Form& form, const Control& below,
                     const std::vector<MenuItem>& items) override;
  void showModal(Form& form) override;
  bool openDocument(const std::string& pathOrAddress) override;

 private:
  MessageLoop& loop_;
};

}  // namespace pavoline
