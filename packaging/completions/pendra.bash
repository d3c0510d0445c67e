# Completion of pendra(1) for bash.                                                  -*- shell-script -*-

_pendra() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  case $previous in
    --appearance)
      mapfile -t COMPREPLY < <(compgen -W 'light dark' -- "$current")
      return
      ;;
    --new)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
    --tour)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      return
      ;;
  esac
  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W '--appearance --new --tour --version --help' -- "$current")
    return
  fi
  compopt -o filenames
  mapfile -t COMPREPLY < <(
    compgen -d -- "$current"
    compgen -f -X '!*.@(pdr|pdrbackup)' -- "$current"
  )
} && complete -F _pendra pendra
