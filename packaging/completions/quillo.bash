# bash completion for quillo. Needs nothing but bash 4.4.

# _quillo_offer WORD CHOICES: offers the choices, separated by blanks, that begin with WORD.
_quillo_offer() {
    mapfile -t COMPREPLY < <(compgen -W "$2" -- "$1")
}

# _quillo_offer_files WORD: offers the files and folders that begin with WORD.
_quillo_offer_files() {
    mapfile -t COMPREPLY < <(compgen -f -- "$1")
    compopt -o filenames 2>/dev/null # Quotes them, and a blank is for the end of a file only.
}

# _quillo_offer_numbers WORD PROGRAM COMMAND [OPTION]: offers the numbers that begin with WORD, of the lines that the
# command prints.
_quillo_offer_numbers() {
    local word=$1 line
    shift
    local -a numbers=() lines=()
    # "3  [ ]  Call mom  Mar 5, 2026 at 9:00 AM"; only looks, and whatever a title holds, it stands on one line.
    while read -r line; do
        [[ ${line%% *} == "$word"* ]] || continue
        numbers+=("${line%% *}")
        lines+=("${line:0:${COLUMNS:-80} - 4}")
    done < <("$@" 2>/dev/null </dev/null)

    # Readline shows the choices exactly as it would insert them: whole lines may stand beside the numbers only while it
    # lists several (see COMP_TYPE in bash(1)), of which it inserts no more than what their numbers have in common.
    COMPREPLY=("${numbers[@]}")
    if ((${#numbers[@]} > 1)) && [[ $COMP_TYPE == @(9|33|63|64) ]]; then
        COMPREPLY=("${lines[@]}")
    fi
}

_quillo() {
    local program=$1 word=$2 command=${COMP_WORDS[1]}
    local commands='add list done undone edit remind delete clear-completed restore export stats parse resolve model sync'
    commands+=' open quick-add settings statistics quit help version'
    COMPREPLY=()

    # The value of an option stands behind it, or behind a = that readline takes for a word of its own.
    local argument place=0 options_ended='' option=''
    for argument in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ $option ]]; then
            [[ $argument == = ]] || option=
        elif [[ ! $options_ended && $argument == @(-o|--output|--now|--time-zone|--locale|--keep|--user) ]]; then
            option=$argument
        elif [[ $argument == -- ]]; then
            options_ended=yes
        elif [[ $options_ended || $argument != -* ]]; then
            ((++place))
        fi
    done

    if [[ $option ]]; then
        [[ $option == @(-o|--output) ]] && _quillo_offer_files "$word"
        [[ $option == --keep ]] && _quillo_offer "$word" 'mine theirs'
        return
    fi
    if [[ $word == -* && ! $options_ended ]]; then
        case $place/$command in
            0/*) _quillo_offer "$word" '--help --version' ;;
            */add) _quillo_offer "$word" '--help --json' ;;
            */list) _quillo_offer "$word" '--help --all --done --json' ;;
            */remind) _quillo_offer "$word" '--help --clear' ;;
            */export) _quillo_offer "$word" '--help --output' ;;
            */stats) _quillo_offer "$word" '--help --json' ;;
            */parse) _quillo_offer "$word" '--help --now --time-zone --locale --json --trace --jsonl' ;;
            */model) _quillo_offer "$word" '--help --json --schema-in-prompt' ;;
            */sync) _quillo_offer "$word" '--help --json --keep --user --password-stdin' ;;
            */resolve) _quillo_offer "$word" '--help --now --time-zone --locale --jsonl' ;;
            *) _quillo_offer "$word" '--help' ;;
        esac
        return
    fi
    case $place/$command in
        0/*) _quillo_offer "$word" "$commands" ;;
        1/done | 1/remind) _quillo_offer_numbers "$word" "$program" list ;;
        1/undone) _quillo_offer_numbers "$word" "$program" list --done ;;
        1/edit | 1/delete) _quillo_offer_numbers "$word" "$program" list --all ;;
        1/restore) _quillo_offer_numbers "$word" "$program" restore ;;
        1/export) _quillo_offer "$word" 'markdown json' ;;
        1/model) _quillo_offer "$word" 'list use status' ;;
        2/model) [[ ${COMP_WORDS[2]} != use ]] || _quillo_offer "$word" 'embedded none' ;;
        1/sync) _quillo_offer "$word" 'status use off now forget' ;;
        2/sync) [[ ${COMP_WORDS[2]} != use ]] || _quillo_offer "$word" 'folder webdav' ;;
        3/sync) [[ ${COMP_WORDS[COMP_CWORD-1]} != folder ]] || _quillo_offer_files "$word" ;;
        1/help) _quillo_offer "$word" "$commands" ;;
    esac
}

complete -o nosort -F _quillo quillo
