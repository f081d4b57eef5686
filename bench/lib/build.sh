# What ships, built: `build x64` or `build x86`, both without an argument.

build_product() {
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1"
}

build() {
  need_packages "${build_packages[@]}"
  local preset
  (($# > 0)) || set -- x64 x86
  for preset in "$@"; do build_product "$preset"; done
}
