#!/bin/bash
# completion_test.sh FILE: what the completion for bash offers, with a program and its languages in a folder.
set -eu
# shellcheck source=/dev/null
source "$1"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder/bin" "$folder/share/tvxhtml/languages" "$folder/pages/letters"
touch "$folder"/share/tvxhtml/languages/{de,en,el}.xml
printf '#!/bin/sh\n' > "$folder/bin/htmled"
chmod +x "$folder/bin/htmled"
touch "$folder/pages/a page.html" "$folder/pages/OLD.HTM" "$folder/pages/picture.png"
cd "$folder/pages"
PATH=$folder/bin:$PATH
set +e  # as in the shell of whoever types
failures=0

# expect OFFERED WORD...: the last word is completed; what is offered is named in its order, with "|" between.
expect() {
  local wanted=$1 offered
  shift
  COMP_WORDS=("$@")
  COMP_CWORD=$(($# - 1))
  local name=_htmled
  [[ $1 == htmled-cli ]] && name=_htmled_cli
  "$name"
  offered=$(printf '%s\n' "${COMPREPLY[@]}" | LC_ALL=C sort | paste -sd '|')
  [[ $offered == "$wanted" ]] && return
  echo "$*: offered \"$offered\" and not \"$wanted\""
  failures=$((failures + 1))
}

expect 'OLD.HTM|a page.html|letters' htmled ''
expect 'a page.html' htmled a
expect '--new-window' htmled --n
expect 'de|el|en' htmled --language ''
expect 'el|en' htmled --language e
expect 'de' htmled --language = d
expect 'de|el|en' htmled --language =
expect 'de|el|en' "$folder/bin/htmled" --language ''
expect 'OLD.HTM|a page.html|letters' htmled --language de ''
expect '' no-such-program --language ''
expect '--reference' htmled-cli --r
expect '' htmled-cli --help --
[[ $(complete -p htmled) == *_htmled* ]] || { echo "htmled isn't completed"; failures=$((failures + 1)); }
exit "$failures"
