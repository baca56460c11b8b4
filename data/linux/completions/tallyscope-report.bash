# bash completion for tallyscope-report
_tallyscope_report()
{
    local cur prev words cword
    _init_completion || return
    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W '--json --csv --elevate --folder --unreadable --help --version' -- "$cur"))
    else
        _filedir -d
    fi
} &&
    complete -F _tallyscope_report tallyscope-report
