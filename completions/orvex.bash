# Completion of orvex for bash. Source it, or put it into a folder that bash-completion searches, as "orvex".

_orvex() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
    local commands='translate check info graph explain codes'
    local formats='text short json sarif github'
    local pictures='dot svg mermaid json table'
    local common='--model --report --max-errors --stdin-filename --translator --color --quiet -q --help -h'
    local runs='--warn --error-on-warnings --jobs -j --first-model --first-constraint --time --put-file'
    local command='' i
    for ((i = 1; i < COMP_CWORD; i++)); do
        case " $commands " in
        *" ${COMP_WORDS[i]} "*) command=${COMP_WORDS[i]}; break ;;
        esac
    done

    # "=" parts words: the value stands behind it.
    if [ "$before" = = ]; then before=${COMP_WORDS[COMP_CWORD-2]}; fi
    if [ "$word" = = ]; then before=${COMP_WORDS[COMP_CWORD-1]} word=''; fi

    local words=''
    case $before in
    --format) if [ "$command" = graph ]; then words=$pictures; else words=$formats; fi ;;
    --report) words="${formats// /= }=" ;;
    --color) words='auto always never' ;;
    --warn) words="off warning error $(orvex codes 2>/dev/null | cut -d ' ' -f 1)" ;;
    --out | -o)
        COMPREPLY=($(compgen -d -- "$word"))
        return
        ;;
    --header | --depfile | --put-file | --translator)
        COMPREPLY=($(compgen -f -- "$word"))
        return
        ;;
    --model | --max-errors | --stdin-filename | --jobs | -j | --first-model | --first-constraint | \
        --time | --focus | --depth)
        return
        ;;
    *)
        case $word in
        -*)
            case $command in
            translate) words="--out -o --header --depfile --format $runs $common" ;;
            check) words="--format $runs $common" ;;
            info) words="--json --format $common" ;;
            graph) words="--format --focus --depth $common" ;;
            explain) words='--color --help -h' ;;
            codes) words='--help -h' ;;
            *) words='--help -h --version' ;;
            esac
            ;;
        *)
            case $command in
            '') words=$commands ;;
            explain) words=$(orvex codes 2>/dev/null | cut -d ' ' -f 1) ;;
            codes) ;;
            *)
                compopt -o filenames 2>/dev/null
                COMPREPLY=($(compgen -f -X '!*.zlm' -- "$word") $(compgen -d -- "$word"))
                return
                ;;
            esac
            ;;
        esac
        ;;
    esac
    COMPREPLY=($(compgen -W "$words" -- "$word"))
}

complete -F _orvex orvex
