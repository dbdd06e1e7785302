#!/usr/bin/env bash
# The examples of the help and the shells' completion: examples_test.sh GORBEX COMPILER STOREFRONT
set -euo pipefail
. "$(dirname "$0")/checks.sh"
program=$(realpath "$1") compiler=$(realpath "$2") documents=$(realpath "$(dirname "$0")/../../docs")
gorbex() { "$program" "$@"; }

export GORBEX_PREFIX=$scratch/prefix HOME=$scratch GIT_CONFIG_NOSYSTEM=1
export GIT_AUTHOR_NAME=a GIT_AUTHOR_EMAIL=a@b GIT_COMMITTER_NAME=a GIT_COMMITTER_EMAIL=a@b
"$compiler" /regserver
git init -q --bare -b main "$scratch/remote.git"
git clone -q "$scratch/remote.git" "$GORBEX_PREFIX/drive_c/Storefront" 2>/dev/null
cp -r "$3/." "$GORBEX_PREFIX/drive_c/Storefront"
cd "$GORBEX_PREFIX/drive_c/Storefront"
chmod -R u+w .
git add -A
git commit -qm first
git push -q origin HEAD:main
printf '[git]\r\nworktree=%s\r\n' "$PWD" >vss.ini
(umask 077; mkdir -p ~/Maildir/{cur,new,tmp} ~/Maildir/.Builder/{cur,new,tmp})

commands() { gorbex "$@" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'; }
try_example() { # of the help of a command; it works as it is written
  local example
  example=$(gorbex "$@" --help | tail -1)
  case $example in
    "Example: gorbex $*"*) eval "expect 0 ${example#Example: }" </dev/null ;;
    *) fail "the help of '$*' ends with '$example'" ;;
  esac
}
for command in build $(commands | grep -vx build); do
  try_example "$command"
  for below in $(commands "$command"); do try_example "$command" "$below"; done
done

# The pattern that the documents give editors finds the place of a failure.
sed -i 's/^End Function\r$/Next\r/' Pricing/Discount.cls
expect 1 gorbex build Storefront.bpf --json --junit junit.xml --no
place='Pricing/Discount.cls(21): error: Next without For'
holds "$place" "$scratch/err"
holds '"failure":{"file":"C:\\Storefront\\Pricing\\Discount.cls","line":21,"text":"Next without For"}' "$scratch/out"
holds 'C:\Storefront\Pricing\Discount.cls(21): error: Next without For' junit.xml
python3 - "$documents/editors.md" "$scratch/err" <<'END'
import json, re, sys
page, said = (open(name, encoding="utf-8").read() for name in sys.argv[1:])
task = json.loads(re.search(r"```json\n(.*?)```", page, re.S)[1])["tasks"][0]
pattern = task["problemMatcher"][0]["pattern"]
found = [(m[pattern["file"]], m[pattern["line"]], m[pattern["message"]])
         for m in re.finditer(pattern["regexp"], said, re.M)]
assert found == [("Pricing/Discount.cls", "21", "Next without For")], found
END

offers() { # offers WORDS...: the last one is being typed
  bash -c '. <(printf %s "$1"); shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _gorbex; printf "%s " "${COMPREPLY[@]}"' \
    bash "$(gorbex completion bash)" gorbex "$@"
}
check_offer() { # check_offer EXPECTED WORDS...
  local expected=$1 offered
  shift
  offered=$(offers "$@")
  [ "$offered" = "$expected" ] || fail "'$*' is completed by '$offered'"
}
check_offer "$(commands | tr '\n' ' ')" ''
check_offer 'get set ' value ''
check_offer 'Till/StoreTill.vbp ' queue Storefront.bpf mark Till/StoreT
check_offer 'bash zsh ' completion ''
check_offer '--json --jobs --junit ' build Storefront.bpf --j
check_offer 'Storefront.bpf ' show Storefr
check_offer 'Bin ' init . --build-dir B
check_offer 'vss.ini ' get --ini vs
check_offer ' ' build --version ''
check_offer 'circle ' check --only cir
check_offer 'Jobs ' settings Jo
if command -v zsh >/dev/null; then zsh -n <(gorbex completion zsh); fi
echo "examples and completion: all as expected"
