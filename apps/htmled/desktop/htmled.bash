# Completion of htmled and htmled-cli for bash.

# The languages that the program has files for, beside it or where an installation has put them.
_htmled_languages() {
  local program place file
  program=$(type -P -- "${1/#\~/$HOME}") || return
  program=$(readlink -f -- "$program")
  for place in languages ../share/tvxhtml/languages; do
    for file in "${program%/*}/$place"/*.xml; do
      file=${file##*/}
      [[ $file == '*.xml' ]] || printf '%s\n' "${file%.xml}"
    done
  done
}

_htmled() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  # The shell takes "--language=de" for three words.
  if [[ $word == = ]]; then
    word=
  elif [[ $before == = ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  if [[ $before == --language ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_htmled_languages "${COMP_WORDS[0]}")" -- "$word")
    return
  fi
  case $word in
    -*) mapfile -t COMPREPLY < <(compgen -W "--automation --help --language --new-window --version" -- "$word") ;;
    *)
      compopt -o filenames 2> /dev/null
      mapfile -t COMPREPLY < <(
        compgen -d -- "$word"
        compgen -f -- "$word" | grep -iE '\.(html?|xhtml|xht)$'
      ) ;;
  esac
}

_htmled_cli() {
  COMPREPLY=()
  # One option is all it takes.
  ((COMP_CWORD == 1)) || return
  mapfile -t COMPREPLY < <(compgen -W "--help --reference --version" -- "${COMP_WORDS[COMP_CWORD]}")
}

complete -F _htmled htmled
complete -F _htmled_cli htmled-cli
