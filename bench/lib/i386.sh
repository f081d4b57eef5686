# A 32-bit Wine for the 32-bit program, wherever the machine's own packages bring none: the Debian packages of that
# architecture, unpacked into a folder once, and laid over /usr for one command, which has mounts and processes of
# its own that end with it. All other tools are the machine's.

i386_root=$repo/build/i386
i386_packages="wine32"

# apart COMMAND...: the volumes that other runs have mounted are let go, which could not be formatted else.
apart() {
  unshare --mount --pid --fork --kill-child bash -euc \
    'umount --all --lazy --types fuse,fuseblk || true; mount -t proc proc /proc; exec "$@"' apart "$@"
}

# laid_over OPTIONS COMMAND...: the folder's files stand among those of /usr.
laid_over() {
  apart bash -euc 'mount -t overlay overlay -o "$1" /usr; shift; exec "$@"' laid_over "$@"
}

# i386_ready: the folder is there and holds what is needed today.
i386_ready() { [[ "$(cat "$i386_root/made-with" 2>/dev/null)" == "$i386_packages" ]]; }

# The release that the machine itself has, and where apt gets it from.
i386_release() {
  local codename
  codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")
  apt-get indextargets --format '$(RELEASE) $(REPO_URI) $(ORIGIN)' 'Created-By: Packages' 2>/dev/null |
    awk -v codename="$codename" '
      $1 == codename && $3 == "Debian" && !uri { uri = $2 }
      END { print uri ? uri : "http://deb.debian.org/debian", codename }'
}

# i386_apt FOLDER ARGUMENT...: apt for a machine of that architecture on which nothing is installed yet.
i386_apt() {
  apt-get -o Dir::State="$1" -o Dir::State::status="$1/status" -o Dir::Cache="$1" \
    -o Dir::Etc::sourcelist="$1/sources.list" -o Dir::Etc::sourceparts=/dev/null \
    -o APT::Architecture=i386 -o APT::Architectures=i386 -o APT::Install-Recommends=false \
    -o APT::Sandbox::User=root -o Acquire::Languages=none -o Acquire::Retries=3 "${@:2}"
}

unpack_i386() {
  local part=$1 apt=$1/apt package
  mkdir -p "$apt"/{lists,archives}/partial "$part"/{usr/lib,work,control}
  ln -s usr/lib "$part/lib"
  : >"$apt/status"
  echo "deb $(i386_release) main" >"$apt/sources.list"
  i386_apt "$apt" update
  i386_apt "$apt" install -y --download-only $i386_packages
  for package in "$apt"/archives/*.deb; do
    dpkg-deb --fsys-tarfile "$package" |
      tar -x -C "$part" --keep-directory-symlink --exclude=./{etc,var,usr/bin,usr/sbin,usr/share}
  done
  # Wine's libraries are whole when their package has made one of them out of another package's.
  dpkg-deb --control "$apt"/archives/libwine_*.deb "$part/control"
  laid_over "lowerdir=/usr,upperdir=$part/usr,workdir=$part/work" sh "$part/control/postinst" configure
  rm -rf "$apt" "$part"/{work,control}
}

# make_i386: makes the folder when it is not ready, which takes some 15 seconds. Says nothing but the
# reason why this machine cannot make or use it.
make_i386() (
  ((EUID == 0)) || { echo "needs root"; return 1; }
  mkdir -p "$repo/build"
  laid_over "lowerdir=$repo/build:/usr" true 2>/dev/null || { echo "mounts are not allowed here"; return 1; }
  exec 9>"$i386_root.lock"
  flock 9
  i386_ready && return
  local part=$i386_root.part
  rm -rf --one-file-system "$i386_root" "$part"
  bash -euo pipefail -c 'source "$0/common.sh"; source "$0/i386.sh"; unpack_i386 "$1"' "$bench_source/lib" "$part" \
    >"$part.log" 2>&1 || { echo "$(tail -n 1 "$part.log") ($part.log)"; return 1; }
  echo "$i386_packages" >"$part/made-with"
  mv "$part" "$i386_root"
)

# in_i386 COMMAND...: runs a command, with a display, where Wine is a 32-bit one.
in_i386() {
  BENCH_KEEP_DISPLAY=${DISPLAY:+yes} need_display
  trap stop_display EXIT
  ARCH=x86 WINEARCH=win32 BENCH_PROGRAMS=built E2E_BENCH=$bench_build/e2e-x86 laid_over "lowerdir=$i386_root/usr:/usr" "$@"
}
