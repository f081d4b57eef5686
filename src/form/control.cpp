#include "form/control.h"

#include <algorithm>

namespace pavoline {

void ComboBox::addItem(const std::string& item) {
  items_.push_back(item);
  touch();
}

void ComboBox::clear() {
  const bool had = selected_ >= 0 || !text_.empty();
  items_.clear();
  selected_ = -1;
  text_.clear();
  touch();
  if (had && onChange) onChange();
}

void ComboBox::select(int index) {
  const bool inside = index >= 0 && index < static_cast<int>(items_.size());
  const int wanted = inside ? index : -1;
  const std::string text = inside ? items_[static_cast<std::size_t>(index)] : std::string();
  const bool moved = set(selected_, wanted);
  const bool other = set(text_, text);
  if ((moved || other) && onChange) onChange();
}

void ComboBox::setText(const std::string& text) {
  if (!editable_) {
    const auto found = std::find(items_.begin(), items_.end(), text);
    select(found == items_.end() ? -1 : static_cast<int>(found - items_.begin()));
    return;
  }
  selected_ = -1;
  if (set(text_, text) && onChange) onChange();
}

void ListView::setRows(const std::vector<std::vector<std::string>>& rows) {
  rows_ = rows;
  selected_ = -1;
  touch();
}

void ListView::select(int index) {
  const bool inside = index >= 0 && index < static_cast<int>(rows_.size());
  if (set(selected_, inside ? index : -1) && onChange) onChange();
}

void ProgressBar::setValue(int value) { set(value_, std::clamp(value, 0, maximum_)); }

void ProgressBar::setMaximum(int maximum) {
  set(maximum_, std::max(maximum, 1));
  setValue(value_);
}

}  // namespace pavoline
