#include "support/layout_check.h"

#include <algorithm>
#include <string_view>

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

// What the control draws beside its text, in pixels.
int Decoration(Control::Kind kind) {
  switch (kind) {
    case Control::Kind::kButton:
      return 12;
    case Control::Kind::kCheckBox:
    case Control::Kind::kOptionButton:
    case Control::Kind::kFrame:
      return 18;
    default:
      return 0;
  }
}

bool ShowsCaption(Control::Kind kind) {
  return kind == Control::Kind::kLabel || kind == Control::Kind::kLink || Decoration(kind) > 0;
}

bool TextFits(const Control& control) {
  if (!ShowsCaption(control.kind())) return true;
  const int width = control.bounds().width / kTwipsPerPixel - Decoration(control.kind());
  const int lines = control.kind() == Control::Kind::kLabel
                        ? control.bounds().height / kTwipsPerPixel / kLabelHeight
                        : 1;
  // A broken line leaves some of its room empty.
  const int usable = lines == 1 ? width : lines * width * 9 / 10;
  return EstimatedTextWidth(control.text()) <= usable;
}

std::string ColumnFaults(const ListView& list, const std::string& name) {
  constexpr int kBesideTitle = 14;
  constexpr int kScrollBarAndBorder = 21;
  std::string faults;
  int sum = 0;
  for (const ListColumn& column : list.columns()) {
    sum += column.width;
    if (EstimatedTextWidth(column.title) + kBesideTitle > column.width / kTwipsPerPixel) {
      faults += name + ": column \"" + column.title + "\" is cut\n";
    }
  }
  if (sum / kTwipsPerPixel + kScrollBarAndBorder > list.bounds().width / kTwipsPerPixel) {
    faults += name + ": the columns are wider than the list\n";
  }
  return faults;
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
  if (!TextFits(control)) faults += name + ": text is cut\n";
  if (const auto* list = dynamic_cast<const ListView*>(&control)) {
    faults += ColumnFaults(*list, name);
  }
  return faults;
}

// The code point at the place, which moves behind it.
char32_t Next(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  char32_t c = more == 0 ? lead : lead & (0x3F >> more);
  for (; more > 0 && at < text.size(); --more) {
    c = (c << 6) | (static_cast<unsigned char>(text[at++]) & 0x3F);
  }
  return c;
}

double Width(char32_t c) {
  constexpr std::string_view kNarrow = "iljI.,:;'!|";
  constexpr std::string_view kHalf = "frt()[]-/ ";
  constexpr std::string_view kWide = "mMwW@%";
  if (c >= 0x2E80) return 12;
  const auto in = [&](std::string_view set) {
    return c < 0x80 && set.find(static_cast<char>(c)) != std::string_view::npos;
  };
  if (in(kNarrow)) return 3.3;
  if (in(kHalf)) return 4.2;
  if (in(kWide)) return 10.5;
  return c >= 'A' && c <= 'Z' ? 7.6 : 6.4;
}

}  // namespace

int EstimatedTextWidth(const std::string& text) {
  double width = 0;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = Next(text, at);
    if (c != '&') width += Width(c);
  }
  return static_cast<int>(width + 0.999);
}

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
