# bash completion for veldrin(1)                                  -*- shell-script -*-

_veldrin()
{
    local cur prev words cword split
    _init_completion -s -n : || return

    # Behind "--" there are paths alone.
    local word
    for word in "${words[@]:1:cword-1}"; do
        [[ $word != -- ]] || prev=--
    done

    case $prev in
        --dir)
            _filedir -d
            return
            ;;
        --export)
            _filedir m3u8
            return
            ;;
        --output)
            if [[ $cur == file:* ]]; then
                cur=${cur#file:}
                _filedir wav
                [[ ${COMP_WORDBREAKS} == *:* ]] ||
                    COMPREPLY=("${COMPREPLY[@]/#/file:}")
                return
            fi
            COMPREPLY=($(compgen -W 'auto null file:' -- "$cur"))
            [[ ${COMPREPLY-} == *: ]] && compopt -o nospace 2>/dev/null
            __ltrim_colon_completions "$cur"
            return
            ;;
        --loudness)
            COMPREPLY=($(compgen -W 'off track album' -- "$cur"))
            return
            ;;
        --scale)
            COMPREPLY=($(compgen -W '1 1.25 1.5 1.75 2 2.5 3 3.5 4' -- "$cur"))
            return
            ;;
        --volume)
            COMPREPLY=($(compgen -W '0 25 50 75 100 +5 -5' -- "$cur"))
            return
            ;;
        --seek)
            COMPREPLY=($(compgen -W '0 +10 -10' -- "$cur"))
            return
            ;;
        --command)
            COMPREPLY=($(compgen -W '
                kAL kRS kRCS kRD kRAll kSeA kSeN kSeI
                kTMst kHIS kAsF kSk1
                kPkLy kPkEFX kPkNFO kPkSh
                kPMA kPPAS kPRpI kPRpP kPRdm
                kAbt kExt' -- "$cur"))
            return
            ;;
        --status)
            if [[ $cur != -* ]]; then
                COMPREPLY=($(compgen -W 'json' -- "$cur"))
                return
            fi
            ;;
        --lyrics | --lyrics-online)
            if [[ $prev == --lyrics || $split == true ]]; then
                COMPREPLY=($(compgen -W 'http:// https://' -- "$cur"))
                compopt -o nospace 2>/dev/null
                __ltrim_colon_completions "$cur"
                return
            fi
            ;;
    esac
    $split && return

    if [[ $cur == -* && $prev != -- ]]; then
        COMPREPLY=($(compgen -W '
            --add --flat --no-window --notify --scale --dir --output --loudness
            --lyrics --lyrics-online
            --play --pause --play-pause --stop --next --previous
            --volume --seek --command --status --quit --export
            --help --version' -- "$cur"))
        return
    fi

    # Music and playlists first, anything else if there is none.
    local music='aac|ac3|aif|aifc|aiff|amr|ape|au|dts|flac|it|m4a|m4b|mka|mod|mp2|mp3|mpc|oga|ogg'
    music+='|opus|s3m|spx|tta|wav|wma|wv|xm|m3u|m3u8|pls|xspf|cue'
    _filedir "$music"
    ((${#COMPREPLY[@]})) || _filedir
} &&
    complete -F _veldrin veldrin
