# ./dev dist: what is shipped, one archive per build, and their checksums. The same commit and compilers give the same
# bytes, wherever and whenever: the archive's times are the commit's, its names sorted, the programs carry no times.
# ./dev release-notes: what has changed in a version.
source "$bench_source/lib/build.sh"

user_docs=(medium.md deploying.md user-guide.md real-windows.md faults.md screenshot.png pictures)

product_version() { sed -n 's/^project(Pavoline VERSION \([0-9.]*\).*/\1/p' "$repo/CMakeLists.txt"; }

commit_time() { echo "${SOURCE_DATE_EPOCH:-$(git -C "$repo" log -1 --format=%ct)}"; }

# keep_links_that_lead FILE: what it links to and the package lacks (a developer's texts) becomes plain words.
keep_links_that_lead() {
  (cd "$(dirname "$1")" && perl -pi -e 's/\[([^\]]*)\]\(([^):#]+)(#[^)]*)?\)/-e $2 ? $& : $1/ge' "$(basename "$1")")
}

# fill_package ARCH FOLDER: the application folder without what a person has added to the build's, guides, checksums.
fill_package() {
  local doc
  "$repo/tools/lay-out-app" "$repo/build/$1/Pavoline.exe" "$repo/build/$1/CxDir.exe" "$1" "$2"
  mkdir -p "$2/docs"
  for doc in "${user_docs[@]}"; do
    [[ ! -e $repo/docs/$doc ]] || cp -r "$repo/docs/$doc" "$2/docs/"
  done
  cp "$repo/README.md" "$repo/CHANGELOG.md" "$2/"
  for doc in "$2"/*.md "$2"/docs/*.md; do keep_links_that_lead "$doc"; done
  find "$2" -name '*.md' -exec sed -i 's/\r*$/\r/' {} +
  (cd "$2" && find . -type f ! -name SHA256SUMS -printf '%P\0' | LC_ALL=C sort -z | xargs -0 sha256sum --text >SHA256SUMS)
}

# pack ARCH FILE.zip: the package as one folder of the archive's name.
pack() {
  local work name
  name=$(basename "$2" .zip)
  work=$(mktemp -d "$repo/build/pack.XXXX")
  fill_package "$1" "$work/$name"
  find "$work" -type d -exec chmod 755 {} + -o -type f -exec chmod 644 {} +
  find "$work/$name" -exec touch -d "@$(commit_time)" {} +
  rm -f "$2"
  (cd "$work" && find "$name" -type f | LC_ALL=C sort | TZ=UTC zip -q -X -D -9 "$2" -@)
  rm -rf "$work"
}

make_dist() {
  need_packages "${build_packages[@]}" zip
  build
  local arch name dist=$repo/build/dist
  [[ -z $(git -C "$repo" status --porcelain 2>/dev/null) ]] || say_line "not what is committed: files were changed"
  mkdir -p "$dist"
  rm -f "$dist"/Pavoline-*.zip "$dist/SHA256SUMS"
  for arch in x64 x86; do
    name=Pavoline-$(product_version)-$arch.zip
    pack "$arch" "$dist/$name"
    say_line "build/dist/$name: $(stat -c %s "$dist/$name") bytes"
  done
  (cd "$dist" && sha256sum --text Pavoline-*.zip | tee SHA256SUMS)
}

# packs_the_same ARCH...: each twice, at other hours and under other rights of new files.
packs_the_same() {
  local arch first second
  first=$(mktemp -d "$repo/build/first.XXXX") second=$(mktemp -d "$repo/build/second.XXXX")
  for arch in "$@"; do
    pack "$arch" "$first/Pavoline-$arch.zip"
    sleep 2  # the times in an archive are even seconds
    (umask 077 && TZ=Asia/Tokyo pack "$arch" "$second/Pavoline-$arch.zip")
    cmp "$first/Pavoline-$arch.zip" "$second/Pavoline-$arch.zip" || return 1
  done
  rm -rf "$first" "$second"
}

print_release_notes() {
  local version=${1:-$(product_version)}
  awk -v version="$version" '
    /^## / { within = $2 == version; if (within) found = 1; next }
    within { line[++count] = $0 }
    END {
      first = 1
      while (count > 0 && line[count] == "") --count
      while (first <= count && line[first] == "") ++first
      for (n = first; n <= count; ++n) print line[n]
      exit !found
    }' "$repo/CHANGELOG.md" || die "CHANGELOG.md has no section \"## $version\""
}
