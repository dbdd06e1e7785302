#!/usr/bin/env bash
# The real programs on the sample product: storefront_test.sh GORBEX COMPILER STOREFRONT
set -euo pipefail
gorbex=$1 compiler=$2 storefront=$3

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export GORBEX_PREFIX=$scratch/prefix
product=$GORBEX_PREFIX/drive_c/Storefront
bpf=$product/Storefront.bpf

fail() { echo "FAILED: $1" >&2; exit 1; }
expect() { # expect STATUS COMMAND...
  local wanted=$1 status=0
  shift
  "$@" >"$scratch/out" 2>"$scratch/err" || status=$?
  [ "$status" = "$wanted" ] || { cat "$scratch/out" "$scratch/err"; fail "$* ended with $status"; }
}
holds() { grep -qF -- "$1" "$2" || { cat "$2"; fail "no '$1' in $2"; }; }

"$compiler" /regserver
cp -r "$storefront" "$product"
chmod -R u+w "$product"

# From nothing: everything builds, a second run builds it again, and project files stay as they are.
(cd "$product" && find . -name '*.vbp' -exec sha256sum {} + >"$scratch/before")
for run in 1 2; do
  expect 0 "$gorbex" build "$bpf" --json --script "$product/r.svb" --junit "$scratch/junit.xml"
  holds '"built":10,"errors":0' "$scratch/out"
done
(cd "$product" && sha256sum -c --quiet "$scratch/before")
[ "$(grep -c 'RegSvr32 C:\\Storefront\\Bin\\' "$product/r.svb")" = 10 ] || fail "the script's lines"
if command -v xmllint >/dev/null; then xmllint --noout "$scratch/junit.xml"; fi
expect 0 "$gorbex" references "$bpf" "$product/Till/StoreTill.vbp"
holds "Dependant on other project in group" "$scratch/out"

# A group made from the folder has a build order that works on a machine where nothing is registered.
expect 0 "$gorbex" init "$product" -o "$product/new.bpf" --build-dir 'C:\Storefront\Bin'
rm "$GORBEX_PREFIX/gorbexbuilder.reg" "$product"/Bin/*.dll "$product"/Bin/*.exe "$product"/Bin/*.ocx
"$compiler" /regserver
expect 0 "$gorbex" build "$product/new.bpf" --yes

# Unregistering takes exactly the component's own keys away; registering brings back the same ones.
reg=$GORBEX_PREFIX/gorbexbuilder.reg
cp "$reg" "$scratch/registered"
expect 0 "$gorbex" unregister "$product/Bin/StoreMoney.dll"
grep -q 'StoreMoney' "$reg" && fail "keys were left behind"
holds StoreCore "$reg"
expect 0 "$gorbex" unregister "$product/Bin/StoreMoney.dll"
for run in 1 2; do expect 0 "$gorbex" register "$product/Bin/StoreMoney.dll"; done
cmp "$reg" "$scratch/registered" || fail "the keys differ"
expect 1 "$gorbex" register "$product/Bin/StoreTill.exe"
holds "Failed to Register C:\Storefront\Bin\StoreTill.exe" "$scratch/err"
expect 2 "$gorbex" register "$product/Bin/none.dll"

# Broken compatibility changes every identity, and the references of those above follow.
expect 0 "$gorbex" build "$bpf" --break-compat --change-refs
for old in {7D0F5010- {9ED85CCA-; do
  grep -rlF "$old" "$storefront" >/dev/null || fail "no $old to begin with"
  grep -lF "$old" "$product"/*/*.{vbp,bas} && fail "the old identity $old is still referred to"
done
expect 0 "$gorbex" show "$bpf" --json
grep -q invalidreference "$scratch/out" && fail "a reference points at a ghost"

# A version is stamped; a project whose source is broken fails alone.
expect 0 "$gorbex" build "$bpf" "$product/Core/StoreCore.vbp" --version 1.2.30 --yes
expect 0 "$gorbex" value get "$product/Core/StoreCore.vbp" RevisionVer
holds 30 "$scratch/out"
sed -i 's/^End Function\r$/Next\r/' "$product"/Pricing/*.cls
expect 1 "$gorbex" build "$bpf" --yes --junit "$scratch/junit.xml"
holds "9 built, 1 failed" "$scratch/out"
holds 'message="Compile Error in File' "$scratch/junit.xml"

# A compiler that is not there is named, and nothing waits for ever.
expect 1 "$gorbex" build "$bpf" --yes --compiler 'C:\VB\none.exe'
holds "none.exe" "$scratch/out"

# Inputs that are none.
mkdir "$scratch/folder.bpf"
: >"$scratch/empty.bpf"
printf 'breakonerror=perhaps\r\n' >"$scratch/flag.bpf"
expect 2 "$gorbex" show "$scratch/missing.bpf"
holds "missing.bpf: File not found" "$scratch/err"
expect 2 "$gorbex" show "$scratch/folder.bpf"
expect 2 "$gorbex" show "$scratch/flag.bpf"
holds "Error 13" "$scratch/err"
expect 0 "$gorbex" show "$scratch/empty.bpf"
expect 3 "$gorbex" build "$scratch/empty.bpf"
expect 2 "$gorbex"
expect 2 "$gorbex" init "" -o "$scratch/all.bpf"

# A build folder cannot pass further arguments to the compiler.
sed 's|^builddir=.*|builddir=C:\\Bin" /run "C:\\x.vbp\r|' "$bpf" >"$scratch/arguments.bpf"
expect 2 "$gorbex" build "$scratch/arguments.bpf"
holds "no such build folder" "$scratch/err"

# Lost output is no success, a reader that leaves stops no run, closed streams do no harm.
status=0
"$gorbex" show "$bpf" >/dev/full 2>"$scratch/err" || status=$?
[ "$status" = 2 ] || fail "lost output ended with $status"
"$gorbex" build "$bpf" --yes --debug 2>&1 | head -1 >"$scratch/out" || true
[ "$(cat "$product"/*/*.vbp | grep -c CodeViewDebugInfo=0)" = 10 ] || fail "debug values stayed"
"$gorbex" build "$bpf" "$product/Core/StoreCore.vbp" --yes <&- >&- 2>&- || fail "closed streams"

# Runs of one prefix share a result log, so they take turns.
printf '#!/bin/sh\nsleep 0.3\nexec "%s" "$@"\n' "$compiler" >"$scratch/slow"
chmod +x "$scratch/slow"
"$gorbex" build "$bpf" "$product/Pricing/StorePricing.vbp" --yes --compiler "$scratch/slow" &>/dev/null &
sleep 0.1
expect 0 "$gorbex" build "$bpf" "$product/Core/StoreCore.vbp" --yes --compiler "$scratch/slow"
! wait $! || fail "the broken project took the other run's result"
echo "storefront: all as expected"
