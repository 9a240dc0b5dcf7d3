#!/bin/bash
# The Debian packages hold what they should and no file twice, need what they should, run from where they are unpacked,
# and a host's program is built against them: package_test.sh TREE BUILD
set -euo pipefail
tree=$1 build=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0
fail() { echo "$1"; status=1; }

cmake --build "$build" --target tvx_packaged > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
cpack --config "$build/CPackConfig.cmake" -B "$work/packages" > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
package() { echo "$work"/packages/"$1"_*.deb; }
field() { dpkg-deb -f "$(package "$1")" "$2"; }
needs() { [[ "$(field "$1" Depends)" == *"$2"* ]] || fail "$1 doesn't need $2 but $(field "$1" Depends)"; }

needs htmled libqt6webenginewidgets6
needs htmled libqt6webenginecore6-bin
needs libtvxhtml1 libqt6webenginewidgets6
needs libtvxhtml1 libhunspell
needs libtvxhtml-dev "libtvxhtml1 (= $(field libtvxhtml1 Version))"
needs tvxhtml-designer "libtvxhtml1 (= $(field libtvxhtml1 Version))"
needs python3-tvxhtml "libtvxhtml1 (= $(field libtvxhtml1 Version))"
all="htmled libtvxhtml1 libtvxhtml-dev tvxhtml-designer python3-tvxhtml"
[ "$(ls "$work/packages"/*.deb | wc -l)" -eq "$(wc -w <<< "$all")" ] || fail "not $all: $(ls "$work/packages")"

for name in $all; do
  dpkg-deb -c "$(package "$name")" | awk '$1 !~ /^d/ { print $6 }' >> "$work/files"
  dpkg-deb -x "$(package "$name")" "$work/root"
done
twice=$(sort "$work/files" | uniq -d)
[ -z "$twice" ] || fail "in two packages: $twice"
for file in bin/htmled bin/htmled-cli share/tvxhtml/languages share/tvxhtml/templates/letter.html share/tvxhtml/tour.html lib/libtvxhtml-core.so.1 lib/libtvxhtml-widget.so.1 lib/libtvxHTML.so.1 \
  lib/tvxhtml/window.so lib/libtvxHTML.so share/tvxHTML/classes include/tvx/tvxhtml.h lib/python3/dist-packages/tvxhtml/__init__.pyi \
  include/tvx/htmled_widget.h lib/libtvxhtml-widget.so lib/pkgconfig/tvxhtml-widget.pc share/doc/libtvxhtml1/copyright \
  "lib/$(c++ -print-multiarch)/qt6/plugins/designer/libtvxhtml-designer.so"; do
  [ -e "$work/root/usr/$file" ] || fail "in no package: $file"
done

"$tree/scripts/check-links" "$work/root/usr/share/tvxhtml/handbook" || fail "the handbook is installed without all of its pages and pictures"

QT_QPA_PLATFORM=offscreen "$work/root/usr/bin/htmled" --version | grep -q '^htmled ' || fail "htmled doesn't run"
# Who has libtvxhtml-dev alone has no headers of what the library is made with.
for name in tvxhtml-core tvxHTML; do
  PKG_CONFIG_LIBDIR=$work/root/usr/lib/pkgconfig pkg-config --cflags --libs $name > /dev/null || fail "pkg-config wants more for $name"
done
export PKG_CONFIG_PATH=$work/root/usr/lib/pkgconfig
# shellcheck disable=SC2046 # words
c++ -std=c++20 "$tree/tests/install/consumer/core.cpp" -o "$work/program" $(pkg-config --cflags --libs tvxhtml-core)
LD_LIBRARY_PATH=$work/root/usr/lib "$work/program" || fail "a host's program doesn't run"

cc -std=c99 "$tree/tests/install/consumer/c_by_name.c" -o "$work/by-name" -I"$work/root/usr/include" -ldl
XDG_DATA_HOME=$work/nobody XDG_DATA_DIRS=$work/root/usr/share QT_QPA_PLATFORM=offscreen "$work/by-name" > "$work/log" 2>&1 ||
  { cat "$work/log"; fail "a program in C doesn't find the class by its name"; }

export XDG_DATA_DIRS=$work/root/usr/share PYTHONPATH=$work/root/usr/lib/python3/dist-packages PYTHONDONTWRITEBYTECODE=1
/usr/bin/python3 -c 'import tvxhtml; print(tvxhtml.HTMLed(FTPPort=7).FTPPort)' | grep -qx 7 || fail "the Python module finds no library"

if command -v lintian > /dev/null; then
  lintian --fail-on error --tag-display-limit 0 "$work"/packages/*.deb > "$work/log" 2>&1 || { grep '^E:' "$work/log"; status=1; }
elif [ $status -eq 0 ]; then
  echo "SKIPPED: there is no lintian; scripts/setup --check installs it"
fi
exit $status
