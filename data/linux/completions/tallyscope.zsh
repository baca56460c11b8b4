#compdef tallyscope
_arguments \
  '(- *)--help[print the parameters]' \
  '(- *)--version[print the version]' \
  '1:what to scan at once:(/scansys /scandrive)' \
  '*:folder:_files -/'
