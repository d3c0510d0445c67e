#compdef pendra

local -a commands=(
  'status:what runs, and the hours of today'
  'log:list time entries'
  'report:sums of hours'
  'start:start the activity that matches'
  'stop:stop it, or all'
  'add:start or book what is written'
  'export:write every entry to a new file'
  'backup:copy the document to a new file'
  'send:send to Vantor what is not sent'
)
local -a of_all=('--json[answer for other programs]' '--document[the document that is meant]:document:_files -g "*.pdr"')
local -a of_days=('--from[from this day on]:day, as 2026-11-24:' '--to[to this day]:day, as 2026-11-24:')

if (( CURRENT > 2 )) && (( ${commands[(I)${words[2]}:*]} )); then
  case ${words[2]} in
    log) _arguments $of_all $of_days '--customer[of this customer alone]:name:' '--unsent[what was not sent]' '*:' ;;
    report) _arguments $of_all $of_days '--by[levels]:levels:_values -s , level customer job service day' '*:' ;;
    add) _arguments $of_all '--create[add names that do not exist to their lists]' '*:' ;;
    export|backup) _arguments $of_all '1:' '2:new file:_files' ;;
    *) _arguments $of_all '*:' ;;
  esac
  return
fi
(( CURRENT == 2 )) && _describe command commands

_arguments \
  '--appearance[light or dark, whatever the desktop says]:appearance:(light dark)' \
  '--in-panel[begin without a window where there is a panel]' \
  '--quick-entry[have the cursor in the quick entry]' \
  '--stop-all[stop all that runs]' \
  '(*)--new[make that document and open it]:document:_files' \
  '(- *)--tour[draw every window into a picture in that folder]:folder:_files -/' \
  '(- *)--version[print the version and end]' \
  '(- *)--help[print a summary of the options and end]' \
  '::document or backup:_files -g "*.(pdr|pdrbackup)"'
