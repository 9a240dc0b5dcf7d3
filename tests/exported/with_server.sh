#!/bin/bash
# Runs a program beside a server that has two files and a folder: with_server.sh PYFTPD PROGRAM...
set -euo pipefail
server=$1
shift
folder=$(mktemp -d)
trap 'exec {in}>&- 2> /dev/null || true; rm -rf "$folder"' EXIT
mkdir "$folder/pictures"
printf '<P>page</P>' > "$folder/page.html"
printf 'text' > "$folder/notes.txt"
touch -d '2020-02-03 12:00' "$folder/page.html"
coproc SERVER { exec /usr/bin/python3 "$server" "$folder"; }
# shellcheck disable=SC2034 # read in the trap
exec {in}>&"${SERVER[1]}"
read -r -t 20 port <&"${SERVER[0]}"
TVX_SERVER=ftp://127.0.0.1:$port "$@"
