#!/usr/bin/env bash
# The source-control commands over real git repositories: source_control_test.sh GORBEX STOREFRONT
set -euo pipefail
. "$(dirname "$0")/checks.sh"
gorbex=$1 storefront=$2

export GORBEX_PREFIX=$scratch/prefix HOME=$scratch GIT_CONFIG_NOSYSTEM=1
export GIT_AUTHOR_NAME=a GIT_AUTHOR_EMAIL=a@b GIT_COMMITTER_NAME=a GIT_COMMITTER_EMAIL=a@b
drive=$GORBEX_PREFIX/drive_c
bpf=$drive/Storefront/Storefront.bpf

# "$/" is the top of the working tree, here the whole drive.
git init -q --bare -b main "$scratch/remote.git"
git clone -q "$scratch/remote.git" "$scratch/other" 2>/dev/null
cp -r "$storefront" "$scratch/other/Storefront"
git -C "$scratch/other" add -A
git -C "$scratch/other" commit -qm first
git -C "$scratch/other" push -q origin HEAD:main
mkdir -p "$GORBEX_PREFIX"
git clone -q "$scratch/remote.git" "$drive"
printf '[git]\r\nworktree=C:\\\r\n' >"$drive/vss.ini"

expect 2 "$gorbex" get "$bpf" --no
holds "no initialisation file is known"
expect 2 "$gorbex" get "$bpf" --ini "$drive/none.ini" --no
holds "could not be opened"
expect 0 "$gorbex" changes "$bpf" --ini "$drive/vss.ini" --no
[ ! -s "$scratch/out" ] || fail "nothing has changed"

echo "' changed" >>"$scratch/other/Storefront/Core/modErrors.bas"
git -C "$scratch/other" commit -qam second
git -C "$scratch/other" push -q origin HEAD:main
expect 0 "$gorbex" changes "$bpf" --ini "$drive/vss.ini" --no
holds 'C:\Storefront\Core\StoreCore.vbp'
expect 0 "$gorbex" get "$bpf" --ini "$drive/vss.ini" --no
grep -q "' changed" "$drive/Storefront/Core/modErrors.bas" || fail "nothing was got"

# A change in the way fails the get, names the file and stays.
echo "' mine" >>"$drive/Storefront/Core/modErrors.bas"
echo "' theirs" >>"$scratch/other/Storefront/Core/modErrors.bas"
git -C "$scratch/other" commit -qam third
git -C "$scratch/other" push -q origin HEAD:main
expect 1 "$gorbex" get "$bpf" "$drive/Storefront/Core/StoreCore.vbp" --ini "$drive/vss.ini" --json --no
holds 'Storefront/Core/modErrors.bas'
grep -q "' mine" "$drive/Storefront/Core/modErrors.bas" || fail "a local change was lost"

expect 0 "$gorbex" label "$bpf" v1 -m 'the first' --spec '$/Storefront/Core' --ini "$drive/vss.ini" --no
[ "$(git -C "$scratch/remote.git" tag -l --format='%(refname:short) %(contents:subject)')" = "v1 the first" ] ||
  fail "the label is not in the remote"
expect 2 "$gorbex" label "$bpf" v2 -m '' --ini "$drive/vss.ini" --no
holds "a label needs a text and a comment"
printf 'MSSCCPRJ.SCC\r\n[StoreCore.vbp]\r\nSCC_Project_Name = "$/Nowhere", ABCD\r\n' >"$drive/Storefront/Core/mssccprj.scc"
expect 1 "$gorbex" changes "$bpf" --ini "$drive/vss.ini" --no
holds 'StoreCore.vbp: not compared: $/Nowhere is not in the database'
git -C "$drive" checkout -q Storefront/Core/mssccprj.scc
expect 1 "$gorbex" label "$bpf" v1 -m again --spec '$/Storefront/Core' --ini "$drive/vss.ini" --no
holds "Failed to label : fatal: tag 'v1' already exists(0)"

# Told to end during a push, it ends the push and takes the label back.
printf '#!/bin/sh\ntouch "%s/pushing"\nsleep 60\n' "$scratch" >"$drive/.git/hooks/pre-push"
chmod +x "$drive/.git/hooks/pre-push"
"$gorbex" label "$bpf" v3 -m stopped --spec '$/Storefront/Core' --ini "$drive/vss.ini" --no >"$scratch/out" 2>"$scratch/err" &
for ((wait = 0; wait < 300; wait++)); do [ -e "$scratch/pushing" ] && break || sleep 0.1; done
[ -e "$scratch/pushing" ] || fail "the push never began"
begun=$SECONDS status=0
kill -TERM $!
wait $! || status=$?
[ "$status" = 1 ] || fail "told to end it ended with $status"
holds "Ended on request"
[ $((SECONDS - begun)) -lt 30 ] || fail "it waited for the push"
[ -z "$(git -C "$drive" tag -l v3)" ] || fail "the label was left behind"
