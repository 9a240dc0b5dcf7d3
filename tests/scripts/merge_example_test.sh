#!/bin/bash
# The example that writes a page for each row of a table: merge_example_test.sh PYTHON MERGE.PY
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
printf '<P>Dear <B>{na</B>me}, you owe {sum}.</P>' > "$work/page.html"
printf 'name,sum\nAnn & Co,$1 000\nZoë,"2,50"\n' > "$work/table.csv"
"$1" "$2" "$work/page.html" "$work/table.csv" "$work/pages"
expect() {
  [ "$(cat "$work/pages/$1.html")" = "$2" ] || { echo "page $1 is: $(cat "$work/pages/$1.html")"; exit 1; }
}
expect 1 '<P>Dear <B>Ann &amp; Co</B>, you owe $1 000.</P>'
expect 2 '<P>Dear <B>Zoë</B>, you owe 2,50.</P>'
[ "$(ls "$work/pages" | wc -l)" -eq 2 ]
