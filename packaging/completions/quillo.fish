# fish completion for quillo.

function __quillo_commands
    printf '%s\t%s\n' \
        add 'Add a task; dates and times in the text become its due date' \
        list 'List the open tasks, all of them, or those that are done' \
        done 'Complete a task' \
        undone 'Make a completed task open again' \
        edit 'Give a task a new title' \
        remind 'Give a task another due date and reminder' \
        delete 'Delete a task' \
        clear-completed 'Delete all tasks that are done' \
        restore 'List the earlier lists that are kept, or bring one back' \
        export 'Print the whole list as a document, or write it to a file' \
        stats 'Show how many tasks were completed, and how fast' \
        parse 'Show what would be understood of a text' \
        resolve 'Show when classified texts are due' \
        model 'Show or choose the language model that is asked' \
        sync 'Keep the list in step with other computers' \
        open 'Open the list on the screen' \
        quick-add 'Open the panel for a new task' \
        settings 'Open the settings' \
        statistics 'Open the statistics' \
        quit 'End the desktop program' \
        help 'List the commands, or explain one' \
        version 'Print the version'
end

# __quillo_numbers COMMAND [OPTION]: the numbers that the command prints, described by what stands behind them.
function __quillo_numbers
    set -l program (commandline -opc)[1]
    type -q -- $program; or return
    # "3  [ ]  Call mom  Mar 5, 2026 at 9:00 AM"; only looks, and whatever a title holds, it stands on one line.
    $program $argv 2>/dev/null </dev/null | string replace -rf '^ *(\d+)  (?:\[.\]  )?(.*)$' '$1\t$2'
end

# __quillo_at COMMAND...: the cursor stands at the first argument of one of these commands.
function __quillo_at
    set -l words
    set -l options_ended no
    set -l option
    for word in (commandline -opc)[2..]
        if set -q option[1]
            set option # This was its value.
        else if test $options_ended = no; and contains -- $word -o --output --keep
            set option $word
        else if test $options_ended = no; and test "$word" = --
            set options_ended yes
        else if test $options_ended = yes; or not string match -q -- '-*' $word
            set -a words $word
        end
    end
    test (count $words) -eq 1; and contains -- $words[1] $argv
end

complete -c quillo -f
complete -c quillo -n '__fish_use_subcommand; or __quillo_at help' -k -a '(__quillo_commands)'
complete -c quillo -n '__quillo_at done remind' -k -a '(__quillo_numbers list)'
complete -c quillo -n '__quillo_at undone' -k -a '(__quillo_numbers list --done)'
complete -c quillo -n '__quillo_at edit delete' -k -a '(__quillo_numbers list --all)'
complete -c quillo -n '__quillo_at restore' -k -a '(__quillo_numbers restore)'
complete -c quillo -n '__quillo_at export' -a markdown -d 'A checklist, for people'
complete -c quillo -n '__quillo_at export' -a json -d 'An array, for programs'

complete -c quillo -n '__quillo_at model' -k -a status -d 'Show whether the chosen model can be reached'
complete -c quillo -n '__quillo_at model' -k -a use -d 'Choose a model'
complete -c quillo -n '__quillo_at model' -k -a list -d 'List the models that may be chosen'
complete -c quillo -n '__fish_seen_subcommand_from model; and __fish_seen_subcommand_from use' -a 'embedded none'

complete -c quillo -n '__quillo_at sync' -k -a forget -d 'Take away what a computer has left'
complete -c quillo -n '__quillo_at sync' -k -a now -d 'Bring the list in step now'
complete -c quillo -n '__quillo_at sync' -k -a off -d 'Stop keeping it in step'
complete -c quillo -n '__quillo_at sync' -k -a use -d 'Choose a place'
complete -c quillo -n '__quillo_at sync' -k -a status -d 'Show how it fares'
complete -c quillo -n '__fish_seen_subcommand_from sync; and __fish_seen_subcommand_from use' -a folder -d 'One that something keeps in step'
complete -c quillo -n '__fish_seen_subcommand_from sync; and __fish_seen_subcommand_from use' -a webdav -d 'A folder on a server'
complete -c quillo -n '__fish_seen_subcommand_from sync; and __fish_seen_subcommand_from folder' -a '(__fish_complete_directories)'

complete -c quillo -n __fish_use_subcommand -s h -l help -d 'List the commands'
complete -c quillo -n __fish_use_subcommand -s V -l version -d 'Print the version'
complete -c quillo -n 'not __fish_use_subcommand' -l help -d 'Explain the command'
complete -c quillo -n '__fish_seen_subcommand_from add' -l json -d 'Print the task as JSON'
complete -c quillo -n '__fish_seen_subcommand_from list' -l all -d 'All tasks'
complete -c quillo -n '__fish_seen_subcommand_from list' -l done -d 'Tasks that are done'
complete -c quillo -n '__fish_seen_subcommand_from list' -l json -d 'Print JSON'
complete -c quillo -n '__fish_seen_subcommand_from remind' -l clear -d 'Take the due date and the reminder away'
complete -c quillo -n '__fish_seen_subcommand_from export' -s o -l output -r -F -d 'The file to write'
complete -c quillo -n '__fish_seen_subcommand_from stats' -l json -d 'Print JSON'
complete -c quillo -n '__fish_seen_subcommand_from parse' -l now -x -d 'When the text was typed'
complete -c quillo -n '__fish_seen_subcommand_from parse' -l time-zone -x -d 'Where it was typed'
complete -c quillo -n '__fish_seen_subcommand_from parse' -l locale -x -d 'The language of the answer'
complete -c quillo -n '__fish_seen_subcommand_from parse' -l json -d 'Print JSON'
complete -c quillo -n '__fish_seen_subcommand_from parse' -l trace -d 'Show which rules matched, and what a language model said'
complete -c quillo -n '__fish_seen_subcommand_from parse' -l jsonl -d 'Read and answer lines of JSON'
complete -c quillo -n '__fish_seen_subcommand_from resolve' -l now -x -d 'When the texts were typed'
complete -c quillo -n '__fish_seen_subcommand_from resolve' -l time-zone -x -d 'Where they were typed'
complete -c quillo -n '__fish_seen_subcommand_from resolve' -l locale -x -d 'The calendar in which they are meant'
complete -c quillo -n '__fish_seen_subcommand_from resolve' -l jsonl -d 'Read and answer lines of JSON'
complete -c quillo -n '__fish_seen_subcommand_from model' -l json -d 'Print JSON'
complete -c quillo -n '__fish_seen_subcommand_from model' -l schema-in-prompt -d 'Describe in words what is to be answered'
complete -c quillo -n '__fish_seen_subcommand_from sync' -l json -d 'Print JSON'
complete -c quillo -n '__fish_seen_subcommand_from sync' -l keep -x -a 'mine theirs' -d 'Which list goes on where there are two'
complete -c quillo -n '__fish_seen_subcommand_from sync' -l user -x -d 'Who the server shall take you for'
complete -c quillo -n '__fish_seen_subcommand_from sync' -l password-stdin -d 'Read the password from standard input'
