#!/bin/bash
# What htmled is known by on a desktop is well formed, and its man pages and its completion name the options that the
# programs have, no more and no fewer.
#
#   tests/scripts/desktop_test.sh TREE HTMLED HTMLED_CLI
set -euo pipefail
desktop=$1/apps/htmled/desktop htmled=$2 cli=$3
status=0
fail() { echo "$1"; status=1; }

desktop-file-validate "$desktop"/*.desktop || fail "the desktop entry isn't valid"
appstreamcli validate --no-net --no-color "$desktop"/*.metainfo.xml || fail "the catalogue data aren't valid"
# With the address of the pictures it has screenshots, each of them a picture that there is.
with_pictures=$(mktemp --suffix=.metainfo.xml)
trap 'rm -f "$with_pictures"' EXIT
cmake -DFROM="$desktop/org.tvxhtml.htmled.metainfo.xml" -DTO="$with_pictures" -DADDRESS=https://example.org/images \
  -P "$desktop/metainfo.cmake"
appstreamcli validate --no-net --no-color "$with_pictures" || fail "the catalogue data with screenshots aren't valid"
pictures=$(grep -oP '(?<=https://example.org/images/)[^<]+' "$with_pictures") || fail "there are no screenshots"
for picture in $pictures; do
  [ -f "$1/docs/images/$picture" ] || fail "$picture isn't there"
done
for page in htmled htmled-cli; do
  found=$(mandoc -Tlint -W warning "$desktop/$page.1") || true
  [ -z "$found" ] || fail "$found"
done

# Options as a program's help has them, in its man page, and as the completion offers them.
options() { grep -oE -- '--[a-z]+(-[a-z]+)*' | sort -u | tr '\n' ' '; }
told() { "$@" --help | grep -E '^ *(-[a-z], )?--|^usage:' | options; }
written() { sed -nE 's/^\.It.* Fl -([a-z]+(-[a-z]+)*).*/--\1/p' "$desktop/$1.1" | options; }
offered() {
  bash -c 'source "$1"; COMP_WORDS=("$2" --); COMP_CWORD=1; "$3"; printf "%s\n" "${COMPREPLY[@]}"' \
    completion "$desktop/htmled.bash" "$1" "$2" | options
}
same() { [ "$2" = "$3" ] || fail "$1: $2 and $3"; }
known=$(QT_QPA_PLATFORM=offscreen told "$htmled" | sed 's/--help-all //')
same "htmled's options and its man page" "$known" "$(written htmled)"
same "htmled's options and its completion" "$known" "$(offered htmled _htmled)"
known=$(told "$cli")
same "htmled-cli's options and its man page" "$known" "$(written htmled-cli)"
same "htmled-cli's options and its completion" "$known" "$(offered htmled-cli _htmled_cli)"

# The languages that the completion offers are those that there are.
there=$(cd "$1/languages" && ls *.xml | sed 's/\.xml$//' | sort | tr '\n' ' ')
offered=$(bash -c 'source "$1"; COMP_WORDS=("$2" --language ""); COMP_CWORD=2; _htmled; printf "%s\n" "${COMPREPLY[@]}"' \
  completion "$desktop/htmled.bash" "$htmled" | sort | tr '\n' ' ')
same "the languages and the completion" "$there" "$offered"
exit $status
