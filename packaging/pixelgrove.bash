# Completion of the two programs' command lines. The options are asked of the program itself, so that these
# lists are never older than it is.

_pixelgrove_options() {
    "$1" --help 2>/dev/null | grep -oE -- '(^|[ ,])--[a-z][a-z0-9-]*' | tr -d ' ,' | sort -u
}

_pixelgrove() {
    local word=${COMP_WORDS[COMP_CWORD]}
    compopt -o filenames 2>/dev/null
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_pixelgrove_options "$1")" -- "$word")
        return
    fi
    # Projects and shaders; any folder on the way to one.
    mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.@(json|glsl|frag)' -- "$word" | sort -u)
}

_pixelgrove_render() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    case $before in
        --stage | --print-source)
            local IFS=$'\n'
            mapfile -t COMPREPLY < <(compgen -W $'Common\nBuffer A\nBuffer B\nBuffer C\nBuffer D\nCube A\nImage' -- "$word")
            COMPREPLY=("${COMPREPLY[@]// /\\ }")
            return
            ;;
        --format-errors)
            mapfile -t COMPREPLY < <(compgen -W 'plain gcc' -- "$word")
            return
            ;;
        --out)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            return
            ;;
        --audio)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
            ;;
    esac
    _pixelgrove "$1"
}

complete -F _pixelgrove pixelgrove
complete -F _pixelgrove_render pixelgrove-render
