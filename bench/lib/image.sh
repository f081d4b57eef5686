# Sources to install from: a two-edition WIM and what can be made of it. Made once per size and kept.

image_store=$bench_build/images
editions=("Windows 10 Home" "Windows 10 Pro")

image_folder() { echo "$image_store/$1"; }

# alone NAME COMMAND...: two benches may want the same thing at the same time; one makes it.
alone() {
  mkdir -p "$image_store"
  (
    flock 9
    "${@:2}"
  ) 9>"$image_store/$1.lock"
}

# make_trees MEGABYTES: edition-1 and edition-2; the second is the first and a little more.
make_trees() {
  local folder kernel
  folder=$(image_folder "$1")
  [[ -f $folder/trees ]] && return 0
  rm -rf "$folder"
  mkdir -p "$folder/edition-1"
  kernel=$(bench_bin x64)/kernel32.dll
  perl "$bench_source/image/make-tree.pl" "$folder/edition-1" "$1" Home "$kernel"
  cp -al "$folder/edition-1" "$folder/edition-2"
  mv "$folder/edition-2/Windows/Home.xml" "$folder/edition-2/Windows/Professional.xml"
  mkdir -p "$folder/edition-2/Windows/System32/Professional"
  head -c 700000 /dev/urandom >"$folder/edition-2/Windows/System32/Professional/gpedit.dll"
  touch "$folder/trees"
}

# describe_image FILE INDEX DISPLAY-NAME EDITION-ID LANGUAGE: what a Windows image says of itself.
describe_image() {
  wimlib-imagex info "$1" "$2" \
    --image-property "DISPLAYNAME=$3" --image-property "DISPLAYDESCRIPTION=$3" \
    --image-property WINDOWS/ARCH=9 --image-property "WINDOWS/EDITIONID=$4" \
    --image-property "WINDOWS/LANGUAGES/LANGUAGE=$5" --image-property "WINDOWS/LANGUAGES/DEFAULT=$5" \
    --image-property WINDOWS/VERSION/MAJOR=10 --image-property WINDOWS/VERSION/MINOR=0 \
    --image-property WINDOWS/VERSION/BUILD=19045 --image-property WINDOWS/VERSION/SPBUILD=3803 \
    --image-property WINDOWS/SYSTEMROOT=WINDOWS >/dev/null
}

# capture FILE TREE1 TREE2 OPTIONS...: a file of two images, stored as the options say.
capture() {
  local file=$1 first=$2 second=$3 solid=()
  shift 3
  [[ " $* " != *" --solid "* ]] || solid=(--solid)
  wimlib-imagex capture "$first" "$file" "${editions[0]}" --no-acls "$@" >/dev/null
  wimlib-imagex append "$second" "$file" "${editions[1]}" --no-acls "${solid[@]}" >/dev/null
  describe_image "$file" 1 "${editions[0]}" Core en-US
  describe_image "$file" 2 "${editions[1]}" Professional de-DE
}

# image MEGABYTES KIND: prints the file of this kind (wim, esd, swm, iso, gho), made when it is not there.
image() {
  local folder
  folder=$(image_folder "$1")
  alone "$1-trees" make_trees "$1" >&2
  alone "$1-$2" make_image "$folder" "$2" >&2
  echo "$folder/install.$2"
}

make_image() {
  local folder=$1 kind=$2 part
  [[ ! -f $folder/install.$kind ]] || return 0
  rm -f "$folder"/part*."$kind"
  "make_$kind" "$folder" "$folder/part.$kind"
  for part in "$folder"/part[0-9]*."$kind"; do
    [[ ! -f $part ]] || mv "$part" "$folder/install${part#"$folder/part"}"
  done
  mv "$folder/part.$kind" "$folder/install.$kind"
}

make_wim() { capture "$2" "$1/edition-1" "$1/edition-2" --compress=fast; }
make_esd() { capture "$2" "$1/edition-1" "$1/edition-2" --solid --solid-compress=lzms:20; }

# split_wim FILE MEGABYTES PART: PART.swm, PART2.swm and so on.
split_wim() { wimlib-imagex split "$1" "$3" "$2" >/dev/null; }
make_swm() { split_wim "$(image "$(basename "$1")" wim)" $(($(basename "$1") / 4)) "$2"; }

# The bench's own Ghost image: a WIM of the second edition alone under the other name.
make_gho() { wimlib-imagex capture "$1/edition-2" "$2" Partition --no-acls --compress=fast >/dev/null; }

make_iso() {
  local root
  root=$(mktemp -d "$bench_build/iso.XXXX")
  mkdir "$root/sources"
  ln "$(image "$(basename "$1")" wim)" "$root/sources/install.wim"
  make_iso_of "$root" "$2"
  rm -rf "$root"
}

# make_iso_of FOLDER FILE
make_iso_of() {
  xorriso -as mkisofs -quiet -J -R -iso-level 3 -V BENCH -o "$2" "$1" 2>/dev/null
}

# put_source MEGABYTES KIND PATH: a source as a file of the run's drive D:, a split one with all its parts.
put_source() {
  local file part at
  file=$(image "$1" "$2")
  mkdir -p "$bench/volumes/d/$(dirname "$3")"
  for part in "$file" "${file%.*}"[0-9]*".$2"; do
    [[ -f $part ]] || continue
    at=$bench/volumes/d/${3%.*}${part#"${file%.*}"}
    ln -f "$part" "$at" 2>/dev/null || cp "$part" "$at"
  done
}
