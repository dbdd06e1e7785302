#!/usr/bin/env bash
# The sample product built by a pipeline, four jobs at once, each on what counts as a machine for itself:
# pipeline_test.sh GORBEX COMPILER STOREFRONT
# Binaries, script and report are those of one machine. Needs npm; without it the test is skipped.
set -euo pipefail
gorbex=$(realpath "$1") compiler=$(realpath "$2") storefront=$3

. "$(dirname "$0")/checks.sh"
end() { rm -rf "$scratch"; }
trap end EXIT
command -v npm >/dev/null && command -v rsync >/dev/null || { echo "skipped: no npm or no rsync"; exit 77; }
export STANDIN_COMPILER_SEED=1

# The runner's own engine of regular expressions takes minutes to compile; the language's does here.
mkdir -p "$scratch/runner/re2"
echo 'module.exports = RegExp;' >"$scratch/runner/re2/index.js"
echo '{"name":"re2","version":"1.99.0","main":"index.js"}' >"$scratch/runner/re2/package.json"
echo '{"dependencies":{"gitlab-ci-local":"4.60.1"},"overrides":{"re2":"file:./re2"}}' >"$scratch/runner/package.json"
(cd "$scratch/runner" && npm install --ignore-scripts --no-fund --no-audit >npm.log 2>&1) ||
  { cat "$scratch/runner/npm.log"; echo "skipped: the runner cannot be installed"; exit 77; }

# One machine: a prefix whose C:\Storefront is the folder given.
machine() { # machine PREFIX FOLDER
  mkdir -p "$1/drive_c"
  ln -s "$2" "$1/drive_c/Storefront"
  GORBEX_PREFIX=$1 "$compiler" /regserver
}
cp -r "$storefront" "$scratch/one"
touch "$scratch/one/Bin/.keep"
cp -r "$scratch/one" "$scratch/repository"
machine "$scratch/prefix" "$scratch/one"
file='C:\Storefront\Storefront.bpf'
GORBEX_PREFIX=$scratch/prefix expect 0 "$gorbex" build "$file" --yes --script "$scratch/one.svb" --junit "$scratch/one.xml"

cat >"$scratch/before" <<END
export PATH=$(dirname "$gorbex"):\$PATH STANDIN_COMPILER_SEED=1 GORBEX_PREFIX=\$(mktemp -d $scratch/machine.XXXXXX)
mkdir -p "\$GORBEX_PREFIX/drive_c"
ln -s "\$PWD" "\$GORBEX_PREFIX/drive_c/Storefront"
"$compiler" /regserver
END
cd "$scratch/repository"
mkdir -p "$scratch/desk/drive_c"
ln -s "$PWD" "$scratch/desk/drive_c/Storefront"
GORBEX_PREFIX=$scratch/desk expect 0 "$gorbex" pipeline 'C:\Storefront\Storefront.bpf' --gitlab \
  --before "$scratch/before" -o "$PWD/.gitlab-ci.yml"
git init -q .
git config user.email builder@dev.example
git config user.name Builder
git remote add origin git@dev.example:team/storefront.git
git add -A
git commit -q -m "Begin"
"$scratch/runner/node_modules/.bin/gitlab-ci-local" --shell-isolation --concurrency 4 >"$scratch/run.log" 2>&1 ||
  { cat "$scratch/run.log"; fail "the pipeline failed"; }

for binary in "$scratch"/one/Bin/*.*; do
  [ "$(basename "$binary")" = .keep ] || cmp "$binary" "Bin/$(basename "$binary")" || fail "$binary differs"
done
cmp register.svb "$scratch/one.svb" || fail "the scripts differ"
plain() { sed -E 's/time="[^"]*"/time=""/g' "$1"; }
diff <(plain report.xml) <(plain "$scratch/one.xml") || fail "the reports differ"
echo "pipeline: all as expected"
