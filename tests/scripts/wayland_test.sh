#!/bin/bash
# htmled under Wayland, with no X server anywhere: it opens a page, takes what is typed, opens a menu by its key, and
# saves by that menu's.
#
#   tests/scripts/wayland_test.sh HTMLED
set -euo pipefail
htmled=$1
for tool in sway swaymsg wtype; do
  command -v $tool > /dev/null || { echo "SKIPPED: needs $tool: scripts/setup --developer installs it"; exit 0; }
done
export LANG=C.UTF-8
folder=$(mktemp -d)
pids=()
end() {
  for pid in "${pids[@]}"; do kill "$pid" 2> /dev/null || true; done
  wait 2> /dev/null || true
  rm -rf "$folder"
}
trap end EXIT
fail() { echo "$1"; tail -20 "$folder"/*.log; exit 1; }
# Until a command succeeds; a loaded machine gets a minute.
within_a_minute() {
  for _ in $(seq 240); do
    "$@" > /dev/null 2>&1 && return
    sleep 0.25
  done
  return 1
}

mkdir -m 700 "$folder/run" "$folder/home"
echo 'default_border none' > "$folder/sway.conf"
# The compositor doesn't run as root.
as_somebody=()
if [ "$(id -u)" = 0 ]; then
  chmod 755 "$folder"
  chown nobody "$folder/run" "$folder/home"
  as_somebody=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
fi
unset DISPLAY
export XDG_RUNTIME_DIR=$folder/run
env HOME="$folder/home" WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1 \
  "${as_somebody[@]}" sway -c "$folder/sway.conf" > "$folder/sway.log" 2>&1 &
pids+=($!)
within_a_minute compgen -G "$folder/run/sway-ipc*" || fail "the compositor doesn't start"
WAYLAND_DISPLAY=$(cd "$XDG_RUNTIME_DIR" && compgen -G 'wayland-?' | head -1)
SWAYSOCK=$(compgen -G "$folder/run/sway-ipc*" | head -1)
export WAYLAND_DISPLAY SWAYSOCK

printf '<!DOCTYPE html>\n<title>t</title>\n<p>page</p>\n' > "$folder/page.html"
env QT_QPA_PLATFORM=wayland XDG_CONFIG_HOME="$folder/config" XDG_STATE_HOME="$folder/state" \
  "$htmled" --new-window --language en "$folder/page.html" > "$folder/htmled.log" 2>&1 &
pids+=($!)
title_is() { swaymsg -t get_tree | grep -qF "\"name\": \"$1 – HTMLed\""; }
within_a_minute title_is page.html || fail "no window appears"
# The window's title comes before its caret. The keyboard is there as long as wtype runs: it waits first.
typed() { wtype -s 1500 "typed " -s 500; within_a_minute title_is 'page.html*'; }
sleep 2
typed || fail "what is typed doesn't arrive"
wtype -s 1500 -M alt -s 200 -k f -s 200 -m alt -s 2000 -k s -s 1000
within_a_minute grep -q 'typed ' "$folder/page.html" || fail "the menu doesn't open, or doesn't save"
within_a_minute title_is page.html || fail "the window still has a changed document"
echo "opened, typed, and saved by a menu"
