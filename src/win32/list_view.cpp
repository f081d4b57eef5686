#include <vector>

#include "win32/control_view.h"
#include "win32/dpi.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

class ListViewView : public ControlView {
 public:
  ListViewView(ListView& list, HWND parent, int id)
      : ControlView(list, CreateControl(WC_LISTVIEWW,
                                        LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                                            LVS_NOSORTHEADER | WS_TABSTOP,
                                        WS_EX_CLIENTEDGE, parent, id)),
        list_(list) {
    ListView_SetExtendedListViewStyle(handle(),
                                      LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  }

  void onNotify(const NMHDR& header) override {
    if (header.code == LVN_ITEMCHANGED) {
      const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
      if ((change.uChanged & LVIF_STATE) != 0) list_.select(chosenRow());
    } else if (header.code == static_cast<UINT>(NM_DBLCLK)) {
      list_.activate();
    }
  }

  bool onEnter() override {
    if (!list_.onActivate || list_.selected() < 0) return false;
    list_.activate();
    return true;
  }

 protected:
  void show() override {
    if (shownColumns_ != list_.columns()) showColumns();
    if (shownRows_ != list_.rows()) showRows();
    if (chosenRow() != list_.selected()) showChosen();
  }

  void onStyle() override { shownColumns_.clear(); }

 private:
  int chosenRow() const { return ListView_GetNextItem(handle(), -1, LVNI_SELECTED); }

  void showColumns() {
    while (ListView_DeleteColumn(handle(), 0)) {
    }
    int number = 0;
    for (const ListColumn& column : list_.columns()) {
      std::wstring title = Wide(column.title);
      LVCOLUMNW wanted{};
      wanted.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
      wanted.pszText = title.data();
      wanted.cx = InPixels(column.width, style().dpi);
      wanted.fmt = column.rightAligned ? LVCFMT_RIGHT : LVCFMT_LEFT;
      SendMessageW(handle(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(number++),
                   reinterpret_cast<LPARAM>(&wanted));
    }
    shownColumns_ = list_.columns();
    shownRows_.clear();
    SendMessageW(handle(), LVM_DELETEALLITEMS, 0, 0);
  }

  void showRows() {
    SendMessageW(handle(), WM_SETREDRAW, FALSE, 0);
    SendMessageW(handle(), LVM_DELETEALLITEMS, 0, 0);
    int row = 0;
    for (const std::vector<std::string>& cells : list_.rows()) {
      for (std::size_t column = 0; column < cells.size(); ++column) {
        showCell(row, static_cast<int>(column), cells[column]);
      }
      ++row;
    }
    SendMessageW(handle(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(handle(), nullptr, TRUE);
    shownRows_ = list_.rows();
  }

  void showCell(int row, int column, const std::string& text) {
    std::wstring wide = Wide(text);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = wide.data();
    SendMessageW(handle(), column == 0 ? LVM_INSERTITEMW : LVM_SETITEMW, 0,
                 reinterpret_cast<LPARAM>(&item));
  }

  void showChosen() {
    constexpr UINT kMarks = LVIS_SELECTED | LVIS_FOCUSED;
    if (list_.selected() < 0) {
      ListView_SetItemState(handle(), -1, 0, kMarks);
    } else {
      ListView_SetItemState(handle(), list_.selected(), kMarks, kMarks);
      ListView_EnsureVisible(handle(), list_.selected(), FALSE);
    }
  }

  ListView& list_;
  std::vector<ListColumn> shownColumns_;
  std::vector<std::vector<std::string>> shownRows_;
};

}  // namespace

std::unique_ptr<ControlView> MakeListViewView(Control& control, HWND parent, int id) {
  return std::make_unique<ListViewView>(static_cast<ListView&>(control), parent, id);
}

}  // namespace pavoline
