#!/bin/bash
# From the start of htmled to a letter that a person types and sees, on an X server: the program is started with a page, the
# letter pressed as soon as there is a window, until the title says that the page is changed.
#
#   bench/window/start.sh [TIMES [PROGRAM]]
#
# Needs Xvfb, openbox and xdotool. Times are milliseconds on the clock, and of processor time of the program and of the page's
# process until then.
set -euo pipefail
times=${1:-5} program=${2:-build/release/bin/htmled}
folder=$(mktemp -d)
export LANG=C.UTF-8 QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY
exec 4> "$folder/display"
Xvfb -displayfd 4 -screen 0 1100x800x24 2> "$folder/log" &
server=$!
manager='' started=''
trap '[ -z "$started" ] || kill $started; [ -z "$manager" ] || kill $manager; kill $server; rm -rf "$folder"' EXIT
until [ -s "$folder/display" ]; do sleep 0.05; done
DISPLAY=:$(< "$folder/display")
export DISPLAY
openbox >> "$folder/log" 2>&1 &
manager=$!
sleep 1

now() { date +%s%N; }
# Of a process and all that it has started.
processor_time() {
  local all=$1 line
  for line in $(pgrep -P "$1"); do all="$all $line $(pgrep -P "$line" | tr '\n' ' ')"; done
  for line in $all; do cat "/proc/$line/stat" 2> /dev/null || true; done | awk '{ ticks += $14 + $15 } END { print ticks * 10 }'
}

for ((i = 0; i < times; ++i)); do
  export HOME=$folder/home$i  # what isn't saved would be offered at the next start
  mkdir "$HOME"
  printf '<!DOCTYPE html><title>t</title><p>A paragraph.</p>\n' > "$folder/page$i.html"
  since=$(now)
  "$program" --new-window "$folder/page$i.html" 2>> "$folder/log" &
  started=$!
  until window=$(xdotool search --onlyvisible --name "page$i.html" 2>> "$folder/log" | head -1) && [ -n "$window" ]; do :; done
  shown=$(now)
  until xdotool windowfocus --sync "$window" key x 2>> "$folder/log"; do :; done
  until [[ $(xdotool getwindowname "$window" 2>> "$folder/log") == *'*'* ]]; do :; done
  typed=$(now)
  used=$(processor_time $started)
  echo "window after $(((shown - since) / 1000000)), letter in it after $(((typed - since) / 1000000)); processor time $used"
  kill $started
  wait $started 2> /dev/null || true
  started=
done
