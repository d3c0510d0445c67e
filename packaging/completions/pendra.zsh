#compdef pendra

_arguments \
  '--appearance[light or dark, whatever the desktop says]:appearance:(light dark)' \
  '(*)--new[make that document and open it]:document:_files' \
  '(- *)--tour[draw every window into a picture in that folder]:folder:_files -/' \
  '(- *)--version[print the version and end]' \
  '(- *)--help[print a summary of the options and end]' \
  '::document or backup:_files -g "*.(pdr|pdrbackup)"'
