#!/bin/bash
# Runs a program on a screen of its own, with a window manager: on_screen.sh PROGRAM...
set -uo pipefail
for need in Xvfb openbox xdotool; do
  command -v "$need" > /dev/null || { echo "SKIPPED: there is no $need"; exit 0; }
done
folder=$(mktemp -d)
mkfifo "$folder/display"
Xvfb -displayfd 3 -screen 0 1200x900x24 -nolisten tcp -noreset 3> "$folder/display" 2> "$folder/xvfb.log" &
screen=$!
trap 'kill "${manager:-}" "$screen" 2> /dev/null; wait; rm -rf "$folder"' EXIT
read -r number < "$folder/display"
export DISPLAY=:$number
# The platform that the other tests ask for has no screen.
unset QT_QPA_PLATFORM WAYLAND_DISPLAY
# Its own first command: it manages windows by then, and none that comes is passed over.
openbox --sm-disable --startup "touch $folder/managed" > "$folder/openbox.log" 2>&1 &
manager=$!
for _ in $(seq 300); do
  [ -e "$folder/managed" ] && break
  sleep 0.1
done
[ -e "$folder/managed" ] || { cat "$folder/openbox.log"; echo "openbox doesn't manage the screen"; exit 1; }
"$@"
