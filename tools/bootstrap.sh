# Sourced by run, test and bench/run: installs the Debian packages that are missing, configures and builds.

build_packages=(g++ cmake ninja-build ccache qt6-base-dev libpng-dev libxcb1-dev libxml2-dev fonts-dejavu-core shared-mime-info)
test_packages=(libgtest-dev libgmock-dev findutils coreutils e2fsprogs mount ntfs-3g dbus-daemon python3-jsonschema xfsprogs btrfs-progs)
windows_packages=(g++ ccache g++-mingw-w64-x86-64-posix libz-mingw-w64-dev cmake ninja-build dpkg-dev qt6-base-dev libpng-dev googletest wine64 fonts-wine locales xvfb xauth x11-utils zip unzip)

die() {
  printf '%s\n' "$*" >&2
  exit 1
}

# Installs what is missing of the given packages; asks nothing and does nothing when all are there.
need_packages() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || die "These packages are missing and there is no sudo to install them: ${missing[*]}"
    as_root=(sudo)
  fi
  printf 'Installing: %s\n' "${missing[*]}"
  apt_get update -q
  apt_get install -q -y --no-install-recommends "${missing[@]}"
}

# apt-get, in the name of need_packages. Another program may hold the package manager's lock, as a fresh machine's own
# update service does for its first minutes: waits for it, up to five minutes.
apt_get() {
  local deadline=$((SECONDS + ${TALLYSCOPE_LOCK_SECONDS:-300})) told= status
  local errors
  errors=$(mktemp)
  while :; do
    status=0
    "${as_root[@]}" env LC_ALL=C DEBIAN_FRONTEND=noninteractive apt-get "$@" 2>"$errors" || status=$?
    grep -q '^E: .*\(Could not get lock\|Unable to lock\|Unable to acquire\)' "$errors" && [ "$status" -ne 0 ] && [ $SECONDS -lt $deadline ] || break
    [ -n "$told" ] || printf 'Another program is installing packages; waiting for it, up to five minutes.\n'
    told=yes
    sleep 2
  done
  cat "$errors" >&2
  rm -f "$errors"
  return "$status"
}

# run_tests PRESET: runs every test of the build and prints what was skipped, with the reason, and the count of all.
run_tests() {
  local status=0
  ctest --preset "$1" --no-tests=error -j "$(nproc)" || status=$?
  tools/test-summary "$1" || status=1
  return "$status"
}

# build_preset PRESET [TARGET...]: configures when needed and builds.
build_preset() {
  local preset=$1
  shift
  export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros
  if [ ! -f "build/$preset/build.ninja" ]; then cmake --preset "$preset" >&2 || exit 1; fi
  cmake --build --preset "$preset" ${1:+--target "$@"}
}
