#!/bin/bash
# The example that publishes a page, against a real server: publish_test.sh EXAMPLE PYFTPD
set -euo pipefail
example=$1 server=$2
folder=$(mktemp -d)
trap 'exec {in}>&- 2> /dev/null || true; rm -rf "$folder"' EXIT
mkdir "$folder/remote" "$folder/remote/pictures" "$folder/local"
for name in one two "with blank"; do printf 'GIF89a %s' "$name" > "$folder/local/$name.gif"; done
printf '<P>Text <IMG src="file://%s/one.gif"><IMG src="file://%s/two.gif"><IMG src="file://%s/with%%20blank.gif"></P>' \
  "$folder/local" "$folder/local" "$folder/local" > "$folder/local/page.html"

coproc SERVER { exec /usr/bin/python3 "$server" "$folder/remote"; }
# shellcheck disable=SC2034 # read in the trap
exec {in}>&"${SERVER[1]}"
read -r -t 20 port <&"${SERVER[0]}"

PUBLISH_PASSWORD=secret "$example" "$folder/local/page.html" "ftp://127.0.0.1:$port" ada /pictures \
  https://example.org/pictures > "$folder/said" 2>&1 || { cat "$folder/said"; exit 1; }
! grep -q secret "$folder/said" || { echo "the password is in the output"; exit 1; }
for name in one two "with blank"; do cmp "$folder/local/$name.gif" "$folder/remote/pictures/$name.gif"; done
grep -q 'src="https://example.org/pictures/one.gif"' "$folder/remote/pictures/index.html"
grep -q 'src="https://example.org/pictures/with blank.gif"' "$folder/remote/pictures/index.html"
! grep -q file: "$folder/remote/pictures/index.html"
