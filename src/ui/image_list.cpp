#include <algorithm>

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/paths.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "platform/text_services.h"
#include "ui/dialog_layout.h"
#include "ui/small_windows.h"

namespace pavoline {
namespace {

// Name, folder, kind, size, date, drive.
std::vector<std::string> Row(TextServices& services, const FoundImage& image) {
  const std::string name = FileName(image.path);
  const std::string folder = ParentFolder(image.path);
  return {name,
          WithBackslash(folder),
          services.upper(LastFourLower(name).substr(1)),
          ReadableSize(image.size),
          image.modified,
          image.path.substr(0, 2)};
}

class ImageList : public Form {
 public:
  explicit ImageList(Session& session);

  const std::string& taken() const { return taken_; }  // path; empty: none

 private:
  void fill();
  void layOut();
  void take();

  Session& session_;
  std::vector<std::string> paths_;  // of the rows
  std::string taken_;
  ListView list_;
  Button ok_, cancel_;
};

ImageList::ImageList(Session& session) : Form("ImageList"), session_(session) {
  for (Control* control : std::initializer_list<Control*>{&list_, &ok_, &cancel_}) add(*control);
  setCaption(String(session, kTextImagesTitle));
  setFont(session.form.font());
  list_.setSpokenName(String(session, kTextImagesTitle));
  ok_.setText(String(session, kTextOk));
  cancel_.setText(String(session, kTextCancel));
  defaultButton = &ok_;
  cancelButton = &cancel_;
  layOut();
  fill();
  focus(list_);

  list_.onActivate = [this] { take(); };
  list_.onChange = [this] { ok_.setEnabled(list_.selected() >= 0); };
  ok_.onClick = [this] { take(); };
  cancel_.onClick = [this] { close(); };
}

void ImageList::fill() {
  list_.setColumns({{String(session_, kTextColumnName), 160 * kTwipsPerPixel},
                    {String(session_, kTextColumnFolder), 216 * kTwipsPerPixel},
                    {String(session_, kTextColumnKind), 60 * kTwipsPerPixel},
                    {String(session_, kTextColumnSize), 84 * kTwipsPerPixel, true},
                    {String(session_, kTextColumnDate), 124 * kTwipsPerPixel},
                    {String(session_, kTextColumnDrive), 74 * kTwipsPerPixel}});
  std::vector<std::vector<std::string>> rows;
  for (const FoundImage& image : session_.search.found) {
    rows.push_back(Row(session_.platform.text, image));
    paths_.push_back(image.path);
  }
  list_.setRows(rows);
  const auto current = std::ranges::find(paths_, session_.form.combo1.text());
  list_.select(current == paths_.end() ? 0 : static_cast<int>(current - paths_.begin()));
  ok_.setEnabled(list_.selected() >= 0);
}

void ImageList::layOut() {
  constexpr int kWidth = 766;
  constexpr int kHeight = 360;
  SetInnerSize(*this, kWidth, kHeight);
  PlaceEndButtons({&ok_, &cancel_}, kWidth, kHeight);
  list_.setBounds(
      Pixels(kMargin, kMargin, kWidth - 2 * kMargin, kHeight - 3 * kMargin - kButtonHeight));
}

void ImageList::take() {
  if (list_.selected() < 0) return;
  taken_ = paths_[static_cast<std::size_t>(list_.selected())];
  close();
}

}  // namespace

void ShowImageList(Session& session) {
  ImageList list(session);
  session.platform.dialogs.showModal(list);
  // Only now, with the list gone, is the image looked into, which takes its time.
  if (list.taken().empty()) return;
  session.form.combo1.setText(list.taken());
}

}  // namespace pavoline
