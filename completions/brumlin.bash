# Completion of the command line of brumlin for bash. To be sourced, or put where bash-completion
# looks for the file of a command: /usr/share/bash-completion/completions/brumlin.
# shellcheck shell=bash

_brumlin() {
  local word="${COMP_WORDS[COMP_CWORD]}" previous="${COMP_WORDS[COMP_CWORD - 1]}" words=()
  local options=(
    -t --to -o --output --output-folder -j --jobs --logic --status --from --label --query
    --introduced --nodes --stats --stats=json -h --help --version
  )
  COMPREPLY=()
  # Readline hands "--to=v1" over as three words.
  if [[ "$word" == = ]]; then
    word=
  elif [[ "$previous" == = ]]; then
    previous="${COMP_WORDS[COMP_CWORD - 2]}"
  fi
  case "$previous" in
    -t | --to) words=(v1 v2 define-fun terms trace dot) ;;
    --from) words=(v1 v2) ;;
    --status) words=(sat unsat unknown) ;;
    --stats) [[ "${COMP_WORDS[COMP_CWORD - 1]}" == = || "${COMP_WORDS[COMP_CWORD]}" == = ]] && words=(text json) ;;
    --output-folder)
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      compopt -o filenames 2>/dev/null
      return
      ;;
    --logic | --label | --query | --nodes | -j | --jobs) return ;;
  esac
  if ((${#words[@]} == 0)) && [[ "$word" == -* ]]; then
    words=("${options[@]}")
  fi
  if ((${#words[@]} > 0)); then
    mapfile -t COMPREPLY < <(compgen -W "${words[*]}" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
    compopt -o filenames 2>/dev/null
  fi
}

complete -F _brumlin brumlin
