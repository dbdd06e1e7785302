#!/usr/bin/env bash
# The real programs on the sample product: storefront_test.sh GORBEX COMPILER STOREFRONT [EMULATOR TRY-COMPONENT]
# With an emulator they are those for Windows, which work in the installation that WINEPREFIX names.
set -euo pipefail
. "$(dirname "$0")/checks.sh"
programs=("$(realpath "$1")" "$(realpath "$2")" "${5:-}") storefront=$3 emulator=${4:-}

bpf='C:\Storefront\Storefront.bpf' money='C:\Storefront\Bin\StoreMoney.dll'
if [ -n "$emulator" ]; then
  drive=$WINEPREFIX/drive_c
  trap 'rm -rf "$scratch" "$drive/GorbexTest" "$drive/Storefront"' EXIT
  rm -rf "$drive/GorbexTest" "$drive/Storefront"
  mkdir "$drive/GorbexTest"
  for program in "${programs[@]}"; do cp "$program" "$drive/GorbexTest"; done
  gorbex() { "$emulator" 'C:\GorbexTest\gorbex.exe' "$@"; }
  compiler() { "$emulator" 'C:\GorbexTest\standin-compiler.exe' "$@"; }
  registered() { # what the registry holds of StoreMoney
    local key
    for key in TypeLib StoreMoney.Amount; do
      "$emulator" regedit /E - "HKEY_CLASSES_ROOT\\$key" 2>/dev/null | iconv -f UTF-16 -t UTF-8 2>/dev/null |
        tr -d '\r' | awk '/^\[/ { on = /7D0F5010-C856-50E3-B5D4-58FFC7A3568E|StoreMoney/ } on' || true
    done
  }
else
  export GORBEX_PREFIX=$scratch/prefix
  drive=$GORBEX_PREFIX/drive_c
  gorbex() { "${programs[0]}" "$@"; }
  compiler() { "${programs[1]}" "$@"; }
  registered() { cat "$GORBEX_PREFIX/gorbexbuilder.reg"; }
fi
product=$drive/Storefront

from_nothing() { # everything builds, a second run with two compilers does it again, and project files stay as they are
  (cd "$product" && find . -name '*.vbp' -exec sha256sum {} + >"$scratch/before")
  for jobs in 1 2; do
    expect 0 gorbex build "$bpf" --json --jobs "$jobs" --script 'C:\Storefront\r.svb' --junit 'C:\Storefront\junit.xml'
    holds '"built":10,"errors":0' "$scratch/out"
    [ "$jobs" = 1 ] && cp "$product/r.svb" "$scratch/script"
  done
  cmp "$product/r.svb" "$scratch/script"
  (cd "$product" && sha256sum -c --quiet "$scratch/before")
  [ "$(grep -c 'RegSvr32 C:\\Storefront\\Bin\\' "$product/r.svb")" = 10 ] || fail "the script's lines"
  if command -v xmllint >/dev/null; then xmllint --noout "$product/junit.xml"; fi
  rm "$product/junit.xml" # a report that cannot be written keeps no other from being
  expect 2 gorbex build "$bpf" --script 'C:\Storefront' --junit 'C:\Storefront\junit.xml'
  [ -s "$product/junit.xml" ] || fail "the second report"
  (cd "$product" && expect 0 gorbex references Storefront.bpf Till/StoreTill.vbp)
  holds "Dependant on other project in group"
}

made_from_a_folder() { # has a build order that works on a machine where nothing is registered
  expect 0 gorbex init "$product" -o "$product/new.bpf" --build-dir 'C:\Storefront\Bin'
  rm "$GORBEX_PREFIX/gorbexbuilder.reg" "$product"/Bin/*.dll "$product"/Bin/*.exe "$product"/Bin/*.ocx
  compiler /regserver
  expect 0 gorbex build "$product/new.bpf" --yes
}

try() { "$emulator" 'C:\GorbexTest\try-component.exe' "$bpf" "$@" | tr -d '\r' >"$scratch/said"; }
real_components() { # their objects have the properties that the sources declare
  local project='C:\Storefront\Money\StoreMoney.vbp'
  try "$project" '(o) StoreMoney.Amount' VALUE 12.5 '(o) StoreMoney.Amount' Value five \
    '(o) StoreMoney.VatRate' Kind 2 '(o) StoreMoney.VatRate' Percent 3 '(o) StoreMoney.VatRate' Made ''
  diff "$scratch/said" - <<'END'
(o) StoreMoney.Amount
(o) StoreMoney.VatRate
show object created StoreMoney.Amount
show property VALUE set to value 12.5
show property VALUE got value 12.5
show object created StoreMoney.Amount
show error Type mismatch: 'Value'
show property Value got value 0
show object created StoreMoney.VatRate
show property Kind set to value 2
show property Kind got value 2
show object created StoreMoney.VatRate
show error Set not supported (read-only property): 'Percent'
show property Percent got value 0
show object created StoreMoney.VatRate
show error Object doesn't support this property or method: 'Made'
END
  try 'C:\Storefront\Core\StoreCore.vbp' '(o) StoreCore.TextFile' Path 'C:\Grüße' '(o) StoreCore.Journal' Folder x
  grep -qx 'show property Path got value C:\\Grüße' "$scratch/said" || fail "a text was lost"
  grep -q "show error .* 'Folder'" "$scratch/said" || fail "a property that can only be set was read"
}

paths_of_windows() { # as users type them: with slashes, with letters beyond ASCII
  cp "$product/Core/StoreCore.vbp" "$product/Core/Süß €.vbp"
  expect 0 gorbex value get 'c:/storefront/CORE/süß €.vbp' ExeName32
  holds StoreCore.dll
  rm "$product/Core/Süß €.vbp"
  mkdir "$product/Ж"
  expect 1 gorbex init "$product" -o "$scratch/named.bpf"
  holds "?: left out: its name holds a character that is not in the system's code page"
  rmdir "$product/Ж"
  expect 2 gorbex show 'C:\Storefront\Ж.bpf'
  holds "Ж.bpf: holds a character that is not in the system's code page, or in no Windows path"
  expect 2 gorbex --prefix x show "$bpf"
  holds "--prefix is for systems other than Windows"
}

registration() { # takes exactly the component's own keys away, and brings back the same ones
  registered >"$scratch/compiled"
  holds StoreMoney.dll "$scratch/compiled"
  expect 0 gorbex unregister "$money"
  [ "$(registered | grep -cE 'StoreMoney|7D0F5010-C856')" = 0 ] || fail "keys were left behind"
  if [ -n "$emulator" ]; then
    try 'C:\Storefront\Money\StoreMoney.vbp' '(o) StoreMoney.Amount' '' ''
    holds "can't create object: 'StoreMoney.Amount': it is not registered" "$scratch/said"
    expect 0 gorbex register 'C:\windows\system32\scrrun.dll'
  else
    expect 0 gorbex unregister "$money"
  fi
  for _ in 1 2; do expect 0 gorbex register "$money"; done
  registered | cmp - "$scratch/compiled" || fail "the keys differ"
  expect 1 gorbex register 'C:\Storefront\Bin\StoreTill.exe'
  holds 'Failed to Register C:\Storefront\Bin\StoreTill.exe'
  expect 2 gorbex register 'C:\Storefront\Bin\none.dll'
}

compatibility() { # broken it changes every identity, and the references of those above follow; kept it changes none
  local old
  expect 0 gorbex build "$bpf" --break-compat --change-refs
  for old in {7D0F5010- {9ED85CCA-; do
    grep -rlF "$old" "$storefront" >/dev/null || fail "no $old to begin with"
    grep -lF "$old" "$product"/*/*.{vbp,bas} && fail "the old identity $old is still referred to"
  done
  expect 0 gorbex show "$bpf" --json
  grep -q invalidreference "$scratch/out" && fail "a reference points at a ghost"
  sed -i 's/^CompatibleMode=.*\r/CompatibleMode="2"\r/' "$product"/*/*.vbp
  (cd "$product" && sha256sum */*.vbp >"$scratch/before")
  registered >"$scratch/compiled"
  expect 0 gorbex build "$bpf" --change-refs
  (cd "$product" && sha256sum -c --quiet "$scratch/before")
  registered | cmp - "$scratch/compiled" || fail "the keys differ"
}

failures() { # a version is stamped; only a broken source fails; a missing compiler is named
  expect 0 gorbex build "$bpf" 'C:\Storefront\Core\StoreCore.vbp' --version 1.2.30 --yes
  expect 0 gorbex value get 'C:\Storefront\Core\StoreCore.vbp' RevisionVer
  holds 30
  sed -i 's/^End Function\r$/Next\r/' "$product"/Pricing/*.cls
  expect 1 gorbex build "$bpf" --yes --junit 'C:\Storefront\junit.xml'
  holds "9 built, 1 failed"
  holds 'message="Compile Error in File' "$product/junit.xml"
  expect 2 gorbex build "$bpf" --yes --compiler 'C:\VB\none.exe'
  holds "none.exe: no such compiler"
  # Without a reader of its lines a run still ends and puts project files back.
  gorbex build "$bpf" --yes --debug 2>&1 | head -1 >"$scratch/out" || true
  [ "$(cat "$product"/*/*.vbp | grep -c CodeViewDebugInfo=0)" = 10 ] || fail "debug values stayed"
}

streams_and_turns() { # lost output is not a success, closed streams do no harm, and runs of one prefix take turns
  local status=0
  gorbex show "$bpf" >/dev/full 2>"$scratch/err" || status=$?
  [ "$status" = 2 ] || fail "lost output ended with $status"
  gorbex build "$bpf" 'C:\Storefront\Core\StoreCore.vbp' --yes <&- >&- 2>&- || fail "closed streams"
  printf '#!/bin/sh\nsleep 0.3\nexec "%s" "$@"\n' "${programs[1]}" >"$scratch/slow"
  chmod +x "$scratch/slow"
  gorbex build "$bpf" 'C:\Storefront\Pricing\StorePricing.vbp' --yes --compiler "$scratch/slow" &>/dev/null &
  sleep 0.1
  expect 0 gorbex build "$bpf" 'C:\Storefront\Core\StoreCore.vbp' --yes --compiler "$scratch/slow"
  ! wait $! || fail "the broken project took the other run's result"
}

compiler /regserver
cp -r "$storefront" "$product"
chmod -R u+w "$product"
from_nothing
if [ -n "$emulator" ]; then real_components; paths_of_windows; else made_from_a_folder; fi
registration
compatibility
if [ -n "$emulator" ]; then
  try 'C:\Storefront\Money\StoreMoney.vbp' '(o) StoreMoney.Amount' Value 7
  holds 'show property Value got value 7' "$scratch/said"
fi
failures
if [ -z "$emulator" ]; then streams_and_turns; fi
echo "storefront: all as expected"
