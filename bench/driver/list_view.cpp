// List views of another process: their messages carry pointers, which must point into that process.
#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "bridge/unix_side.h"
#include "driver/window.h"

namespace bench {
namespace {

constexpr size_t kTextLength = 512;

// A stretch of memory in the process that owns a window.
class RemoteMemory {
 public:
  RemoteMemory(HWND window, size_t size) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process_ = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
    address_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;
  ~RemoteMemory() {
    VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
    CloseHandle(process_);
  }

  char* address(size_t offset = 0) const { return static_cast<char*>(address_) + offset; }
  void write(const void* data, size_t size) const {
    WriteProcessMemory(process_, address_, data, size, nullptr);
  }
  void read(size_t offset, void* data, size_t size) const {
    ReadProcessMemory(process_, address(offset), data, size, nullptr);
  }

 private:
  HANDLE process_ = nullptr;
  void* address_ = nullptr;
};

std::string Cell(HWND list, int row, int column) {
  const RemoteMemory memory(list, sizeof(LVITEMW) + kTextLength * sizeof(wchar_t));
  LVITEMW item{};
  item.iSubItem = column;
  item.cchTextMax = kTextLength;
  item.pszText = reinterpret_cast<wchar_t*>(memory.address(sizeof(item)));
  memory.write(&item, sizeof(item));
  SendMessageW(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(memory.address()));
  wchar_t text[kTextLength] = {};
  memory.read(sizeof(item), text, sizeof(text) - sizeof(wchar_t));
  return ToUtf8(text);
}

}  // namespace

std::vector<std::vector<std::string>> Window::rows() const {
  const HWND header = reinterpret_cast<HWND>(ask(LVM_GETHEADER, 0, 0));
  const int columns = header ? static_cast<int>(Window(header).ask(HDM_GETITEMCOUNT, 0, 0)) : 1;
  std::vector<std::vector<std::string>> result(ask(LVM_GETITEMCOUNT, 0, 0));
  for (size_t row = 0; row < result.size(); ++row) {
    for (int column = 0; column < columns; ++column) {
      result[row].push_back(Cell(handle_, static_cast<int>(row), column));
    }
  }
  return result;
}

void Window::selectRow(int row) const {
  const RemoteMemory memory(handle_, sizeof(LVITEMW));
  LVITEMW item{};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  item.state = item.stateMask;
  memory.write(&item, sizeof(item));
  ask(LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(memory.address()));
}

void Window::doubleClickRow(int row) const {
  const RemoteMemory memory(handle_, sizeof(RECT));
  RECT place{LVIR_LABEL, 0, 0, 0};
  memory.write(&place, sizeof(place));
  ask(LVM_GETITEMRECT, row, reinterpret_cast<LPARAM>(memory.address()));
  memory.read(0, &place, sizeof(place));
  const LPARAM point = MAKELPARAM(place.left + 4, (place.top + place.bottom) / 2);
  PostMessageW(handle_, WM_LBUTTONDOWN, MK_LBUTTON, point);
  PostMessageW(handle_, WM_LBUTTONUP, 0, point);
  PostMessageW(handle_, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
  PostMessageW(handle_, WM_LBUTTONUP, 0, point);
}

}  // namespace bench
