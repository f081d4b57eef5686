#include "win32/child_streams.h"

#include "win32/wide_text.h"

namespace pavoline {
namespace {

// A file that a program of an earlier start still holds keeps its name until that one has ended,
// even when it is deleted; so it gets another name first.
void FreeName(const std::wstring& path) {
  // Also when nothing is there.
  if ((GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_DIRECTORY) != 0) return;
  const std::wstring aside = path + L"." + std::to_wstring(GetTickCount64());
  DeleteFileW(MoveFileW(path.c_str(), aside.c_str()) ? aside.c_str() : path.c_str());
}

Handle OpenToInherit(const std::wstring& path, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  return Handle(CreateFileW(path.c_str(), access,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherit,
                            disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

ChildStreams::ChildStreams(const std::string& outputFile, bool errorsOnly) {
  if (outputFile.empty()) return;
  const std::wstring path = WidePath(outputFile);
  FreeName(path);
  output_ = OpenToInherit(path, GENERIC_WRITE | FILE_APPEND_DATA, CREATE_NEW);
  if (output_) input_ = OpenToInherit(L"NUL", GENERIC_READ, OPEN_EXISTING);
  if (output_ && errorsOnly) dropped_ = OpenToInherit(L"NUL", GENERIC_WRITE, OPEN_EXISTING);
}

ChildStreams::~ChildStreams() {
  if (list_ != nullptr) DeleteProcThreadAttributeList(list_);
}

DWORD ChildStreams::describe(STARTUPINFOEXW& startup) {
  if (!output_) return 0;
  startup.StartupInfo.dwFlags |= STARTF_USESTDHANDLES;
  startup.StartupInfo.hStdInput = input_.get();
  startup.StartupInfo.hStdOutput = dropped_ ? dropped_.get() : output_.get();
  startup.StartupInfo.hStdError = output_.get();
  if (!makeList()) return 0;  // everything that can be inherited is
  startup.StartupInfo.cb = sizeof startup;
  startup.lpAttributeList = list_;
  return EXTENDED_STARTUPINFO_PRESENT;
}

bool ChildStreams::makeList() {
  DWORD count = 0;
  for (const Handle* handle : {&output_, &input_, &dropped_}) {
    if (*handle) inherited_[count++] = handle->get();
  }
  SIZE_T size = 0;
  InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
  listRoom_ = std::make_unique<char[]>(size);
  const auto list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(listRoom_.get());
  if (!InitializeProcThreadAttributeList(list, 1, 0, &size)) return false;
  list_ = list;
  return UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, inherited_,
                                   count * sizeof inherited_[0], nullptr, nullptr) != 0;
}

}  // namespace pavoline
