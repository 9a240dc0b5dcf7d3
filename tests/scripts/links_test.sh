#!/bin/bash
# All links and pictures of the project's documents lead somewhere, and one that doesn't would be found: links_test.sh TREE
set -euo pipefail
check=$1/scripts/check-links
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0
fail() { echo "$1"; status=1; }

cat > "$work/page.md" << 'PAGE'
# A page, of "ours"
[there](page.md), [a heading](#a-page-of-ours), [the web](https://example.org/none.md), `[code](code.md)`
```
[code](block.md)
```
[gone](gone.md) and ![a picture](gone.png) on a line, [no heading](page.md#none)
PAGE
found=$("$check" "$work") && fail "dead links aren't an error"
for target in gone.md gone.png none; do grep -q "$target\$" <<< "$found" || fail "not found: $target"; done
[ "$(wc -l <<< "$found")" -eq 3 ] || fail "found what isn't dead: $found"
"$check" "$work/nothing" > /dev/null 2>&1 && fail "no pages at all aren't an error"

"$check" || status=1
exit $status
