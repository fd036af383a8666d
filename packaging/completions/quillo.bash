# bash completion for quillo. Needs nothing but bash 4.4.

# _quillo_offer WORD CHOICES: offers the choices, separated by blanks, that begin with WORD.
_quillo_offer() {
    mapfile -t COMPREPLY < <(compgen -W "$2" -- "$1")
}

# _quillo_offer_tasks WORD PROGRAM [--all|--done]: offers the numbers of tasks that begin with WORD.
_quillo_offer_tasks() {
    local word=$1 program=$2 line
    shift 2
    local -a numbers=() lines=()
    # "3  [ ]  Call mom  Mar 5, 2026 at 9:00 AM"; only looks, and whatever a title holds, it stands on one line.
    while read -r line; do
        [[ ${line%% *} == "$word"* ]] || continue
        numbers+=("${line%% *}")
        lines+=("${line:0:${COLUMNS:-80} - 4}")
    done < <("$program" list "$@" 2>/dev/null </dev/null)

    # Readline shows the choices exactly as it would insert them: titles may stand beside the numbers only while it
    # lists several (see COMP_TYPE in bash(1)), of which it inserts no more than what their numbers have in common.
    COMPREPLY=("${numbers[@]}")
    if ((${#numbers[@]} > 1)) && [[ $COMP_TYPE == @(9|33|63|64) ]]; then
        COMPREPLY=("${lines[@]}")
    fi
}

_quillo() {
    local program=$1 word=$2 command=${COMP_WORDS[1]}
    local commands='add list done undone edit delete clear-completed parse help version'
    COMPREPLY=()

    local argument place=0 options_ended=
    for argument in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if [[ $argument == -- ]]; then
            options_ended=yes
        elif [[ $options_ended || $argument != -* ]]; then
            ((++place))
        fi
    done

    if [[ $word == -* && ! $options_ended ]]; then
        case $place/$command in
            0/*) _quillo_offer "$word" '--help --version' ;;
            */add) _quillo_offer "$word" '--help --json' ;;
            */list) _quillo_offer "$word" '--help --all --done --json' ;;
            */parse) _quillo_offer "$word" '--help --now --time-zone --locale --json --trace --jsonl' ;;
            *) _quillo_offer "$word" '--help' ;;
        esac
        return
    fi
    case $place/$command in
        0/*) _quillo_offer "$word" "$commands" ;;
        1/done) _quillo_offer_tasks "$word" "$program" ;;
        1/undone) _quillo_offer_tasks "$word" "$program" --done ;;
        1/edit | 1/delete) _quillo_offer_tasks "$word" "$program" --all ;;
        1/help) _quillo_offer "$word" "$commands" ;;
    esac
}

complete -o nosort -F _quillo quillo
