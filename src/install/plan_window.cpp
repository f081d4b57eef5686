#include "form/form.h"
#include "form/pixels.h"
#include "form/text_numbers.h"
#include "install/plan_text.h"
#include "platform/dialogs.h"
#include "platform/text.h"

namespace pavoline {
namespace {

class PlanWindow : public Form {
 public:
  PlanWindow(const Session& session, const std::string& text) : Form("PlanText") {
    constexpr int kWidth = 622, kHeight = 400, kBottom = kHeight - kMargin - kButtonHeight;
    setCaption(WithoutAccessKey(More(session, kMoreDetailsButton)));
    setFont(session.form.font());
    setSize((kWidth + kFramePixels) * kTwipsPerPixel, kHeight * kTwipsPerPixel);
    text_.setText(text);
    text_.setBounds(Pixels(kMargin, kMargin, kWidth - 2 * kMargin, kBottom - 2 * kMargin));
    close_.setText(String(session, kTextClose));
    close_.setBounds(Pixels(kWidth - kMargin - kButtonWidth, kBottom, kButtonWidth, kButtonHeight));
    close_.onClick = [this] { close(); };
    text_.setSpokenName(caption());
    add(text_);
    add(close_);
    defaultButton = cancelButton = &close_;
    focus(text_);
  }

 private:
  TextView text_;
  Button close_;
};

}  // namespace

void ShowPlanText(Session& session, const std::string& text) {
  PlanWindow window(session, text);
  session.platform.dialogs.showModal(window);
}

}  // namespace pavoline
