#!/usr/bin/env bash
# The Windows and the Linux program over copies of one Windows installation: the same compiler, the same results.
# wine_prefix_test.sh GORBEX.EXE GORBEX COMPILER.EXE STOREFRONT
# Copies the installation that WINEPREFIX names, in which nothing may run.
set -euo pipefail
windows=$1 linux=$(realpath "$2") compiler=$3 storefront=$4
root=$(cd "$(dirname "$0")/../.." && pwd)

scratch=$(mktemp -d)
base=$WINEPREFIX
export STANDIN_COMPILER_SEED=1 WINEDEBUG=-all LC_ALL=C.UTF-8
# Where only one half of Wine is installed, it has no command in the path.
mkdir "$scratch/bin"
printf '#!/bin/sh\nexec "%s/cmake/run-under-wine" "$@"\n' "$root" >"$scratch/bin/wine"
printf '#!/bin/sh\nexec /usr/lib/wine/wineserver64 "$@"\n' >"$scratch/bin/wineserver"
chmod +x "$scratch/bin/"*
export PATH=$scratch/bin:$PATH
end_wine() { WINEPREFIX=$1 wineserver -k || true; }
end() {
  for side in windows linux; do end_wine "$scratch/$side"; done
  rm -rf "$scratch"
}
trap end EXIT

fail() { echo "FAILED: $1" >&2; exit 1; }
said() { mkdir -p "$scratch/said/$side"; echo "$scratch/said/$side/$1"; }

# One side: where it lives, and how its program is run.
choose() {
  side=$1
  export WINEPREFIX=$scratch/$side
  drive=$WINEPREFIX/drive_c
  product=$drive/Storefront
}
gorbex() {
  if [ "$side" = linux ]; then "$linux" "$@"; else wine 'C:\Program Files\GorbexBuilder\gorbex.exe' "$@"; fi
}
expect() { # expect STATUS NAME ARGUMENTS...: what is said goes to the file NAME
  local wanted=$1 out status=0
  out=$(said "$2")
  shift 2
  gorbex "$@" >"$out" 2>"$out.err" || status=$?
  [ "$status" = "$wanted" ] || { cat "$out" "$out.err"; fail "$side: $* ended with $status"; }
}
bpf='C:\Storefront\Storefront.bpf'
path() { # a path as the side's user types it
  if [ "$side" = linux ]; then sed "s|\\\\|/|g; s|^C:|$drive|" <<<"$1"; else echo "$1"; fi
}

prepare() {
  # The system's own files are many, and nobody changes them.
  mkdir -p "$drive"
  cp -al "$base/drive_c/windows" "$drive"
  tar -C "$base" -c --exclude ./drive_c/windows . | tar -C "$WINEPREFIX" -x
  mkdir -p "$drive/Compiler" "$drive/Program Files/GorbexBuilder"
  cp "$compiler" "$drive/Compiler/standin-compiler.exe"
  cp "$windows" "$drive/Program Files/GorbexBuilder/gorbex.exe"
  cp -r "$storefront" "$product"
  chmod -R u+w "$product"
  wine 'C:\Compiler\standin-compiler.exe' /regserver
}

# What the registry holds of the components, from Wine itself.
registered() {
  wine regedit /E - 'HKEY_LOCAL_MACHINE\Software\Classes' | iconv -f UTF-16 -t UTF-8 | tr -d '\r' |
    awk -v RS= '/Storefront/ || /\\Store[A-Z][A-Za-z.]*[\\\]]/ { print $0 "\n" }' >"$(said "$1")"
}
show() {
  expect 0 "$1.show" show "$(path "$bpf")" --json
  expect 0 "$1.references" references "$(path "$bpf")" "$(path 'C:\Storefront\Till\StoreTill.vbp')" --json
}

run() {
  local till='C:\Storefront\Till\StoreTill.vbp'
  show before
  expect 0 first build "$(path "$bpf")" --json --script "$(path 'C:\Storefront\r.svb')"
  show first
  registered first.reg
  expect 0 broken build "$(path "$bpf")" --break-compat --change-refs --json
  grep -lF '{7D0F5010-' "$product"/*/*.vbp && fail "$side: the old identity is still referred to"
  show broken
  registered broken.reg
  expect 0 unregister unregister "$(path 'C:\Storefront\Bin\StoreMoney.dll')"
  show unregistered
  expect 1 refused register "$(path 'C:\Storefront\Bin\StoreTill.exe')"
  expect 0 register register "$(path 'C:\Storefront\Bin\StoreMoney.dll')"
  show registered
  sed -i 's/^End Function\r$/Next\r/' "$product"/Pricing/PriceList.cls
  expect 1 failed build "$(path "$bpf")" --change-refs --json
  expect 0 version build "$(path "$bpf")" "$(path "$till")" --version 2.1.30 --yes --json
  expect 0 value value get "$(path "$till")" RevisionVer
  expect 0 settings settings --json
  registered last.reg
}

for name in windows linux; do
  choose "$name"
  prepare
  run
  end_wine "$WINEPREFIX"
done

# Times and durations differ, nothing else does; the line ends of standard output are the system's own.
plain() { sed -E -i 's/[0-9]{1,2}[:.][0-9]{2}([:.][0-9]{2})?/TIME/g' "$@"; }
sed -i 's/\r$//' "$scratch"/said/windows/*
plain "$scratch"/said/*/* "$scratch"/{windows,linux}/drive_c/"Program Files"/GorbexBuilder/logs/*.log
diff -r "$scratch/said/windows" "$scratch/said/linux" || fail "the programs say different things"
diff -r "$scratch/windows/drive_c/Storefront" "$scratch/linux/drive_c/Storefront" || fail "the files differ"
diff -r -x '*.lock' "$scratch"/{windows,linux}/drive_c/"Program Files"/GorbexBuilder || fail "the logs differ"
grep -q invalidreference "$scratch/said/linux/registered.show" && fail "a reference points at a ghost"
grep -q 'StoreMoney.dll' "$scratch/said/linux/last.reg" || fail "nothing is registered"
echo "one installation, two programs: all the same"
