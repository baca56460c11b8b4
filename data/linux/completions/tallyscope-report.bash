# bash completion for tallyscope-report
_tallyscope_report()
{
    local cur prev words cword
    _init_completion || return
    if [[ $prev == --html ]]; then
        _filedir html
    elif [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W '--json --csv --html --elevate --folder --unreadable --help --version' -- "$cur"))
    else
        _filedir -d
    fi
} &&
    complete -F _tallyscope_report tallyscope-report
