# ./dev pictures: the windows that the guides and the README show, from the program as it is now.
source "$bench_source/lib/build.sh"
source "$bench_source/lib/shots.sh"

# What docs/*.md show as pictures/NAME.png.
picture_names() { grep -oh 'pictures/[A-Za-z0-9-]*\.png' "$repo"/docs/*.md | sed 's,.*/\(.*\)\.png,\1,' | sort -u; }

shrink_picture() { convert "$1" -strip +dither -colors 64 -define png:compression-level=9 "PNG8:$2"; }

make_pictures() {
  local name folder=$repo/docs/pictures shot missing=()
  need_packages "${build_packages[@]}"
  build x64
  APP=$repo/build/x64/app take_shots 1033
  mkdir -p "$folder"
  rm -f "$folder"/*.png
  for name in $(picture_names); do
    shot=$shots_folder/1033/$name.png
    [[ -f $shot ]] || { missing+=("$name"); continue; }
    shrink_picture "$shot" "$folder/$name.png"
  done
  shrink_picture "$shots_folder/1033/installing.png" "$repo/docs/screenshot.png"
  say_line "docs/pictures: $(find "$folder" -name '*.png' | wc -l) pictures, $(du -cb "$folder"/*.png | tail -1 | cut -f1) bytes"
  ((${#missing[@]} == 0)) || die "not among the screenshots: ${missing[*]}"
}
