# Completion of qzenvelope for bash. The options come from the program's own help, so that they are
# those of the installed version.
_qzenvelope() {
    local current previous command word
    current=${COMP_WORDS[COMP_CWORD]}
    previous=${COMP_WORDS[COMP_CWORD - 1]}
    command=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in compute | batch | report | info | copy) command=$word && break ;; esac
    done
    COMPREPLY=()
    case $previous in
    --half) mapfile -t COMPREPLY < <(compgen -W 'upper lower both' -- "$current") && return ;;
    --algorithm) mapfile -t COMPREPLY < <(compgen -W 'exact 3 hatch 1 2' -- "$current") && return ;;
    --split) mapfile -t COMPREPLY < <(compgen -W 'line layers auto' -- "$current") && return ;;
    --tip) mapfile -t COMPREPLY < <(compgen -W 'left right top bottom start end' -- "$current") && return ;;
    --zero) mapfile -t COMPREPLY < <(compgen -W 'tip shank axis-start' -- "$current") && return ;;
    --direction) mapfile -t COMPREPLY < <(compgen -W 'left right z+ z- x+ x-' -- "$current") && return ;;
    --name) mapfile -t COMPREPLY < <(compgen -W 'frames file' -- "$current") && return ;;
    --units) mapfile -t COMPREPLY < <(compgen -W 'mm cm m inch ft' -- "$current") && return ;;
    --watch | --out)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current") && return
        ;;
    esac
    if [ -z "$command" ]; then
        mapfile -t COMPREPLY < <(compgen -W 'compute batch report info copy --help --version' -- "$current")
        return
    fi
    if [[ $current == -* ]]; then
        # shellcheck disable=SC2086
        mapfile -t COMPREPLY < <(compgen -W "$(${COMP_WORDS[0]} $command --help 2>/dev/null |
            grep -oE -- '(^|[ ,])--?[a-z][a-z-]*' | tr -d ' ,' | sort -u)" -- "$current")
        return
    fi
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
complete -F _qzenvelope qzenvelope
