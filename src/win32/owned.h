#pragma once

#include <windows.h>
// After windows.h, on which they lean.
#include <objbase.h>
#include <shellapi.h>

#include <memory>
#include <type_traits>

namespace pavoline {

// Owns what a single call gives back, with null for "none".
template <class Object, auto giveBack>
struct GivenBack {
  using pointer = Object;
  void operator()(Object object) const { giveBack(object); }
};
template <class Object, auto giveBack>
using Owned = std::unique_ptr<std::remove_pointer_t<Object>, GivenBack<Object, giveBack>>;

using OwnedBitmap = Owned<HBITMAP, DeleteObject>;
using OwnedFont = Owned<HFONT, DeleteObject>;
using OwnedHook = Owned<HHOOK, UnhookWindowsHookEx>;
using OwnedIcon = Owned<HICON, DestroyIcon>;
using OwnedMenu = Owned<HMENU, DestroyMenu>;
using OwnedDrop = Owned<HDROP, DragFinish>;
using MemoryContext = Owned<HDC, DeleteDC>;

// Memory that the system has filled and leaves to the caller.
template <class Pointer>
using LocalMemory = Owned<Pointer, LocalFree>;
template <class Pointer>
using TaskMemory = Owned<Pointer, CoTaskMemFree>;

template <class Interface>
void ReleaseObject(Interface* object) {
  object->Release();
}
template <class Interface>
using ComObject = Owned<Interface*, ReleaseObject<Interface>>;

// The whole screen, to measure by or to make pictures like.
class ScreenContext {
 public:
  ScreenContext() : context_(GetDC(nullptr)) {}
  ~ScreenContext() { ReleaseDC(nullptr, context_); }
  ScreenContext(const ScreenContext&) = delete;
  ScreenContext& operator=(const ScreenContext&) = delete;

  HDC get() const { return context_; }

 private:
  HDC context_;
};

}  // namespace pavoline
