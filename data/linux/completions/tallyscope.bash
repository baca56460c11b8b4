# bash completion for tallyscope
_tallyscope()
{
    local cur prev words cword
    _init_completion || return
    if [[ $cword -eq 1 ]]; then
        COMPREPLY=($(compgen -W '/scansys /scandrive --help --version' -- "$cur"))
    elif [[ ${words[1]} == /scandrive ]]; then
        _filedir -d
    fi
} &&
    complete -F _tallyscope tallyscope
