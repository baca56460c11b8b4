# Sourced by run, test and bench/run: installs the Debian packages that are missing, configures and builds.

build_packages=(g++ cmake ninja-build ccache qt6-base-dev libpng-dev libxml2-dev fonts-dejavu-core shared-mime-info)
test_packages=(libgtest-dev libgmock-dev findutils coreutils e2fsprogs mount ntfs-3g)
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
  "${as_root[@]}" apt-get update -q
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build_preset PRESET [TARGET...]: configures when needed and builds.
build_preset() {
  local preset=$1
  shift
  export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros
  if [ ! -f "build/$preset/build.ninja" ]; then cmake --preset "$preset" >&2 || exit 1; fi
  cmake --build --preset "$preset" ${1:+--target "$@"}
}
