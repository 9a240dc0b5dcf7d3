# Completion of htmled and htmled-cli for bash.

_htmled() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  case $before in
    --language)
      mapfile -t COMPREPLY < <(compgen -W "ar de en es fr ja" -- "$word")
      return ;;
  esac
  case $word in
    -*) mapfile -t COMPREPLY < <(compgen -W "--automation --help --language --new-window --version" -- "$word") ;;
    *)
      compopt -o filenames 2> /dev/null
      mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.@(htm|html|xhtml|xht)' -- "$word") ;;
  esac
}

_htmled_cli() {
  mapfile -t COMPREPLY < <(compgen -W "--help --reference --version" -- "${COMP_WORDS[COMP_CWORD]}")
}

complete -F _htmled htmled
complete -F _htmled_cli htmled-cli
