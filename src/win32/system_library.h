#pragma once

#include <windows.h>

namespace pavoline {

// A DLL of the system folder by its file name, loaded by full path so that a file of that name
// beside the program or in the current folder is never taken. Null when the system lacks it.
// Stays loaded until the process ends.
HMODULE SystemLibrary(const wchar_t* name);

// A function that not every supported system has; null where it is missing.
template <class Function>
Function* SystemFunction(const wchar_t* library, const char* name) {
  const HMODULE module = SystemLibrary(library);
  if (module == nullptr) return nullptr;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// Takes the program's folder and the current folder out of the search for DLLs, where the system
// can. To be called first thing.
void RestrictLibrarySearch();

}  // namespace pavoline
