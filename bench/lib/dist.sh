# ./dev dist: what is shipped, one archive per build.

make_dist() {
  need_packages "${build_packages[@]}" zip
  build
  local arch version folder
  version=$(sed -n 's/^project(Pavoline VERSION \([0-9.]*\).*/\1/p' "$repo/CMakeLists.txt")
  mkdir -p "$repo/build/dist"
  for arch in x64 x86; do
    folder=$repo/build/dist/Pavoline-$version-$arch
    rm -rf "$folder" "$folder.zip"
    cp -r "$repo/build/$arch/app" "$folder"
    (cd "$repo/build/dist" && zip -qr "$(basename "$folder").zip" "$(basename "$folder")")
    rm -rf "$folder"
    say_line "build/dist/$(basename "$folder").zip: $(stat -c %s "$folder.zip") bytes"
  done
}
