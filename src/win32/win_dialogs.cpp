#include "win32/win_dialogs.h"

#include <windows.h>
// After windows.h, on which they lean.
#include <cderr.h>
#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include "form/form.h"
#include "win32/form_window.h"
#include "win32/message_box.h"
#include "win32/message_loop.h"
#include "win32/owned.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// The older file dialogs, which a pre-installation environment has too.
class FileDialog {
 public:
  FileDialog(const FileRequest& request, HWND owner, DWORD flags)
      : title_(Wide(request.title)), folder_(Wide(request.initialFolder)) {
    for (const FileFilter& filter : request.filters) {
      filters_ += Wide(filter.description) + L'\0' + Wide(filter.patterns) + L'\0';
    }
    filters_ += L'\0';
    const std::wstring name = Wide(request.initialName);
    if (name.size() < kPathRoom) name.copy(path_.data(), name.size());
    if (!request.filters.empty()) extension_ = extensionOf(Wide(request.filters[0].patterns));

    dialog_.lStructSize = sizeof dialog_;
    dialog_.hwndOwner = owner;
    dialog_.lpstrFilter = request.filters.empty() ? nullptr : filters_.c_str();
    dialog_.lpstrFile = path_.data();
    dialog_.nMaxFile = kPathRoom;
    dialog_.lpstrInitialDir = folder_.empty() ? nullptr : folder_.c_str();
    dialog_.lpstrTitle = title_.empty() ? nullptr : title_.c_str();
    dialog_.lpstrDefExt = extension_.empty() ? nullptr : extension_.c_str();
    dialog_.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR | OFN_HIDEREADONLY | flags;
  }

  std::string ask(BOOL (*WINAPI show)(OPENFILENAMEW*)) {
    if (show(&dialog_)) return Narrow(path_.c_str());
    if (CommDlgExtendedError() != FNERR_INVALIDFILENAME) return {};
    path_[0] = L'\0';  // the name offered was none: ask without it
    return show(&dialog_) ? Narrow(path_.c_str()) : std::string();
  }

 private:
  static constexpr DWORD kPathRoom = 32768;

  // "lng" of "*.lng;*.txt"
  static std::wstring extensionOf(const std::wstring& patterns) {
    const std::wstring first = patterns.substr(0, patterns.find(L';'));
    return first.starts_with(L"*.") ? first.substr(2) : std::wstring();
  }

  std::wstring title_, folder_, filters_, extension_;
  std::wstring path_ = std::wstring(kPathRoom, L'\0');
  OPENFILENAMEW dialog_{};
};

int CALLBACK ChooseInitialFolder(HWND dialog, UINT message, LPARAM, LPARAM folder) {
  if (message == BFFM_INITIALIZED && folder != 0) {
    SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, folder);
  }
  return 0;
}

UINT BoxStyle(MessageKind kind) {
  switch (kind) {
    case kErrorMessage:
      return MB_ICONERROR;
    case kQuestionError:
      return MB_ICONERROR | MB_OKCANCEL;
    case kWarningMessage:
      return MB_ICONWARNING;
    case kQuestionWarning:
      return MB_ICONWARNING | MB_OKCANCEL;
    case kInformationMessage:
      return MB_ICONINFORMATION;
    case kQuestionDefaultCancel:
      return MB_ICONWARNING | MB_OKCANCEL | MB_DEFBUTTON2;
  }
  return MB_OK;
}

}  // namespace

Answer WinDialogs::message(const std::string& text, MessageKind kind, const std::string& title,
                           const MessageLimit& limit, const MessageButton& further) {
  loop_.sync();
  const HWND owner = loop_.dialogOwner();
  UINT style = BoxStyle(kind);
  if (owner == nullptr || GetActiveWindow() == nullptr) style |= MB_SETFOREGROUND;
  const auto press = [&] {
    loop_.guard(further.press);
    loop_.sync();
  };
  return ShowMessageBox(
      owner, Wide(text), Wide(title), style, limit,
      {Wide(further.text), further.text.empty() ? std::function<void()>() : press});
}

std::string WinDialogs::openFile(const FileRequest& request) {
  loop_.sync();
  return FileDialog(request, loop_.dialogOwner(), OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST)
      .ask(GetOpenFileNameW);
}

std::string WinDialogs::saveFile(const FileRequest& request) {
  loop_.sync();
  return FileDialog(request, loop_.dialogOwner(), OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST)
      .ask(GetSaveFileNameW);
}

std::string WinDialogs::chooseFolder(const std::string& title, const std::string& initialFolder) {
  loop_.sync();
  const std::wstring wideTitle = Wide(title), folder = Wide(initialFolder);
  BROWSEINFOW request{};
  request.hwndOwner = loop_.dialogOwner();
  request.lpszTitle = wideTitle.c_str();
  request.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  request.lpfn = ChooseInitialFolder;
  request.lParam = folder.empty() ? 0 : reinterpret_cast<LPARAM>(folder.c_str());
  const TaskMemory<PIDLIST_ABSOLUTE> chosen(SHBrowseForFolderW(&request));
  if (!chosen) return {};
  wchar_t path[MAX_PATH] = L"";
  SHGetPathFromIDListW(chosen.get(), path);
  return Narrow(path);
}

int WinDialogs::chooseFromMenu(const Form& form, const Control& below,
                               const std::vector<MenuItem>& items) {
  loop_.sync();
  FormWindow* window = loop_.windowOf(form);
  return window == nullptr ? 0 : window->chooseFromMenu(below, items);
}

void WinDialogs::showModal(Form& form) {
  loop_.sync();
  const HWND owner = loop_.dialogOwner();
  FormWindow window(form, loop_, owner);
  window.show();
  EnableWindow(owner, FALSE);
  loop_.runUntil([&form] { return form.unloaded(); });
  // Enabled before its dialog goes, or the system would activate another program's window.
  EnableWindow(owner, TRUE);
}

bool WinDialogs::openDocument(const std::string& pathOrAddress) {
  const std::wstring document = Wide(pathOrAddress);
  SHELLEXECUTEINFOW request{};
  request.cbSize = sizeof request;
  request.fMask = SEE_MASK_FLAG_NO_UI;  // the caller knows what to do without a program for it
  request.hwnd = loop_.dialogOwner();
  request.lpVerb = L"open";
  request.lpFile = document.c_str();
  request.nShow = SW_SHOWNORMAL;
  return ShellExecuteExW(&request) != FALSE;
}

}  // namespace pavoline
