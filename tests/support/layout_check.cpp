#include "support/layout_check.h"

#include <algorithm>

#include "form/pixels.h"

namespace pavoline::testing {
namespace {

int Right(const Rect& r) { return r.left + r.width; }
int Bottom(const Rect& r) { return r.top + r.height; }

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < Right(b) && b.left < Right(a) && a.top < Bottom(b) && b.top < Bottom(a);
}

bool Holds(const Control& outer, const Control& inner) {
  const Rect& a = outer.bounds();
  const Rect& b = inner.bounds();
  return outer.kind() == Control::Kind::kFrame && a.left < b.left && Right(b) < Right(a) &&
         a.top < b.top && Bottom(b) < Bottom(a);
}

std::string Name(const Form& form, const Control& control) {
  const auto& all = form.controls();
  const auto place = std::find(all.begin(), all.end(), &control) - all.begin();
  return form.name() + " #" + std::to_string(place) + " \"" + control.text() + "\"";
}

bool ColumnsFit(const ListView& list) {
  constexpr int kScrollBarAndBorder = 21 * kTwipsPerPixel;
  int sum = 0;
  for (const ListColumn& column : list.columns()) sum += column.width;
  return sum + kScrollBarAndBorder <= list.bounds().width;
}

std::string FaultsOf(const Form& form, const Control& control) {
  const std::string name = Name(form, control);
  const Rect& r = control.bounds();
  std::string faults;
  if (r.width <= 0 || r.height <= 0) faults += name + ": no size\n";
  if (r.left < 0 || r.top < 0 || Right(r) > form.width() - kFramePixels * kTwipsPerPixel ||
      Bottom(r) > form.height()) {
    faults += name + ": outside the window\n";
  }
  const auto* list = dynamic_cast<const ListView*>(&control);
  if (list && !ColumnsFit(*list)) faults += name + ": the columns are wider than the list\n";
  return faults;
}

}  // namespace

std::string LayoutFaults(const Form& form) {
  std::string faults;
  for (const Control* one : form.controls()) {
    if (!one->visible()) continue;
    faults += FaultsOf(form, *one);
    for (const Control* other : form.controls()) {
      if (other == one) break;
      if (!other->visible() || !Overlap(one->bounds(), other->bounds())) continue;
      if (Holds(*one, *other) || Holds(*other, *one)) continue;
      faults += Name(form, *one) + " overlaps " + Name(form, *other) + "\n";
    }
  }
  return faults;
}

}  // namespace pavoline::testing
