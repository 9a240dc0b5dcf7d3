#!/bin/bash
# From the start of htmled to a letter that a person types and sees, on an X server: the program is started with a page, the
# letter pressed as soon as there is a window, until the title says that the page is changed. Turn about with a bare window of
# the same toolkit with one editable page, which is what the engine takes by itself: the ratio holds on any machine.
#
#   bench/window/start.sh [TIMES [PROGRAM]]
#
# Needs Xvfb, openbox and xdotool. Times are milliseconds on the clock, and of processor time of the program and of the page's
# process until then. In the end the medians.
set -euo pipefail
times=${1:-5} program=${2:-build/release/bin/htmled} bare=build/release/bin/bare_page
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
title() { xdotool getwindowname "$1" 2>> "$folder/log" || true; }

# start NAME PRESSES WINDOW COMMAND...: one start of a program whose window's title has WINDOW in it. PRESSES: once, or again
# and again, where what is pressed too early is lost.
start() {
  local name=$1 presses=$2 wanted=$3 since shown typed used window
  shift 3
  HOME=$(mktemp -d -p "$folder")  # what isn't saved would be offered at the next start
  export HOME
  since=$(now)
  "$@" 2>> "$folder/log" &
  started=$!
  until window=$(xdotool search --onlyvisible --name "$wanted" 2>> "$folder/log" | head -1) && [ -n "$window" ]; do :; done
  shown=$(now)
  until xdotool windowfocus --sync "$window" key x 2>> "$folder/log"; do :; done
  until [[ $(title "$window") == *'*'* ]]; do
    [ "$presses" = once ] || xdotool key x
  done
  typed=$(now)
  used=$(processor_time $started)
  echo "$name: window after $(((shown - since) / 1000000)), letter in it after $(((typed - since) / 1000000)); processor time $used"
  echo "$(((typed - since) / 1000000)) $used" >> "$folder/$name"
  kill $started
  wait $started 2> /dev/null || true
  started=
}
median() { cut -d ' ' -f "$2" "$folder/$1" | sort -n | awk '{ all[NR] = $1 } END { print all[int((NR + 1) / 2)] }'; }

printf '<!DOCTYPE html><title>bare</title><body contenteditable><p>A paragraph.</p><script>%s</script>\n' \
  'document.body.focus(); addEventListener("input", () => { document.title = "bare *"; });' > "$folder/bare.html"
for ((i = 0; i < times; ++i)); do
  printf '<!DOCTYPE html><title>t</title><p>A paragraph.</p>\n' > "$folder/page$i.html"
  start htmled once "page$i.html" "$program" --new-window "$folder/page$i.html"
  [ ! -x "$bare" ] || start bare again bare "$bare" "$folder/bare.html"
done
echo "htmled: $(median htmled 1) ms, processor time $(median htmled 2)"
[ ! -x "$bare" ] || echo "bare: $(median bare 1) ms, processor time $(median bare 2)"
