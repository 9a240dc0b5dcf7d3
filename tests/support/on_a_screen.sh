#!/bin/bash
# Runs a command on an X screen of its own, with a window manager: on_a_screen.sh COMMAND...
set -euo pipefail
for program in Xvfb openbox xdotool; do
  command -v "$program" > /dev/null || { echo "SKIPPED: there is no $program; scripts/setup installs it"; exit 1; }
done
folder=$(mktemp -d)
started=()
finish() {
  for process in "${started[@]}"; do kill "$process" 2> /dev/null || true; done
  wait 2> /dev/null || true
  rm -rf "$folder"
}
trap finish EXIT
# until_there FILE: 30 seconds at most.
until_there() {
  for _ in $(seq 300); do
    [ ! -s "$1" ] || return 0
    sleep 0.1
  done
  cat "$folder/log" >&2
  return 1
}

export LANG=C.UTF-8 QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1 XDG_RUNTIME_DIR=$folder
unset WAYLAND_DISPLAY
# The server chooses a number that is free.
Xvfb -displayfd 4 -screen 0 1400x900x24 -nolisten tcp -noreset 4> "$folder/display" 2> "$folder/log" &
started+=($!)
until_there "$folder/display" || { echo "there is no screen" >&2; exit 1; }
DISPLAY=:$(cat "$folder/display")
export DISPLAY
# Its own first command: it manages windows by then, and none that comes is passed over.
openbox --sm-disable --startup "sh -c 'echo yes > $folder/managed'" >> "$folder/log" 2>&1 &
started+=($!)
until_there "$folder/managed" || { echo "openbox doesn't manage the screen" >&2; exit 1; }
"$@"
