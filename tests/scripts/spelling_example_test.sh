#!/bin/bash
# The example that checks the spelling of a page: spelling_example_test.sh CHECK.PY HTMLED_CLI
set -euo pipefail
check=$1 program=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export XDG_DATA_HOME=$folder LC_ALL=C.UTF-8
unset DICPATH
printf '%s' '<html lang=en><body><p>The wrold is round, dont you think?</p><p lang=de>Das ist ein Sazt.</p>' \
  '<p lang=fr>Une langauge étrangère.</p><p>qqqqzzzzxxxx</p></body></html>' > "$folder/page.html"

status=0
python3 "$check" "$program" "$folder/page.html" "$folder/mended.html" > "$folder/said" || status=$?
fail() { echo "$1"; cat "$folder/said" "$folder/mended.html"; exit 1; }
[ "$status" = 1 ] || fail "it ended with $status"
grep -q '^wrold is now world: The wrold is round, dont you think?$' "$folder/said" || fail "wrold"
grep -q '^Sazt is now Satz: Das ist ein Sazt\.$' "$folder/said" || fail "Sazt"
grep -q "^langauge is now langage: " "$folder/said" || fail "langauge"
grep -q '^qqqqzzzzxxxx stays: ' "$folder/said" || fail "a word without suggestions"
grep -q 'The world is round' "$folder/mended.html" || fail "the page isn't mended"
grep -q 'ein Satz' "$folder/mended.html" || fail "the German isn't mended"

printf '<html lang=en><body><p>All is well.</p></body></html>' > "$folder/page.html"
python3 "$check" "$program" "$folder/page.html" "$folder/mended.html" > "$folder/said" || fail "a right page"
[ ! -s "$folder/said" ] || fail "nothing was wrong"
