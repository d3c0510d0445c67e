# Completion of pendra(1) for fish.
complete -c pendra -f
complete -c pendra -l appearance -x -a 'light dark' -d 'Light or dark, whatever the desktop says'
complete -c pendra -l in-panel -d 'Begin without a window where there is a panel'
complete -c pendra -l quick-entry -d 'Have the cursor in the quick entry'
complete -c pendra -l stop-all -d 'Stop all that runs'
complete -c pendra -l new -r -F -d 'Make that document and open it'
complete -c pendra -l tour -x -a '(__fish_complete_directories)' -d 'Draw every window into a picture in that folder'
complete -c pendra -l version -d 'Print the version and end'
complete -c pendra -l help -d 'Print a summary of the options and end'
complete -c pendra -n 'not string match -q -- "-*" (commandline -ct)' \
  -a '(__fish_complete_suffix .pdr .pdrbackup)' -d 'Document or backup'

set -l commands status log report start stop add export backup send
complete -c pendra -n __fish_use_subcommand -a status -d 'What runs, and the hours of today'
complete -c pendra -n __fish_use_subcommand -a log -d 'List time entries'
complete -c pendra -n __fish_use_subcommand -a report -d 'Sums of hours'
complete -c pendra -n __fish_use_subcommand -a start -d 'Start the activity that matches'
complete -c pendra -n __fish_use_subcommand -a stop -d 'Stop it, or all'
complete -c pendra -n __fish_use_subcommand -a add -d 'Start or book what is written'
complete -c pendra -n __fish_use_subcommand -a export -d 'Write every entry to a new file'
complete -c pendra -n __fish_use_subcommand -a backup -d 'Copy the document to a new file'
complete -c pendra -n __fish_use_subcommand -a send -d 'Send to Vantor what is not sent'
complete -c pendra -n "__fish_seen_subcommand_from $commands" -l json -d 'Answer for other programs'
complete -c pendra -n "__fish_seen_subcommand_from $commands" -l document -r -F -d 'The document that is meant'
complete -c pendra -n '__fish_seen_subcommand_from log report' -l from -x -d 'From this day on, as 2026-11-24'
complete -c pendra -n '__fish_seen_subcommand_from log report' -l to -x -d 'To this day, as 2026-11-24'
complete -c pendra -n '__fish_seen_subcommand_from log' -l customer -x -d 'Of this customer alone'
complete -c pendra -n '__fish_seen_subcommand_from log' -l unsent -d 'What was not sent'
complete -c pendra -n '__fish_seen_subcommand_from add' -l create -d 'Add names that do not exist to their lists'
complete -c pendra -n '__fish_seen_subcommand_from report' -l by -x -a 'customer job service day' -d 'Levels, by commas'
complete -c pendra -n '__fish_seen_subcommand_from export backup' -F
