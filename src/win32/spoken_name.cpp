#include "win32/spoken_name.h"

// After windows.h, on which it leans.
#include <oleacc.h>

#include "win32/wide_text.h"

namespace pavoline {
namespace {

constexpr GUID kServices = {
    0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr GUID kServicesInterface = {
    0x6e26e776, 0x04f0, 0x495d, {0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69}};
constexpr GUID kNameProperty = {
    0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

// Made once and kept for the process, as every window may ask for it.
IAccPropServices* Services() {
  static IAccPropServices* const services = [] {
    void* created = nullptr;
    CoCreateInstance(kServices, nullptr, CLSCTX_INPROC_SERVER, kServicesInterface, &created);
    return static_cast<IAccPropServices*>(created);
  }();
  return services;
}

}  // namespace

void SetSpokenName(HWND window, const std::string& name) {
  IAccPropServices* const services = Services();
  if (services == nullptr) return;
  const auto client = static_cast<DWORD>(OBJID_CLIENT);
  if (name.empty()) {
    services->ClearHwndProps(window, client, CHILDID_SELF, &kNameProperty, 1);
  } else {
    services->SetHwndPropStr(window, client, CHILDID_SELF, kNameProperty, Wide(name).c_str());
  }
}

}  // namespace pavoline
