#!/bin/bash
# ./run says what is wrong before it installs or builds anything.
set -uo pipefail
root=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1

answer=$("$root/run" none.html 2>&1)
status=$?
[ "$status" = 2 ] && [ "$answer" = "./run: there is no file $folder/none.html" ] || { echo "$status: $answer"; exit 1; }

answer=$("$root/run" a.html b.html 2>&1)
status=$?
[ "$status" = 2 ] && [ "$answer" = "usage: ./run [FILE]" ] || { echo "$status: $answer"; exit 1; }
