# Completion of pendra(1) for fish.
complete -c pendra -f
complete -c pendra -l appearance -x -a 'light dark' -d 'Light or dark, whatever the desktop says'
complete -c pendra -l new -r -F -d 'Make that document and open it'
complete -c pendra -l tour -x -a '(__fish_complete_directories)' -d 'Draw every window into a picture in that folder'
complete -c pendra -l version -d 'Print the version and end'
complete -c pendra -l help -d 'Print a summary of the options and end'
complete -c pendra -n 'not string match -q -- "-*" (commandline -ct)' \
  -a '(__fish_complete_suffix .pdr .pdrbackup)' -d 'Document or backup'
