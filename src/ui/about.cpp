#include <initializer_list>

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/text.h"
#include "run/command_runner.h"
#include "run/command_words.h"
#include "ui/dialog_layout.h"
#include "ui/help_page.h"
#include "ui/small_windows.h"
#include "version.h"

namespace pavoline {
namespace {

constexpr char kLicenceFile[] = "LICENSE";

class About : public Form {
 public:
  explicit About(Session& session);

 private:
  void layOut();

  Icon icon_;
  Label name_, version_, licence_;
  Link licenceLink_, helpLink_;
  Button ok_;
};

// A file without an extension has a program only by chance; every Windows has a text editor.
void OpenLicence(Ground& ground) {
  const std::string path = ground.paths.appDir + "\\" + kLicenceFile;
  if (ground.platform.dialogs.openDocument(path)) return;
  ShellNoWait(ground, "notepad.exe " + ShortPath(ground, path), ShowMode::kNormal);
}

About::About(Session& session) : Form("About") {
  for (Control* control : std::initializer_list<Control*>{&icon_, &name_, &version_, &licence_,
                                                          &licenceLink_, &helpLink_, &ok_}) {
    add(*control);
  }
  setCaption(String(session, kTextAbout));
  setFont(session.form.font());
  name_.setText(session.titleCaption);
  version_.setText(ReplaceAll(String(session, kTextVersion), "%v%", PAVOLINE_VERSION_TEXT));
  licence_.setText(String(session, kTextLicence));
  licenceLink_.setText(kLicenceFile);
  helpLink_.setText(String(session, kTextHelp));
  ok_.setText(String(session, kTextOk));
  defaultButton = &ok_;
  cancelButton = &ok_;
  layOut();
  focus(ok_);

  licenceLink_.onClick = [&session] { OpenLicence(session); };
  helpLink_.onClick = [&session] { OpenHelpPage(session); };
  ok_.onClick = [this] { close(); };
}

void About::layOut() {
  constexpr int kWidth = 420;
  constexpr int kIconSize = 32;
  constexpr int kTextLeft = kMargin + kIconSize + kMargin;
  constexpr int kTextWidth = kWidth - kMargin - kTextLeft;
  constexpr int kLicenceHeight = 4 * kLabelHeight + 4;  // four lines, for the longer languages
  constexpr int kLinksTop = 52 + kLicenceHeight + kGap;
  constexpr int kHeight = kLinksTop + kLabelHeight + kMargin + kButtonHeight + kMargin;
  SetInnerSize(*this, kWidth, kHeight);
  icon_.setBounds(Pixels(kMargin, kMargin, kIconSize, kIconSize));
  name_.setBounds(Pixels(kTextLeft, kMargin, kTextWidth, kLabelHeight));
  version_.setBounds(Pixels(kTextLeft, kMargin + 18, kTextWidth, kLabelHeight));
  licence_.setBounds(Pixels(kTextLeft, 52, kTextWidth, kLicenceHeight));
  constexpr int kLinkWidth = 120;
  licenceLink_.setBounds(Pixels(kTextLeft, kLinksTop, kLinkWidth, kLabelHeight));
  helpLink_.setBounds(Pixels(kTextLeft + kLinkWidth + kGap, kLinksTop, kLinkWidth, kLabelHeight));
  PlaceEndButtons({&ok_}, kWidth, kHeight);
}

}  // namespace

void ShowAbout(Session& session) {
  About window(session);
  session.platform.dialogs.showModal(window);
}

}  // namespace pavoline
