#!/bin/bash
# Loads every HTML file under a folder, reads it back and loads it again: the tree must stay the same. Files whose
# tree HTML text can't hold are named with the reason.
#
#   tests/scripts/reload_folder.sh [--sample N] [FOLDER]
#
# FOLDER is /usr/share/doc if none is given, where each folder is a package. With --sample only N files are
# taken, as many packages as can be first. Where there are fewer than 200 files it says so and ends.
# RELOAD_FILES names the program that does the work, if it isn't in build/release.
set -euo pipefail

sample=
if [ "${1:-}" = --sample ]; then
  sample=$2
  shift 2
fi
folder=$(readlink -f "${1:-/usr/share/doc}")
program=${RELOAD_FILES:-$(dirname "$(readlink -f "$0")")/../../build/release/bin/reload_files}
wanted=200

# The n-th file of each package before the n+1st of any. Packages share folders by links: each file counts once.
files=$(find "$folder" -type f \( -iname '*.html' -o -iname '*.htm' -o -iname '*.xhtml' \) | sort |
  awk -F/ -v depth="$(tr -cd / <<< "$folder" | wc -c)" '{ print ++count[$(depth + 2)] "\t" $0 }' |
  sort -s -n -k1,1 | cut -f2-)
found=$(grep -c . <<< "$files" || true)
if [ "$found" -lt "$wanted" ]; then
  echo "SKIPPED: $found HTML files under $folder, and $wanted are wanted"
  exit 0
fi
[ -z "$sample" ] || files=$(head -n "$sample" <<< "$files" || true)

results=$("$program" <<< "$files") && status=0 || status=$?
grep -v '^same ' <<< "$results" || true
same=$(grep -c '^same ' <<< "$results" || true)
packages=$(sed "s|^$folder/||; s|/.*||" <<< "$files" | sort -u | wc -l)
inexpressible=$(grep -c '^inexpressible ' <<< "$results" || true)
echo "$same of $(wc -l <<< "$files") files from $packages packages under $folder give the same tree again," \
  "$inexpressible can't be expressed in HTML"
exit "$status"
