#!/bin/bash
# Draws a form in Qt Designer as its user does: takes the editor from the widget box, gives it a property, and saves.
# What uic makes of it is compiled: on_a_screen.sh draw_a_form.sh PREFIX PLUGINS FOLDER
set -euo pipefail
prefix=$1 folder=$3
tests=$(dirname "$(readlink -f "$0")")
rm -rf "$folder"
mkdir -p "$folder/home"
export HOME=$folder/home XDG_CONFIG_HOME=$folder/home QT_PLUGIN_PATH=$2
form=$folder/letter.ui
cp "$tests/empty.ui" "$form"

# Until a command succeeds, for half a minute.
wait_until() {
  for _ in $(seq 150); do
    if "$@" > /dev/null 2>&1; then return; fi
    sleep 0.2
  done
  echo "not in time: $*"
  cat "$folder/designer.log"
  exit 1
}

/usr/lib/qt6/bin/designer "$form" > "$folder/designer.log" 2>&1 &
designer=$!
trap 'kill $designer 2> /dev/null || true' EXIT
wait_until xdotool search --onlyvisible --name '^Qt Designer$'
sleep 3

saved() {
  xdotool key ctrl+s
  sleep 0.5
  grep -q "$1" "$form"
}
type_into() { xdotool mousemove "$1" "$2" click --repeat 3 1 type "$3"; sleep 1; }

# The box on the left shows the editor alone; from there it is drawn into the form.
type_into 120 110 HTMLedWidget
xdotool mousemove 100 155 mousedown 1
for step in $(seq 8); do
  xdotool mousemove $((100 + step * 25)) $((155 + step * 2))
  sleep 0.1
done
sleep 0.5
xdotool mouseup 1
wait_until saved 'widget class="tvx::qt::HTMLedWidget" name="editor"'

# Its properties are below on the right: a text, and a switch.
type_into 1060 368 FTPHost
xdotool mousemove 1200 453 click 1
sleep 0.5
xdotool type files.example.org
xdotool key Return
type_into 1060 368 showDOMToolbar
xdotool mousemove 1050 453 click 1 # the row
sleep 1
xdotool click 1 # and the switch in it
sleep 0.5
wait_until saved showDOMToolbar
if [ -n "${PICTURE:-}" ]; then # for the documentation
  type_into 1060 368 show
  import -window root "$PICTURE"
fi

status=0
has() { grep -q "$1" <(tr -d '\n' < "$form") || { echo "not in the form: $1"; status=1; }; }
has '<property name="FTPHost" stdset="0"> *<string notr="true">files.example.org</string>'
has '<property name="showDOMToolbar" stdset="0"> *<bool>false</bool>'
has '<header>tvx/htmled_widget.h</header>'
grep -q libtvxhtml-designer "/proc/$designer/maps" || { echo "the plugin isn't loaded"; status=1; }
# Each engine is a process of its own.
engines=$(pgrep -P "$designer" || true)
[ -z "$engines" ] || { echo "there is an engine: $(ps -o args= -p "$engines")"; status=1; }

cd "$folder"
/usr/lib/qt6/libexec/uic letter.ui -o ui_letter.h
printf '#include "ui_letter.h"\nint main() { Ui::Letter form; (void)form; }\n' > letter.cpp
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
# shellcheck disable=SC2046 # words
c++ -std=c++20 -fPIC -fsyntax-only letter.cpp $(pkg-config --cflags tvxhtml-widget) || { echo "what uic made isn't compiled"; status=1; }
[ $status -eq 0 ] || cat "$form"
exit $status
