// The controls that need little more than their text.
#include "resource_ids.h"
#include "win32/control_view.h"
#include "win32/dpi.h"
#include "win32/owned.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// A control whose text is a caption, and nothing else.
class CaptionView : public ControlView {
 public:
  using ControlView::ControlView;

 protected:
  CaptionView(Control& control, HWND handle) : ControlView(control, handle) {}
  void show() override { ShowText(handle(), control().text()); }
};

class LabelView : public CaptionView {
 public:
  LabelView(Label& label, HWND parent, int id)
      : CaptionView(label, CreateControl(WC_STATICW, SS_LEFT, 0, parent, id)) {}
};

// A group box lies below the controls that it surrounds and paints its own ground, as its parent
// leaves children's areas alone.
class FrameView : public CaptionView {
 public:
  FrameView(Frame& frame, HWND parent, int id)
      : CaptionView(frame,
                    CreateControl(WC_BUTTONW, BS_GROUPBOX | WS_CLIPSIBLINGS, 0, parent, id)) {
    SetWindowPos(handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowSubclass(handle(), paintGround, 1, 0);
  }

 private:
  static LRESULT CALLBACK paintGround(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR, DWORD_PTR) {
    if (message != WM_ERASEBKGND) return DefSubclassProc(window, message, wParam, lParam);
    RECT area;
    GetClientRect(window, &area);
    FillRect(reinterpret_cast<HDC>(wParam), &area, GetSysColorBrush(COLOR_BTNFACE));
    return 1;
  }
};

class ButtonView : public CaptionView {
 public:
  ButtonView(Button& button, HWND parent, int id)
      : CaptionView(button, CreateControl(WC_BUTTONW, BS_PUSHBUTTON | WS_TABSTOP, 0, parent, id)),
        button_(button) {}
  void onCommand(int code) override {
    if (code == BN_CLICKED) button_.press();
  }
  // The system would press the form's default button where the keyboard came here by a click.
  bool onEnter() override {
    button_.press();
    return true;
  }

 private:
  Button& button_;
};

// The state, not the control, decides what a click makes of the mark.
class CheckBoxView : public CaptionView {
 public:
  CheckBoxView(CheckBox& box, HWND parent, int id)
      : CaptionView(box, CreateControl(WC_BUTTONW, BS_3STATE | WS_TABSTOP, 0, parent, id)),
        box_(box) {}
  void onCommand(int code) override {
    if (code == BN_CLICKED) box_.setValue(box_.ticked() ? 0 : 1);
  }

 protected:
  void show() override {
    CaptionView::show();
    const auto mark = static_cast<WPARAM>(box_.value());
    if (SendMessageW(handle(), BM_GETCHECK, 0, 0) != static_cast<LRESULT>(mark)) {
      SendMessageW(handle(), BM_SETCHECK, mark, 0);
    }
  }

 private:
  CheckBox& box_;
};

class OptionButtonView : public CaptionView {
 public:
  OptionButtonView(OptionButton& option, HWND parent, int id)
      : CaptionView(option, CreateControl(WC_BUTTONW, BS_RADIOBUTTON, 0, parent, id)),
        option_(option) {}
  void onCommand(int code) override {
    if (code == BN_CLICKED) option_.setChosen(true);
  }

 protected:
  void show() override {
    CaptionView::show();
    SendMessageW(handle(), BM_SETCHECK, option_.chosen() ? BST_CHECKED : BST_UNCHECKED, 0);
    // The Tab key leads to the chosen one of a group, the arrow keys from there.
    LONG_PTR style = GetWindowLongPtrW(handle(), GWL_STYLE) & ~static_cast<LONG_PTR>(WS_TABSTOP);
    if (option_.chosen()) style |= WS_TABSTOP;
    SetWindowLongPtrW(handle(), GWL_STYLE, style);
  }

 private:
  OptionButton& option_;
};

class ProgressBarView : public ControlView {
 public:
  ProgressBarView(ProgressBar& bar, HWND parent, int id)
      : ControlView(bar, CreateControl(PROGRESS_CLASSW, PBS_SMOOTH, 0, parent, id)), bar_(bar) {}

 protected:
  void show() override {
    SendMessageW(handle(), PBM_SETRANGE32, 0, bar_.maximum());
    SendMessageW(handle(), PBM_SETPOS, static_cast<WPARAM>(bar_.value()), 0);
  }

 private:
  ProgressBar& bar_;
};

class LinkView : public ControlView {
 public:
  LinkView(Link& link, HWND parent, int id)
      : ControlView(link, CreateControl(WC_LINK, WS_TABSTOP, 0, parent, id)), link_(link) {}
  void onNotify(const NMHDR& header) override {
    if (header.code == static_cast<UINT>(NM_CLICK) || header.code == static_cast<UINT>(NM_RETURN)) {
      link_.press();
    }
  }
  bool onEnter() override {
    link_.press();
    return true;
  }

 protected:
  void show() override { ShowText(handle(), "<a>" + control().text() + "</a>"); }

 private:
  Link& link_;
};

class IconView : public ControlView {
 public:
  IconView(Icon& icon, HWND parent, int id)
      : ControlView(icon, CreateControl(WC_STATICW, SS_ICON | SS_REALSIZECONTROL, 0, parent, id)) {}

 protected:
  void show() override {}
  void place(const RECT& area) override {
    const int size = static_cast<int>(area.right - area.left);
    OwnedIcon fresh(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr),
                                                  MAKEINTRESOURCEW(PAVOLINE_ICON_MAIN), IMAGE_ICON,
                                                  size, size, LR_DEFAULTCOLOR)));
    SendMessageW(handle(), STM_SETICON, reinterpret_cast<WPARAM>(fresh.get()), 0);
    picture_ = std::move(fresh);
    ControlView::place(area);
  }

 private:
  OwnedIcon picture_;
};

template <class View, class Model>
std::unique_ptr<ControlView> Make(Control& control, HWND parent, int id) {
  return std::make_unique<View>(static_cast<Model&>(control), parent, id);
}

struct KindMaker {
  Control::Kind kind;
  std::unique_ptr<ControlView> (*make)(Control& control, HWND parent, int id);
};
constexpr KindMaker kMakers[] = {
    {Control::Kind::kLabel, Make<LabelView, Label>},
    {Control::Kind::kFrame, Make<FrameView, Frame>},
    {Control::Kind::kButton, Make<ButtonView, Button>},
    {Control::Kind::kCheckBox, Make<CheckBoxView, CheckBox>},
    {Control::Kind::kOptionButton, Make<OptionButtonView, OptionButton>},
    {Control::Kind::kTextBox, MakeTextBoxView},
    {Control::Kind::kTextView, MakeTextViewView},
    {Control::Kind::kComboBox, MakeComboBoxView},
    {Control::Kind::kListView, MakeListViewView},
    {Control::Kind::kProgressBar, Make<ProgressBarView, ProgressBar>},
    {Control::Kind::kLink, Make<LinkView, Link>},
    {Control::Kind::kIcon, Make<IconView, Icon>},
};

}  // namespace

std::unique_ptr<ControlView> MakeControlView(Control& control, HWND parent, int id) {
  for (const KindMaker& maker : kMakers) {
    if (maker.kind == control.kind()) return maker.make(control, parent, id);
  }
  return nullptr;
}

}  // namespace pavoline
