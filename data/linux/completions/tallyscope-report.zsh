#compdef tallyscope-report
_arguments \
  '(- *)--help[print the options]' \
  '(- *)--version[print the version]' \
  '--json[print one JSON object instead of text]' \
  '--csv[print a table for spreadsheets]' \
  '--html[write a page for any browser]:file:_files -g "*.html"' \
  "--elevate[ask for the administrator's consent to read volumes in bulk]" \
  '--folder[walk one folder instead of reading drives]' \
  '--unreadable[list the folders that could not be read]' \
  '*:folder:_files -/'
