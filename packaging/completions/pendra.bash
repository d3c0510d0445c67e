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
    --document)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -X '!*.pdr' -- "$current")
      return
      ;;
    --by)
      mapfile -t COMPREPLY < <(compgen -W 'customer job service day' -- "$current")
      return
      ;;
    --from | --to | --customer)
      return
      ;;
    --tour)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -d -- "$current")
      return
      ;;
  esac
  local options='--appearance --in-panel --quick-entry --stop-all --new --tour --version --help' commands='status log report start stop add export backup send'
  case ${COMP_WORDS[1]} in
    log) options='--json --document --from --to --customer --unsent' ;;
    report) options='--json --document --from --to --by' ;;
    add) options='--json --document --create' ;;
    status | start | stop | export | backup | send) options='--json --document' ;;
  esac
  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    return
  fi
  if ((COMP_CWORD > 1)); then
    case ${COMP_WORDS[1]} in
      status | log | report | start | stop | add | send) return ;;
    esac
    commands=
  fi
  compopt -o filenames
  mapfile -t COMPREPLY < <(
    compgen -W "$commands" -- "$current"
    compgen -d -- "$current"
    compgen -f -X '!*.@(pdr|pdrbackup)' -- "$current"
  )
} && complete -F _pendra pendra
