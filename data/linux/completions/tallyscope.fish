complete -c tallyscope -f
complete -c tallyscope -l help -d 'Print the parameters'
complete -c tallyscope -l version -d 'Print the version'
complete -c tallyscope -n __fish_is_first_arg -a /scansys -d 'Scan the system volume at once'
complete -c tallyscope -n __fish_is_first_arg -a /scandrive -d 'Scan the folders that follow at once'
complete -c tallyscope -n '__fish_seen_subcommand_from /scandrive' -a '(__fish_complete_directories)'
