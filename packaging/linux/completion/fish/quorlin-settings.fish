# Completion of quorlin-settings for fish.

# The words of the command line without options: the program, the command, the name of a setting.
function __quorlin_settings_words
    string match -v -- '--*' (commandline -opc)
end

function __quorlin_settings_needs -a count
    test (count (__quorlin_settings_words)) -eq $count
end

# Only three settings count for the machine.
function __quorlin_settings_machine
    contains -- --machine (commandline -opc)
end

function __quorlin_settings_values
    quorlin-settings values (__quorlin_settings_words)[3] 2>/dev/null
end

set -l command __quorlin_settings_needs 1
set -l name '__quorlin_settings_needs 2; and not __fish_seen_subcommand_from list'
set -l value '__quorlin_settings_needs 3; and __fish_seen_subcommand_from set'

complete -c quorlin-settings -f
complete -c quorlin-settings -n "$command" -a list -d "Show every setting"
complete -c quorlin-settings -n "$command" -a get -d "Show the value of a setting"
complete -c quorlin-settings -n "$command" -a set -d "Check a value and keep it"
complete -c quorlin-settings -n "$command" -a remove -d "Forget a value"
complete -c quorlin-settings -n "$command" -a values -d "Show what a setting can be"
complete -c quorlin-settings -n "$name" -a "Language Quality Skin"
complete -c quorlin-settings -n "$name; and not __quorlin_settings_machine" \
    -a "ShowOption MergeOption Position"
complete -c quorlin-settings -n "$value" -a "(__quorlin_settings_values)"
complete -c quorlin-settings -l machine -d "The machine's values"
complete -c quorlin-settings -s h -l help -d "Show help and end"
complete -c quorlin-settings -l version -d "Show the version and end"
