#!/bin/bash
# Runs a command on an X screen of its own, with a window manager: on_a_screen.sh COMMAND...
set -euo pipefail
folder=$(mktemp -d)
started=()
finish() {
  for process in "${started[@]}"; do kill "$process" 2> /dev/null || true; done
  wait 2> /dev/null || true
  rm -rf "$folder"
}
trap finish EXIT

export LANG=C.UTF-8 QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1 XDG_RUNTIME_DIR=$folder
unset WAYLAND_DISPLAY
# The server chooses a number that is free.
Xvfb -displayfd 4 -screen 0 1400x900x24 -nolisten tcp 4> "$folder/display" 2> /dev/null &
started+=($!)
for _ in $(seq 150); do
  [ ! -s "$folder/display" ] || break
  sleep 0.2
done
[ -s "$folder/display" ] || { echo "there is no screen" >&2; exit 1; }
DISPLAY=:$(cat "$folder/display")
export DISPLAY
openbox > /dev/null 2>&1 &
started+=($!)
sleep 1
"$@"
