#!/usr/bin/env bash
# The Windows and the Linux program over copies of one Windows installation: the same compiler, the same results.
# wine_prefix_test.sh GORBEX.EXE GORBEX COMPILER.EXE STOREFRONT
# Copies the installation that WINEPREFIX names, in which nothing may run.
set -euo pipefail
windows=$1 linux=$(realpath "$2") compiler=$3 storefront=$4
root=$(cd "$(dirname "$0")/../.." && pwd)

. "$(dirname "$0")/checks.sh"
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
tell() { # tell STATUS NAME ARGUMENTS...: what is said is kept under the name
  local name=$2
  expect "$1" gorbex "${@:3}"
  cp "$scratch/out" "$(said "$name")"
  cp "$scratch/err" "$(said "$name.err")"
}
bpf='C:\Storefront\Storefront.bpf'

prepare() {
  # The system's own files are many, and nobody changes them.
  mkdir -p "$drive"
  cp -al "$base/drive_c/windows" "$drive"
  tar -C "$base" -c --exclude ./drive_c/windows . | tar -C "$WINEPREFIX" -x
  # The folder of the logs is found under any spelling, but made under different ones.
  mkdir -p "$drive/Compiler" "$drive/Program Files/GorbexBuilder/Logs"
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
  tell 0 "$1.show" show "$bpf" --json
  tell 0 "$1.references" references "$bpf" 'C:\Storefront\Till\StoreTill.vbp' --json
}

run() {
  local till='C:\Storefront\Till\StoreTill.vbp'
  show before
  tell 0 first build "$bpf" --json --script 'C:\Storefront\r.svb'
  show first
  registered first.reg
  tell 0 broken build "$bpf" --break-compat --change-refs --json
  grep -lF '{7D0F5010-' "$product"/*/*.vbp && fail "$side: the old identity is still referred to"
  show broken
  registered broken.reg
  tell 0 unregister unregister 'C:\Storefront\Bin\StoreMoney.dll'
  show unregistered
  tell 1 refused register 'C:\Storefront\Bin\StoreTill.exe'
  tell 0 register register 'C:\Storefront\Bin\StoreMoney.dll'
  show registered
  sed -i 's/^End Function\r$/Next\r/' "$product"/Pricing/PriceList.cls
  tell 1 failed build "$bpf" --change-refs --json
  tell 0 version build "$bpf" "$till" --version 2.1.30 --yes --json
  tell 0 value value get "$till" RevisionVer
  tell 0 settings settings --json
  registered last.reg
}

for name in windows linux; do
  choose "$name"
  prepare
  run
  end_wine "$WINEPREFIX"
done

# Times and durations differ, nothing else does; the line ends of standard output are the system's own.
plain() { sed -E -i 's/"(start|seconds)":[0-9.e-]+/"\1":TIME/g; s/[0-9]{1,2}[:.][0-9]{2}([:.][0-9]{2})?/TIME/g' "$@"; }
sed -i 's/\r$//' "$scratch"/said/windows/*
sed -i '/): error: /d' "$scratch"/said/*/*  # paths as the host's other programs know them
plain "$scratch"/said/*/* "$scratch"/{windows,linux}/drive_c/"Program Files"/GorbexBuilder/Logs/*.log
diff -r "$scratch/said/windows" "$scratch/said/linux" || fail "the programs say different things"
diff -r "$scratch/windows/drive_c/Storefront" "$scratch/linux/drive_c/Storefront" || fail "the files differ"
diff -r -x '*.lock' -x gorbexbuilder.built "$scratch"/{windows,linux}/drive_c/"Program Files"/GorbexBuilder || fail "the logs differ"
grep -q invalidreference "$scratch/said/linux/registered.show" && fail "a reference points at a ghost"
grep -q 'StoreMoney.dll' "$scratch/said/linux/last.reg" || fail "nothing is registered"

# What one program has built is up to date for the other, over the same prefix.
# It is a fresh copy: the runs above have broken compatibility, so that each build makes another identity.
choose linux
rm -rf "$product"
cp -r "$storefront" "$product"
chmod -R u+w "$product"
counts() { tail -1 "$scratch/out" | tr -d '\r' | sed 's/ in .*//'; }
outdated() { # outdated PROGRAM COUNTS
  if [ "$1" = linux ]; then side=linux; else side=windows; fi
  expect 0 gorbex build "$bpf" --outdated --yes
  [ "$(counts)" = "$2" ] || fail "$1: expected $2, but $(counts): $(cat "$scratch/out")"
}
expect 0 gorbex build "$bpf" --yes
end_wine "$WINEPREFIX"
outdated windows "0 built, 10 up to date"
printf "' a remark\r\n" >>"$product/Core/Guard.cls"
outdated windows "1 built, 9 up to date"
end_wine "$WINEPREFIX"
outdated linux "0 built, 10 up to date"
echo "one installation, two programs: all the same"
