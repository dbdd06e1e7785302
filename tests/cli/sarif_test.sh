#!/usr/bin/env bash
# The findings of checks as the validator of that format sees them: sarif_test.sh GORBEX STOREFRONT
# Needs npm; without it the test is skipped.
set -euo pipefail
gorbex=$(realpath "$1") storefront=$2

. "$(dirname "$0")/checks.sh"
command -v npm >/dev/null || { echo "skipped: no npm"; exit 77; }
(cd "$scratch" && npm pack @microsoft/sarif-multitool-linux@5.7.0 >npm.log 2>&1 && tar xzf microsoft-*.tgz) ||
  { cat "$scratch/npm.log"; echo "skipped: the validator cannot be fetched"; exit 77; }
chmod +x "$scratch/package/Sarif.Multitool"
export DOTNET_SYSTEM_GLOBALIZATION_INVARIANT=1
validate() { expect 0 "$scratch/package/Sarif.Multitool" validate "$1"; }

# Findings with and without a line, and a path that has to be escaped.
mkdir -p "$scratch/prefix"
cp -r "$storefront" "$scratch/Geld & Größe"
rm "$scratch/Geld & Größe/Core/"*.cls
printf 'Type=Exe\nForm=None.frm\n' >"$scratch/Geld & Größe/Lines.vbp"
expect 1 "$gorbex" --prefix "$scratch/prefix" check "$scratch/Geld & Größe" --sarif "$scratch/found.sarif"
validate "$scratch/found.sarif"
holds "1 files scanned"
! grep "error" "$scratch/out" || fail "the validator refuses the findings"

sed 's/"ruleId"/"rule"/; s/"message"/"words"/' "$scratch/found.sarif" >"$scratch/wrong.sarif"
validate "$scratch/wrong.sarif"
holds ": error "
