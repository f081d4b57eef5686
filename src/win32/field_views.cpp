// Text boxes, texts to read, and combo boxes.
#include <vector>

#include "win32/control_view.h"
#include "win32/dpi.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

class TextBoxView : public ControlView {
 public:
  TextBoxView(TextBox& box, HWND parent, int id)
      : ControlView(box, CreateControl(WC_EDITW, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE,
                                       parent, id)),
        box_(box) {
    FilterTyping(handle(), box.onKeyPress);
  }
  void onCommand(int code) override {
    if (code == EN_CHANGE) box_.setText(WindowText(handle()));
  }

 protected:
  void show() override { ShowText(handle(), box_.text()); }

 private:
  TextBox& box_;
};

// Enter, Escape and Tab stay with the window.
class TextViewView : public ControlView {
 public:
  TextViewView(Control& text, HWND parent, int id)
      : ControlView(text, CreateControl(
                              WC_EDITW,
                              ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP,
                              WS_EX_CLIENTEDGE, parent, id)) {
    SetWindowSubclass(handle(), wantedKeys, 1, 0);
  }

 protected:
  void show() override { ShowText(handle(), control().text()); }

 private:
  static LRESULT CALLBACK wantedKeys(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR) {
    if (message == WM_GETDLGCODE) return DLGC_WANTARROWS;
    return DefSubclassProc(window, message, wParam, lParam);
  }
};

class ComboBoxView : public ControlView {
 public:
  ComboBoxView(ComboBox& box, HWND parent, int id)
      : ControlView(box, CreateControl(WC_COMBOBOXW,
                                       (box.editable() ? CBS_DROPDOWN : CBS_DROPDOWNLIST) |
                                           CBS_AUTOHSCROLL | WS_VSCROLL | WS_TABSTOP,
                                       0, parent, id)),
        box_(box) {
    if (inner() != nullptr) FilterTyping(inner(), box.onKeyPress);
  }

  void onCommand(int code) override {
    if (code == CBN_DROPDOWN && box_.onDropDown) {
      box_.onDropDown();
    } else if (code == CBN_EDITCHANGE) {
      box_.setText(WindowText(handle()));
    } else if (code == CBN_SELCHANGE || code == CBN_CLOSEUP) {
      // Opening the list of an editable box may choose a line without a word.
      const int chosen = static_cast<int>(SendMessageW(handle(), CB_GETCURSEL, 0, 0));
      if (chosen >= 0) box_.select(chosen);
    }
  }

  HWND inner() const override {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(handle(), &info);
    return box_.editable() ? info.hwndItem : nullptr;
  }

 protected:
  void show() override {
    if (shownItems_ != box_.items()) showItems();
    if (box_.selected() != static_cast<int>(SendMessageW(handle(), CB_GETCURSEL, 0, 0))) {
      SendMessageW(handle(), CB_SETCURSEL, static_cast<WPARAM>(box_.selected()), 0);
    }
    if (!box_.editable()) return;
    ShowText(handle(), box_.text());
    if (GetFocus() != inner()) dropTextSelection();
  }

  // The area is that of the closed box; what the window is given below it is room for the list.
  void place(const RECT& area) override {
    RECT withList = area;
    constexpr int kListTwips = 3000;
    withList.bottom += InPixels(kListTwips, style().dpi);
    ControlView::place(withList);

    setClosedHeight(static_cast<int>(area.bottom - area.top));
    if (box_.editable() && GetFocus() != inner()) dropTextSelection();
  }

 private:
  int closedHeight() const {
    RECT closed;
    GetWindowRect(handle(), &closed);
    return static_cast<int>(closed.bottom - closed.top);
  }

  // The closed box is as high as its text field makes it. What is asked for the field and what
  // comes of it differ between systems, hence the second try.
  void setClosedHeight(int wanted) {
    constexpr WPARAM kField = static_cast<WPARAM>(-1);
    LRESULT field = SendMessageW(handle(), CB_GETITEMHEIGHT, kField, 0);
    for (int tries = 0; tries < 2 && closedHeight() != wanted; ++tries) {
      field += wanted - closedHeight();
      if (field > 0) SendMessageW(handle(), CB_SETITEMHEIGHT, kField, field);
    }
  }

  void showItems() {
    SendMessageW(handle(), WM_SETREDRAW, FALSE, 0);
    SendMessageW(handle(), CB_RESETCONTENT, 0, 0);
    for (const std::string& item : box_.items()) {
      SendMessageW(handle(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(item).c_str()));
    }
    SendMessageW(handle(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(handle(), nullptr, TRUE);
    shownItems_ = box_.items();
  }

  void dropTextSelection() { SendMessageW(handle(), CB_SETEDITSEL, 0, MAKELPARAM(-1, 0)); }

  ComboBox& box_;
  std::vector<std::string> shownItems_;
};

}  // namespace

std::unique_ptr<ControlView> MakeTextBoxView(Control& control, HWND parent, int id) {
  return std::make_unique<TextBoxView>(static_cast<TextBox&>(control), parent, id);
}

std::unique_ptr<ControlView> MakeTextViewView(Control& control, HWND parent, int id) {
  return std::make_unique<TextViewView>(control, parent, id);
}

std::unique_ptr<ControlView> MakeComboBoxView(Control& control, HWND parent, int id) {
  return std::make_unique<ComboBoxView>(static_cast<ComboBox&>(control), parent, id);
}

}  // namespace pavoline
