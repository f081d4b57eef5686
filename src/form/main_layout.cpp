#include "form/main_layout.h"

#include <iterator>
#include <vector>

#include "form/pixels.h"
#include "platform/text.h"

namespace pavoline {
namespace {

// The left part, which the narrow window shows alone, and the right part with the option frames.
constexpr int kLeft = kMargin;
constexpr int kLeftEnd = kNarrowWidth / kTwipsPerPixel - kFramePixels - kMargin;
constexpr int kColumnGap = 16;
constexpr int kRight = kLeftEnd + 12;
constexpr int kRightEnd = kWideWidth / kTwipsPerPixel - kFramePixels - kMargin;
constexpr int kFrameInset = 11;
constexpr int kBottom = 364;

constexpr int kImageTop = 11;
constexpr int kEditionTop = 63;
constexpr int kPartitionTop = 115;
constexpr int kChecksTop = 203;
constexpr int kStatusTop = 283;
constexpr int kOverallTop = kBottom - kLabelHeight;
constexpr int kStartTop = kOverallTop - 4 - kButtonHeight;
constexpr int kFieldBelowLabel = 18;
constexpr int kCheckPitch = 23;
constexpr int kFactsHeight = 2 * kLabelHeight;       // a long disk name takes a second line
constexpr int kStatusHeight = 2 * kLabelHeight + 2;  // two lines, for the longer languages

void PlaceImageAndEdition(Form1& form, const ButtonWidths& widths) {
  form.label[0].setBounds(Pixels(kLeft, kImageTop, kLeftEnd - kLeft, kLabelHeight));
  const int row = kImageTop + kFieldBelowLabel;
  const int menu = kLeftEnd - widths.menu;
  const int search = menu - kGap - widths.search;
  const int browse = search - kGap - kBrowseWidth;
  form.combo1.setBounds(Pixels(kLeft, row, browse - kGap - kLeft, kFieldHeight));
  form.command1[kBrowseImage].setBounds(Pixels(browse, row, kBrowseWidth, kFieldHeight));
  form.search.setBounds(Pixels(search, row, widths.search, kFieldHeight));
  form.menu.setBounds(Pixels(menu, row, widths.menu, kFieldHeight));

  form.label[1].setBounds(Pixels(kLeft, kEditionTop, kLeftEnd - kLeft, kLabelHeight));
  form.combo[kEditions].setBounds(
      Pixels(kLeft, kEditionTop + kFieldBelowLabel, kLeftEnd - kLeft, kFieldHeight));
}

// A partition's label above its field and its button, its facts below.
void PlacePartition(Label& label, TextBox& field, Button& choose, Label& facts,
                    const ButtonWidths& widths, int left, int end) {
  const int row = kPartitionTop + kFieldBelowLabel;
  label.setBounds(Pixels(left, kPartitionTop, end - left, kLabelHeight));
  field.setBounds(Pixels(left, row, end - left - kGap - widths.choose, kFieldHeight));
  choose.setBounds(Pixels(end - widths.choose, row, widths.choose, kFieldHeight));
  facts.setBounds(Pixels(left, row + kFieldHeight + 4, end - left, kFactsHeight));
}

void PlacePartitions(Form1& form, const ButtonWidths& widths) {
  const int middle = (kLeft + kLeftEnd) / 2;
  PlacePartition(form.label[2], form.text[kBootPartition], form.command1[kChooseBoot],
                 form.facts[kBootPartition], widths, kLeft, middle - kColumnGap / 2);
  PlacePartition(form.label[3], form.text[kInstallPartition], form.command1[kChooseInstall],
                 form.facts[kInstallPartition], widths, middle + kColumnGap / 2, kLeftEnd);
}

void PlaceChecksAndStart(Form1& form, const ButtonWidths& widths) {
  int top = kChecksTop;
  for (CheckIndex index : {kDoNotFormat, kRepairBoot, kRestart}) {
    form.check[index].setBounds(Pixels(kLeft, top, kLeftEnd - kLeft, kCheckHeight));
    top += kCheckPitch;
  }
  form.status.setBounds(Pixels(kLeft, kStatusTop, kLeftEnd - kLeft, kStatusHeight));
  const int start = kLeftEnd - widths.start;
  form.command1[kStart].setBounds(Pixels(start, kStartTop, widths.start, kButtonHeight));
  form.stop.setBounds(Pixels(start - kGap - widths.stop, kStartTop, widths.stop, kButtonHeight));
  form.overall.setBounds(Pixels(kLeft, kOverallTop, kLeftEnd - kLeft, kLabelHeight));
  ShowStopButton(form, form.stop.visible());
}

void PlaceOptions(Form1& form) {
  constexpr int kRowPitch = 51;
  constexpr int kOptionIndent = 18;
  constexpr int kOptionsTop = 7;
  constexpr int kOptionsHeight = 176;
  form.frame[kOptionsFrame].setBounds(
      Pixels(kRight, kOptionsTop, kRightEnd - kRight, kOptionsHeight));
  const int left = kRight + kFrameInset;
  const int end = kRightEnd - kFrameInset;
  int top = kOptionsTop + 20;
  for (const OptionRow& row : form.optionRows) {
    row.box.setBounds(Pixels(left, top, end - left, kCheckHeight));
    const int field = left + kOptionIndent;
    row.field.setBounds(Pixels(field, top + 20, end - kBrowseWidth - kGap - field, kFieldHeight));
    row.browse.setBounds(Pixels(end - kBrowseWidth, top + 20, kBrowseWidth, kFieldHeight));
    top += kRowPitch;
  }

  const int detailsTop = kOptionsTop + kOptionsHeight + kGap;
  form.frame[kDetailsFrame].setBounds(
      Pixels(kRight, detailsTop, kRightEnd - kRight, kBottom - detailsTop));
  form.details.setBounds(
      Pixels(left, detailsTop + 19, end - left, kBottom - detailsTop - 19 - kFrameInset));
}

}  // namespace

ButtonWidths ReadWidths(const std::string& list) {
  constexpr int kNarrowest = 40, kWidest = 200;
  int read[5];
  const std::vector<std::string> parts = Split(list, ",");
  if (parts.size() != std::size(read)) return {};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    read[i] = static_cast<int>(LeadingNumber(Trim(parts[i])));
    if (read[i] < kNarrowest || read[i] > kWidest) return {};
  }
  return {read[0], read[1], read[2], read[3], read[4]};
}

void LayOutMainWindow(Form1& form, const ButtonWidths& widths) {
  PlaceImageAndEdition(form, widths);
  PlacePartitions(form, widths);
  PlaceChecksAndStart(form, widths);
  PlaceOptions(form);
  form.setSize(form.width(), (kBottom + kMargin) * kTwipsPerPixel);
}

void ShowStopButton(Form1& form, bool shown) {
  form.stop.setVisible(shown);
  const Control& next = shown ? form.stop : form.command1[kStart];
  Rect bar = Pixels(kLeft, kStartTop + 3, 0, kButtonHeight - 6);
  bar.width = next.bounds().left - kGap * kTwipsPerPixel - bar.left;
  form.progressBar1.setBounds(bar);
}

void ShowOptionFrames(Form1& form, bool shown) {
  for (Frame& frame : form.frame) frame.setVisible(shown);
  for (const OptionRow& row : form.optionRows) row.setVisible(shown);
  form.details.setVisible(shown);
}

}  // namespace pavoline
