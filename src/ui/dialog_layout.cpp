#include "ui/dialog_layout.h"

namespace pavoline {

void SetInnerSize(Form& form, int width, int height) {
  form.setSize((width + kFramePixels) * kTwipsPerPixel, height * kTwipsPerPixel);
}

void PlaceEndButtons(std::initializer_list<Button*> buttons, int width, int bottom) {
  int left = width - kMargin + kGap - static_cast<int>(buttons.size()) * (kButtonWidth + kGap);
  for (Button* button : buttons) {
    button->setBounds(Pixels(left, bottom - kMargin - kButtonHeight, kButtonWidth, kButtonHeight));
    left += kButtonWidth + kGap;
  }
}

}  // namespace pavoline
