# Completion of the command kora, for bash.

_kora() {
    local word=${COMP_WORDS[COMP_CWORD]}
    local verbs='run start stop handset uninstall help'
    local handset='install status clock start favourites stop key softkey tap tour channels recordings headset card power orientation
        bluetooth signal fault call band antenna ether reg schedule service panel help uninstall'
    local options=
    if [ "$COMP_CWORD" -eq 1 ]; then
        options=$verbs
    else
        case ${COMP_WORDS[1]}:$COMP_CWORD in
            run:*)
                case ${COMP_WORDS[COMP_CWORD - 1]} in
                    --antenna) options='band ether stick rtl_tcp file:' ;;
                    --size) options='1 2 3 auto' ;;
                    *) options='--antenna --size' ;;
                esac ;;
            stop:2) options=--force ;;
            uninstall:2) options=--all ;;
            start:*) options='-Rec -Channel -Duration' ;;
            handset:2) options=$handset ;;
            handset:3)
                case ${COMP_WORDS[2]} in
                    help) options=$handset ;;
                    headset) options='on off' ;;
                    card) options='in out' ;;
                    orientation) options='portrait landscape usual' ;;
                    power) options='on idle screenoff unattended useridle off key' ;;
                    call) options='incoming outgoing talk hangup' ;;
                    softkey) options='left right' ;;
                    channels) options='export import' ;;
                    reg) options='get set delete' ;;
                    antenna) options='band ether rtl_tcp file: gain ppm deemphasis bias' ;;
                    stop) options=--force ;;
                esac ;;
            handset:4)
                case ${COMP_WORDS[2]}:${COMP_WORDS[3]} in
                    channels:export) options='--bookmarks lists.json lists.csv' ;;
                    channels:import) options=--replace ;;
                esac ;;
        esac
    fi
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
}
complete -F _kora kora
