# What the tests of the programs share: a scratch folder, and checks that end a test.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() { echo "FAILED: $1" >&2; exit 1; }
expect() { # expect STATUS COMMAND...: what it says goes to the files out and err
  local wanted=$1 status=0
  shift
  "$@" >"$scratch/out" 2>"$scratch/err" || status=$?
  [ "$status" = "$wanted" ] || { cat "$scratch/out" "$scratch/err"; fail "$* ended with $status"; }
}
holds() { # holds TEXT [FILE...]: in the files, or in what the last command said
  local text=$1
  shift
  [ $# -gt 0 ] || set -- "$scratch/out" "$scratch/err"
  grep -qF -- "$text" "$@" || { cat "$@"; fail "no '$text' in $*"; }
}
