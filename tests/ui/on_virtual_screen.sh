#!/usr/bin/env bash
# Runs a program on a separate screen that nobody sees: on_virtual_screen.sh PROGRAM [ARGUMENT...]
# SCREEN sets its size and depth, as Xvfb takes it.
set -euo pipefail

folder=$(mktemp -d)
screen= manager=
stop() {
  for process in $manager $screen; do kill "$process" 2>/dev/null || true; done
  rm -rf "$folder"
}
trap stop EXIT

mkfifo "$folder/display"
Xvfb -displayfd 3 -screen 0 "${SCREEN:-1400x1000x24}" -nolisten tcp 3>"$folder/display" 2>/dev/null &
screen=$!
read -r number <"$folder/display"
export DISPLAY=:$number GDK_BACKEND=x11 NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory
openbox >/dev/null 2>&1 &
manager=$!
"$@"
