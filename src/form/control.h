#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

// Controls as plain state. Logic reads and sets it; the window shows it and feeds the user's
// input back through the same setters. A change fires the control's handler whoever makes it;
// setting what is already there fires nothing.
namespace pavoline {

// Position in twips (1440 to the inch) inside the form.
struct Rect {
  int left = 0, top = 0, width = 0, height = 0;
  bool operator==(const Rect&) const = default;
};

class Control {
 public:
  enum class Kind {
    kLabel,
    kFrame,
    kButton,
    kCheckBox,
    kOptionButton,
    kTextBox,
    kTextView,
    kComboBox,
    kListView,
    kProgressBar,
    kLink,
    kIcon,
  };

  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Kind kind() const { return kind_; }

  // What the control shows: caption, content, or the chosen line.
  const std::string& text() const { return text_; }

  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled) { set(enabled_, enabled); }
  bool visible() const { return visible_; }
  void setVisible(bool visible) { set(visible_, visible); }
  const Rect& bounds() const { return bounds_; }
  void setBounds(const Rect& bounds) { set(bounds_, bounds); }
  const std::string& tooltip() const { return tooltip_; }
  void setTooltip(const std::string& tooltip) { set(tooltip_, tooltip); }

  // What a screen reader calls the control where neither its own text nor a label before it says
  // enough; empty: it goes by these.
  const std::string& spokenName() const { return spokenName_; }
  void setSpokenName(const std::string& name) { set(spokenName_, name); }

  // Grows with every visible change; what shows the control compares it with what it showed.
  unsigned revision() const { return revision_; }

 protected:
  explicit Control(Kind kind) : kind_(kind) {}

  // Stores a value and tells whether it is a new one.
  template <class T>
  bool set(T& member, const T& value) {
    if (member == value) return false;
    member = value;
    ++revision_;
    return true;
  }
  void touch() { ++revision_; }

  std::string text_;

 private:
  Kind kind_;
  bool enabled_ = true;
  bool visible_ = true;
  Rect bounds_;
  std::string tooltip_;
  std::string spokenName_;
  unsigned revision_ = 0;
};

// A line or a paragraph of text; an access key in it leads to the next control.
class Label : public Control {
 public:
  Label() : Control(Kind::kLabel) {}
  void setText(const std::string& text) { set(text_, text); }
};

// A titled box around other controls.
class Frame : public Control {
 public:
  Frame() : Control(Kind::kFrame) {}
  void setText(const std::string& text) { set(text_, text); }
};

class Button : public Control {
 public:
  Button() : Control(Kind::kButton) {}
  void setText(const std::string& text) { set(text_, text); }

  // As a click does; a disabled button does nothing.
  void press() {
    if (enabled() && onClick) onClick();
  }
  std::function<void()> onClick;
};

// Text that opens something when clicked.
class Link : public Control {
 public:
  Link() : Control(Kind::kLink) {}
  void setText(const std::string& text) { set(text_, text); }
  void press() {
    if (enabled() && onClick) onClick();
  }
  std::function<void()> onClick;
};

// The program's own icon.
class Icon : public Control {
 public:
  Icon() : Control(Kind::kIcon) {}
};

class CheckBox : public Control {
 public:
  CheckBox() : Control(Kind::kCheckBox) {}
  void setText(const std::string& text) { set(text_, text); }

  // 0 unticked, 1 ticked, 2 greyed.
  int value() const { return value_; }
  bool ticked() const { return value_ == 1; }
  void setValue(int value) {
    if (set(value_, value) && onChange) onChange();
  }
  std::function<void()> onChange;

 private:
  int value_ = 0;
};

// One of a group in which a single one is chosen; the group's logic unticks the others.
class OptionButton : public Control {
 public:
  OptionButton() : Control(Kind::kOptionButton) {}
  void setText(const std::string& text) { set(text_, text); }

  bool chosen() const { return chosen_; }
  void setChosen(bool chosen) {
    if (set(chosen_, chosen) && onChange) onChange();
  }
  std::function<void()> onChange;

 private:
  bool chosen_ = false;
};

// Says whether a typed character is taken. Control characters other than Backspace are not asked
// for.
using KeyFilter = std::function<bool(char32_t)>;

// A line of text that is entered, or chosen from a list.
class Field : public Control {
 public:
  virtual void setText(const std::string& text) = 0;

  std::function<void()> onChange;  // text or selection changed
  KeyFilter onKeyPress;            // empty: every character is taken

 protected:
  using Control::Control;
};

class TextBox : public Field {
 public:
  TextBox() : Field(Kind::kTextBox) {}
  void setText(const std::string& text) override {
    if (set(text_, text) && onChange) onChange();
  }
};

// Lines of text to be read: they can be scrolled and copied, not changed.
class TextView : public Control {
 public:
  TextView() : Control(Kind::kTextView) {}
  void setText(const std::string& text) { set(text_, text); }
};

// A drop-down list, or with `editable` a text field with a list.
class ComboBox : public Field {
 public:
  explicit ComboBox(bool editable = false) : Field(Kind::kComboBox), editable_(editable) {}

  bool editable() const { return editable_; }
  const std::vector<std::string>& items() const { return items_; }
  int selected() const { return selected_; }  // -1: none

  void addItem(const std::string& item);
  void clear();  // no items, nothing selected, no text

  // Chooses a line; an index outside the list chooses none.
  void select(int index);
  // Text typed into an editable box; the selection goes. In a list box it chooses the equal line.
  void setText(const std::string& text) override;

  std::function<void()> onDropDown;  // the list is about to open

 private:
  bool editable_;
  std::vector<std::string> items_;
  int selected_ = -1;
};

struct ListColumn {
  std::string title;
  int width = 0;  // twips
  bool rightAligned = false;
  bool operator==(const ListColumn&) const = default;
};

// Rows under titled columns, one of them chosen.
class ListView : public Control {
 public:
  ListView() : Control(Kind::kListView) {}

  const std::vector<ListColumn>& columns() const { return columns_; }
  void setColumns(const std::vector<ListColumn>& columns) { set(columns_, columns); }
  const std::vector<std::vector<std::string>>& rows() const { return rows_; }
  void setRows(const std::vector<std::vector<std::string>>& rows);
  int selected() const { return selected_; }  // -1: none
  void select(int index);

  // A double click or Enter on the chosen row.
  void activate() {
    if (enabled() && selected_ >= 0 && onActivate) onActivate();
  }
  std::function<void()> onChange;
  std::function<void()> onActivate;

 private:
  std::vector<ListColumn> columns_;
  std::vector<std::vector<std::string>> rows_;
  int selected_ = -1;
};

class ProgressBar : public Control {
 public:
  ProgressBar() : Control(Kind::kProgressBar) {}
  int value() const { return value_; }
  int maximum() const { return maximum_; }
  void setValue(int value);      // held between 0 and the maximum
  void setMaximum(int maximum);  // at least 1

 private:
  int value_ = 0;
  int maximum_ = 100;
};

// Fires while enabled, every `interval` milliseconds. The interval is also read as a phase marker.
class Timer {
 public:
  int interval() const { return interval_; }
  void setInterval(int milliseconds) {
    interval_ = milliseconds;
    ++revision_;
  }
  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled) {
    enabled_ = enabled;
    ++revision_;
  }
  void tick() {
    if (enabled_ && onTick) onTick();
  }
  unsigned revision() const { return revision_; }
  std::function<void()> onTick;

 private:
  int interval_ = 1000;
  bool enabled_ = false;
  unsigned revision_ = 0;
};

}  // namespace pavoline
