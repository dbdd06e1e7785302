#!/usr/bin/env bash
# The Windows programs on the sample product: storefront_test.sh GORBEX COMPILER STOREFRONT EMULATOR TRY-COMPONENT
# Works in the Windows installation that WINEPREFIX names.
set -euo pipefail
storefront=$3 emulator=$4

drive=$WINEPREFIX/drive_c
programs=$drive/GorbexTest
product=$drive/Storefront
scratch=$(mktemp -d)
trap 'rm -rf "$scratch" "$programs" "$product"' EXIT
rm -rf "$programs" "$product"
mkdir "$programs"
cp "$1" "$programs/gorbex.exe"
cp "$2" "$programs/standin-compiler.exe"
cp "$5" "$programs/try-component.exe"
cp -r "$storefront" "$product"
chmod -R u+w "$product"
bpf='C:\Storefront\Storefront.bpf'

fail() { echo "FAILED: $1" >&2; exit 1; }
run() { # a program of ours, or a tool of the system
  local program=$1
  shift
  [ ! -f "$programs/$program.exe" ] || program="C:\\GorbexTest\\$program.exe"
  "$emulator" "$program" "$@"
}
expect() { # expect STATUS ARGUMENTS...
  local wanted=$1 status=0
  shift
  run gorbex "$@" >"$scratch/out" 2>"$scratch/err" || status=$?
  [ "$status" = "$wanted" ] || { cat "$scratch/out" "$scratch/err"; fail "$* ended with $status"; }
}
holds() { grep -qF -- "$1" "$2" || { cat "$2"; fail "no '$1' in $2"; }; }

run standin-compiler /regserver

# From nothing: everything builds, a second run builds it again, and project files stay as they are.
(cd "$product" && find . -name '*.vbp' -exec sha256sum {} + >"$scratch/before")
for _ in 1 2; do
  expect 0 build "$bpf" --json --script 'C:\Storefront\r.svb' --junit 'C:\Storefront\junit.xml'
  holds '"built":10,"errors":0' "$scratch/out"
done
(cd "$product" && sha256sum -c --quiet "$scratch/before")
[ "$(grep -c 'RegSvr32 C:\\Storefront\\Bin\\' "$product/r.svb")" = 10 ] || fail "the script's lines"
[ -s "$programs/VBResult.log" ] || fail "the result log is not beside the program"

# Paths as users type them: with slashes, relative to the current folder, with letters beyond ASCII.
(cd "$product" && expect 0 references Storefront.bpf Till/StoreTill.vbp)
holds "Dependant on other project in group" "$scratch/out"
cp "$product/Core/StoreCore.vbp" "$product/Core/Süß €.vbp"
expect 0 value get 'c:/storefront/CORE/süß €.vbp' ExeName32
holds StoreCore.dll "$scratch/out"
expect 2 show 'C:\Storefront\Ж.bpf'
holds 'Ж.bpf: holds a character that no Windows path or no code page can hold' "$scratch/err"
expect 2 --prefix x show "$bpf"
holds "--prefix is for systems other than Windows" "$scratch/err"

# The components are real ones: their objects have the properties that the sources declare.
try() { run try-component "$bpf" "$@" | tr -d '\r' >"$scratch/said"; }
money='C:\Storefront\Money\StoreMoney.vbp'
try "$money" '(o) StoreMoney.Amount' VALUE 12.5 '(o) StoreMoney.Amount' Value five \
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

# They register and unregister themselves with the system's own tool, as the compiler had registered them.
classes() { # what the registry holds of StoreMoney
  local key
  for key in TypeLib StoreMoney.Amount; do
    run regedit /E - "HKEY_CLASSES_ROOT\\$key" 2>/dev/null | iconv -f UTF-16 -t UTF-8 2>/dev/null | tr -d '\r' |
      awk '/^\[/ { on = /7D0F5010-C856-50E3-B5D4-58FFC7A3568E|StoreMoney/ } on' || true
  done
}
classes >"$scratch/compiled"
holds 'StoreMoney.dll' "$scratch/compiled"
expect 0 unregister 'C:\Storefront\Bin\StoreMoney.dll'
[ -z "$(classes)" ] || fail "keys were left behind"
try "$money" '(o) StoreMoney.Amount' '' ''
holds "can't create object: 'StoreMoney.Amount': it is not registered" "$scratch/said"
for _ in 1 2; do expect 0 register 'C:\Storefront\Bin\StoreMoney.dll'; done
classes | diff "$scratch/compiled" - || fail "the keys differ"
expect 0 register 'C:\windows\system32\scrrun.dll'
expect 1 register 'C:\Storefront\Bin\StoreTill.exe'
holds 'Failed to Register C:\Storefront\Bin\StoreTill.exe' "$scratch/err"

# Broken compatibility changes every identity, and the references of those above follow.
expect 0 build "$bpf" --break-compat --change-refs
grep -rlF '{7D0F5010-' "$storefront" >/dev/null || fail "no old identity to begin with"
grep -lF '{7D0F5010-' "$product"/*/*.vbp && fail "the old identity is still referred to"
expect 0 show "$bpf" --json
grep -q invalidreference "$scratch/out" && fail "a reference points at a ghost"
try "$money" '(o) StoreMoney.Amount' Value 7
holds 'show property Value got value 7' "$scratch/said"

# Kept again, a run changes no reference and no identity.
for project in "$product"/*/Store*.vbp; do sed -i 's/^CompatibleMode=.*\r/CompatibleMode="2"\r/' "$project"; done
(cd "$product" && sha256sum */Store*.vbp >"$scratch/before")
classes >"$scratch/compiled"
expect 0 build "$bpf" --change-refs
(cd "$product" && sha256sum -c --quiet "$scratch/before")
classes | diff "$scratch/compiled" - || fail "the keys differ"

# A project whose source is broken fails alone; a compiler that is not there is named.
sed -i 's/^End Function\r$/Next\r/' "$product"/Pricing/*.cls
expect 1 build "$bpf" --yes
holds "9 built, 1 failed" "$scratch/out"
expect 1 build "$bpf" --yes --compiler 'C:\VB\none.exe'
holds none.exe "$scratch/out"

# Without a reader of its lines a run still ends and puts project files back.
run gorbex build "$bpf" --yes --debug 2>&1 | head -1 >"$scratch/out" || true
[ "$(cat "$product"/*/Store*.vbp | grep -c CodeViewDebugInfo=0)" = 10 ] || fail "debug values stayed"
echo "storefront: all as expected"
