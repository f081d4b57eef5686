#include "support/layout_check.h"

#include "form/pixels.h"

namespace pavoline::testing {
namespace {

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

bool LiesIn(const Rect& inner, const Rect& outer) {
  return inner.left >= outer.left && inner.left + inner.width <= outer.left + outer.width &&
         inner.top >= outer.top && inner.top + inner.height <= outer.top + outer.height;
}

bool Holds(const Control& outer, const Control& inner) {
  return outer.kind() == Control::Kind::kFrame && LiesIn(inner.bounds(), outer.bounds());
}

}  // namespace

std::string LayoutFaults(const Form& form) {
  std::string faults;
  const Rect inside{0, 0, form.width() - kFramePixels * kTwipsPerPixel, form.height()};
  for (const Control* one : form.controls()) {
    if (!one->visible()) continue;
    const std::string name = form.name() + " \"" + one->text() + "\"";
    const Rect& bounds = one->bounds();
    if (bounds.width <= 0 || bounds.height <= 0 || !LiesIn(bounds, inside)) {
      faults += name + " has no room\n";
    }
    for (const Control* other : form.controls()) {
      if (other == one) break;
      if (other->visible() && Overlap(bounds, other->bounds()) && !Holds(*one, *other) &&
          !Holds(*other, *one)) {
        faults += name + " overlaps \"" + other->text() + "\"\n";
      }
    }
  }
  return faults;
}

std::string NamelessControls(const Form& form) {
  using Kind = Control::Kind;
  std::string faults;
  const Control* before = nullptr;
  for (const Control* one : form.controls()) {
    const Kind kind = one->kind();
    const bool captioned = kind == Kind::kButton || kind == Kind::kCheckBox ||
                           kind == Kind::kOptionButton || kind == Kind::kLink;
    const bool silent = kind == Kind::kLabel || kind == Kind::kFrame || kind == Kind::kIcon;
    const bool named = captioned ? !one->text().empty() && one->text() != "..."
                                 : before != nullptr && before->kind() == Kind::kLabel &&
                                       kind != Kind::kProgressBar && kind != Kind::kListView;
    if (!silent && !named && one->spokenName().empty()) {
      faults += form.name() + " control " + std::to_string(static_cast<int>(kind)) + " \"" +
                one->text() + "\" after \"" + (before ? before->text() : "") + "\"\n";
    }
    before = one;
  }
  return faults;
}

}  // namespace pavoline::testing
