#!/usr/bin/env bash
# The source-control commands over real git repositories: source_control_test.sh GORBEX STOREFRONT
set -euo pipefail
. "$(dirname "$0")/checks.sh"
gorbex=$1 storefront=$2

export GORBEX_PREFIX=$scratch/prefix HOME=$scratch GIT_CONFIG_NOSYSTEM=1
export GIT_AUTHOR_NAME=a GIT_AUTHOR_EMAIL=a@b GIT_COMMITTER_NAME=a GIT_COMMITTER_EMAIL=a@b
drive=$GORBEX_PREFIX/drive_c
product=$drive/Storefront
bpf=$product/Storefront.bpf

# "$/" is the top of the working tree.
git init -q --bare -b main "$scratch/remote.git"
git clone -q "$scratch/remote.git" "$scratch/other" 2>/dev/null
cp -r "$storefront/." "$scratch/other"
git -C "$scratch/other" add -A
git -C "$scratch/other" commit -qm first
git -C "$scratch/other" push -q origin HEAD:main
mkdir -p "$drive"
git clone -q "$scratch/remote.git" "$product"
printf '[git]\r\nworktree=%s\r\n' "$product" >"$drive/vss.ini"

expect 2 "$gorbex" get "$bpf" --ini "$drive/none.ini" --no
holds "no such initialisation file"
expect 2 "$gorbex" build "$bpf" --all --get --no
holds "no initialisation file is known"
expect 0 "$gorbex" changes "$bpf" --ini "$drive/vss.ini" --no
[ ! -s "$scratch/out" ] || fail "nothing has changed"

echo "' changed" >>"$scratch/other/Core/modErrors.bas"
git -C "$scratch/other" commit -qam second
git -C "$scratch/other" push -q origin HEAD:main
expect 0 "$gorbex" changes "$bpf" --ini "$drive/vss.ini" --no
holds 'C:\Storefront\Core\StoreCore.vbp'
expect 0 "$gorbex" get "$bpf" --ini "$drive/vss.ini" --no
grep -q "' changed" "$product/Core/modErrors.bas" || fail "nothing was got"

expect 0 "$gorbex" label "$bpf" v1 -m 'the first' --spec '$/Core' --ini "$drive/vss.ini" --no
[ "$(git -C "$scratch/remote.git" tag -l --format='%(refname:short) %(contents:subject)')" = "v1 the first" ] ||
  fail "the label is not in the remote"
printf 'MSSCCPRJ.SCC\r\n[StoreCore.vbp]\r\nSCC_Project_Name = "$/Nowhere", ABCD\r\n' >"$product/Core/mssccprj.scc"
expect 1 "$gorbex" changes "$bpf" --ini "$drive/vss.ini" --no
holds 'StoreCore.vbp: not compared: $/Nowhere is not in the database'
expect 1 "$gorbex" get "$bpf" --no
holds "There is no item '\$/Nowhere' in the database"
holds 'StoreTill.vbp: not under source control'
git -C "$product" checkout -q Core/mssccprj.scc

# Told to end during a push, it ends the push and takes the label back.
printf '#!/bin/sh\necho $$ >"%s/pushing"\nsleep 60\n' "$scratch" >"$product/.git/hooks/pre-push"
chmod +x "$product/.git/hooks/pre-push"
"$gorbex" label "$bpf" v3 -m stopped --spec '$/Core' --ini "$drive/vss.ini" --no >"$scratch/out" 2>"$scratch/err" &
for ((wait = 0; wait < 300; wait++)); do [ -e "$scratch/pushing" ] && break || sleep 0.1; done
[ -e "$scratch/pushing" ] || fail "the push never began"
begun=$SECONDS status=0
kill -TERM $!
wait $! || status=$?
[ "$status" = 1 ] || fail "told to end it ended with $status"
holds "Ended on request"
[ $((SECONDS - begun)) -lt 30 ] || fail "it waited for the push"
[ -z "$(git -C "$product" tag -l v3)" ] || fail "the label was left behind"
gone() { # gone PROCESS NAME; one that only waits for its parent to notice is gone
  for ((wait = 0; wait < 50; wait++)); do
    grep -qs '^State:.[^ZX]' "/proc/$1/status" || return 0
    sleep 0.1
  done
  fail "$2 was left running"
}
gone "$(cat "$scratch/pushing")" "git's hook"

# Told to end while git waits for its server, in the login (1 call of the server) or for the first project (2), a command ends
# git with its helpers, stubborn ones too, and leaves no lock, and a build has given project files their values back. A second
# signal ends both at once.
cat >"$scratch/server" <<'END'
#!/bin/sh
cd "$(dirname "$0")"
echo >>calls
[ "$(wc -l <calls)" -lt "$(cat hang)" ] || { trap '' TERM; echo $$ >hanging; exec sleep 60; }
exec sh -c "$2"
END
printf '#!/bin/sh\nprintf "Build of X succeeded." >"%s/VBResult.log"\n' "$drive/Program Files/GorbexBuilder" \
  >"$scratch/compiler"
chmod +x "$scratch/server" "$scratch/compiler"
git -C "$product" reset -q --hard
git -C "$product" remote set-url origin "ssh://host$scratch/remote.git"
git -C "$product" config core.sshCommand "$scratch/server"
git -C "$product" config ssh.variant simple

# A run asks the server in its login and for its first project only. One that gets nothing builds what is there, and says so.
echo 9 >"$scratch/hang"
build=("$gorbex" build "$bpf" --all --get --no --compiler "$scratch/compiler")
expect 0 "${build[@]}"
[ "$(wc -l <"$scratch/calls")" = 2 ] || fail "the server was asked $(wc -l <"$scratch/calls") times"
echo "' mine" >>"$product/Core/modErrors.bas"
echo "' theirs" >>"$scratch/other/Core/modErrors.bas"
git -C "$scratch/other" commit -qam fourth
git -C "$scratch/other" push -q origin HEAD:main
expect 1 "${build[@]}" --junit "$scratch/junit.xml"
[ "$(grep -c 'Core/modErrors.bas' "$scratch/out")" = 1 ] || fail "git's words were not told once"
holds 'errors="2"' "$scratch/junit.xml"
git -C "$product" reset -q --hard
mv "$scratch/server" "$scratch/no-server"
expect 1 "${build[@]}" --json
[ "$(grep -o '"got":false' "$scratch/out" | wc -l)" = 2 ] || fail "what was not got is not in the JSON"
[ "$(grep -o '"got":null' "$scratch/out" | wc -l)" = 8 ] || fail "what was not to be got counts as got"
mv "$scratch/no-server" "$scratch/server"
expect 0 "$gorbex" log
holds "Failed to get latest C:\\Storefront\\Core\\StoreCore.vbp code: fatal: cannot run $scratch/server"

printf '#!/bin/sh\nexec cat >"%s/answer"\n' "$scratch" >"$scratch/sendmail"
chmod +x "$scratch/sendmail"
expect 0 "$gorbex" settings MailTransport "sendmail://$scratch/sendmail"
mkdir -p "$scratch"/Maildir/{,.Builder/}{cur,new,tmp}
printf 'From: a@b\r\nSubject: Build Request\r\n\r\nGET,PRO C:\\Storefront\\Core\\StoreCore.vbp,\r\n' \
  >"$scratch/Maildir/.Builder/new/1.host"
for how in "1 TERM get 1" "1 TERM build 1" "2 TERM build 1" "2 INT build 1" "1 TERM serve 0" "1 TERM get 143"; do
  read -r hang signal command ends <<<"$how"
  rm -f "$scratch"/{calls,hanging}
  echo "$hang" >"$scratch/hang"
  options=()
  [ "$command" != serve ] || options=(--once)
  [ "$command" != build ] || options=(--all --get --debug --compiler "$scratch/compiler")
  "$gorbex" "$command" "$bpf" "${options[@]}" --no >"$scratch/out" 2>"$scratch/err" &
  for ((wait = 0; wait < 300; wait++)); do [ -s "$scratch/hanging" ] && break || sleep 0.1; done
  [ -s "$scratch/hanging" ] || { cat "$scratch/out" "$scratch/err"; fail "$how: the server was never asked"; }
  begun=$SECONDS status=0
  kill "-$signal" $!
  [ "$ends" != 143 ] || { sleep 0.3; kill "-$signal" $!; }
  wait $! || status=$?
  [ "$status" = "$ends" ] || { cat "$scratch/out" "$scratch/err"; fail "$how: told to end it ended with $status"; }
  [ $((SECONDS - begun)) -lt 10 ] || fail "$how: it waited for the server"
  gone "$(cat "$scratch/hanging")" "$how: what git had started"
  ! grep -rl --include='*.vbp' 'CodeViewDebugInfo=-1' "$drive" || fail "$how: debug values were left"
  [ -z "$(find "$product/.git" -name '*.lock')" ] || fail "$how: git's lock was left"
done
grep -q '^Subject: .*failed' "$scratch/answer" || fail "the request was not answered"
