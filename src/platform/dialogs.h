#pragma once

#include <functional>
#include <string>
#include <vector>

namespace pavoline {

class Control;
class Form;
struct MenuItem;

// What a message looks like. Questions have OK and Cancel, the others OK alone.
enum MessageKind {
  kErrorMessage,
  kQuestionError,
  kWarningMessage,
  kQuestionWarning,
  kInformationMessage,
  kQuestionDefaultCancel,  // a warning as well; Enter takes Cancel
};
enum Answer { kAnswerOk, kAnswerCancel };

// How long a message waits for an answer: it shows the seconds left and then takes `answer`.
struct MessageLimit {
  int seconds = 0;  // 0: for as long as the person wants
  Answer answer = kAnswerOk;
};

// A further button of a message, which stays open when it is pressed.
struct MessageButton {
  std::string text;  // with its access key; empty: there is none
  std::function<void()> press;
};

struct FileFilter {
  std::string description;  // as shown
  std::string patterns;     // "*.iso;*.wim"
};

struct FileRequest {
  std::string title;  // empty: the system's own
  std::vector<FileFilter> filters;
  std::string initialFolder;  // empty: the system's choice
  std::string initialName;    // file name offered
};

// Questions to the person at the screen. Each returns when it has been answered; the program's
// timers go on meanwhile.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  virtual Answer message(const std::string& text, MessageKind kind, const std::string& title,
                         const MessageLimit& limit, const MessageButton& further) = 0;

  // The chosen path, empty when cancelled.
  virtual std::string openFile(const FileRequest& request) = 0;
  virtual std::string saveFile(const FileRequest& request) = 0;
  virtual std::string chooseFolder(const std::string& title, const std::string& initialFolder) = 0;

  // A menu of these entries below a control of a shown form: the number of the chosen one, 0 for
  // none.
  virtual int chooseFromMenu(const Form& form, const Control& below,
                             const std::vector<MenuItem>& items) = 0;

  // Shows a form over the main window and returns when it has been unloaded.
  virtual void showModal(Form& form) = 0;

  // Opens a document or an address with the program the system has for it.
  virtual bool openDocument(const std::string& pathOrAddress) = 0;
};

}  // namespace pavoline
