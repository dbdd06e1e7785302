# Shared by the scripts of this folder: where things are, and what a Debian machine needs.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc)

build_packages="g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libwxgtk3.2-dev libvmime-dev libxxhash-dev pkgconf"
screen_packages="xvfb openbox xdotool"
package_packages="dpkg-dev file systemd"
bench_packages="make gnuplot-nox python3"
test_packages="libgtest-dev git python3 rsync valgrind dovecot-imapd openssl libxml2-utils binutils-mingw-w64-i686
  binutils-mingw-w64-x86-64 mingw-w64-tools $screen_packages"
clang_packages="clang-16 libclang-rt-16-dev clang-tidy-16 clang-format-14"

say() { printf '\n== %s\n' "$1"; }

# Runs a command as root.
as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "this wants root, and there is no sudo: $*" >&2
    return 1
  fi
}

# Installs the packages that are not there yet.
need() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}\n' "$package" 2>/dev/null | grep -q '^install ok installed$' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "Installing ${missing[*]}"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" >/dev/null
}

# Configures and builds a preset: build PRESET [target...]
build() {
  local preset=$1
  shift
  say "Building ($preset)"
  (cd "$root" && cmake --preset "$preset" >/dev/null)
  cmake --build "$root/out/$preset" -j "$jobs" ${@:+--target "$@"}
}
