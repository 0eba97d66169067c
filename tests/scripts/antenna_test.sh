#!/usr/bin/env bash
# How `./kora run` finds a receiver stick and serves it: on a bus, with a server and a handset of the test's own.
set -uo pipefail
SUITE=AntennaScript
WORK=$(mktemp -d)
KORA_LANES=
. "$(dirname "${BASH_SOURCE[0]}")/../install/checks.sh"
clean_up() {
    local log
    for log in "$WORK"/*/server.pid; do [ ! -f "$log" ] || kill "$(<"$log")" 2>/dev/null; done
    rm -rf "$WORK"
}
trap clean_up EXIT

# A bus, a server and a handset that nothing was done to yet.
COUNT=0
# A folder that the programs of the test see too.
export HERE
fresh() {
    local tool
    COUNT=$((COUNT + 1))
    HERE=$WORK/$COUNT
    mkdir -p "$HERE/home" "$HERE/bin" "$HERE/sys/bus/usb/devices" "$HERE/sys/drivers" "$HERE/dev/bus/usb/001"
    : >"$HERE/tcp"
    # It writes down how it was started, waits on its port and plays no samples.
    cat >"$HERE/bin/rtl_tcp" <<TEXT
#!/usr/bin/env bash
echo "\$*" >>"$HERE/server.calls"
echo \$\$ >"$HERE/server.pid"
[ ! -f "$HERE/server.words" ] || { cat "$HERE/server.words" >&2; exit 1; }
printf '   0: 0100007F:%04X 00000000:0000 0A 00000000:00000000\n' "\$4" >>"$HERE/tcp"
exec sleep 100
TEXT
    chmod +x "$HERE/bin/rtl_tcp"
    # Nothing else of this machine is to be found, such as a server that it has.
    for tool in bash basename cat cp grep readlink rm sed sleep tail tr; do ln -s "$(command -v "$tool")" "$HERE/bin/$tool"; done
    echo 'the simulated band' >"$HERE/antenna"
}

# stick NUMBER VENDOR PRODUCT NAME: plugged in.
stick() {
    local folder=$HERE/sys/bus/usb/devices/1-$1
    mkdir -p "$folder" "$folder:1.0"
    echo "$2" >"$folder/idVendor"
    echo "$3" >"$folder/idProduct"
    [ -z "$4" ] || echo "$4" >"$folder/product"
    echo 1 >"$folder/busnum"
    echo "$1" >"$folder/devnum"
    : >"$HERE/dev/bus/usb/001/$(printf %03d "$1")"
}
held_by() {
    mkdir -p "$HERE/sys/drivers/$2"
    ln -s "$HERE/sys/drivers/$2" "$HERE/sys/bus/usb/devices/1-$1:1.0/driver"
}

# run WHAT: what the script does before and after the radio; its words are in SAID, its result is returned.
run() {
    SAID=$(
        KORA_ROOT=$KORA_TREE KORA_HOME=$HERE/home PATH=$HERE/bin bash -c '
            . "$KORA_ROOT/scripts/common.sh"
            . "$KORA_ROOT/scripts/packages.sh"
            KORA_SYSFS=$HERE/sys KORA_DEVICES=$HERE/dev KORA_TCP_TABLES=$HERE/tcp
            packages_need() { echo "$*" >>"$HERE/packages"; cp "$HERE/brought" "$HERE/bin/rtl_tcp"; }
            host_plays() { [ ! -f "$HERE/silent" ]; }
            handset_exe() {
                case "$*" in
                    antenna) echo "antenna    $(cat "$HERE/antenna")" ;;
                    "antenna band") echo "the simulated band" >"$HERE/antenna" ;;
                    "antenna nonsense") echo "\"nonsense\" is no antenna"; return 2 ;;
                    antenna*) echo "$2" >"$HERE/antenna" ;;
                esac
            }
            . "$KORA_ROOT/scripts/antenna.sh"
            trap antenna_end EXIT
            antenna_begin "$1"
            cp "$HERE/antenna" "$HERE/antenna.during"
            [ -z "${STICK_SERVER:-}" ] || kill -0 "$STICK_SERVER"
        ' run "${1:-}" 2>&1
    )
    local status=$?
    printf '%s\n' "$SAID"
    return $status
}
says() { grep -qF -- "$1" <<<"$SAID" || { echo "it does not say: $1"; return 1; }; }
during() { same "$1" "$(<"$HERE/antenna.during")"; }
after() { same "$1" "$(<"$HERE/antenna")"; }
server_is_gone() { ! kill -0 "$(<"$HERE/server.pid")" 2>/dev/null; }
never_served() { [ ! -f "$HERE/server.calls" ] || { cat "$HERE/server.calls"; return 1; }; }

without_a_stick() {
    fresh
    stick 2 1d6b 0002 'a hub'
    run && says 'no receiver stick is plugged in: the simulated band plays' && during 'the simulated band' && never_served
}
stick_is_served() {
    fresh
    stick 4 0bda 2838 RTL2838UHIDIR
    run && [ ! -f "$HERE/packages" ] &&
        says 'receiver stick found: RTL2838UHIDIR (0bda:2838); its server runs on port 1234 and ends with the handset' &&
        during rtl_tcp:127.0.0.1:1234 && after 'the simulated band' && server_is_gone &&
        same '-a 127.0.0.1 -p 1234' "$(<"$HERE/server.calls")" && same 1 "$(grep -c . <<<"$SAID")"
}
other_sticks_are_known() {
    local id
    for id in 0bda:2832 0ccd:00a9 1b80:d3a4 1f4d:d803; do
        fresh
        stick 3 "${id%:*}" "${id#*:}" ''
        run && says "receiver stick found: $id; its server" || return 1
    done
}
server_is_installed() {
    fresh
    stick 4 0bda 2838 stick
    mv "$HERE/bin/rtl_tcp" "$HERE/brought"
    run && same rtl-sdr "$(<"$HERE/packages")" && during rtl_tcp:127.0.0.1:1234
}
next_port_is_taken() {
    fresh
    stick 4 0bda 2838 stick
    # On every address of the machine, by the one family and by the other.
    printf '   0: 00000000:04D2 00000000:0000 0A 00000000:00000000\n   1: 00000000000000000000000000000000:04D3 00000000000000000000000000000000:0000 0A 0\n' >"$HERE/tcp"
    # A connection is no port that waits.
    printf '   2: 0100007F:04D4 0100007F:9999 01 00000000:00000000\n' >>"$HERE/tcp"
    run && says 'its server runs on port 1236' && during rtl_tcp:127.0.0.1:1236
}
all_ports_taken() {
    local port
    fresh
    stick 4 0bda 2838 stick
    for ((port = 1234; port < 1254; port++)); do
        printf '   0: 0100007F:%04X 00000000:0000 0A 00000000:00000000\n' $port >>"$HERE/tcp"
    done
    run && says 'all ports from 1234 to 1253 are in use; `sudo ss -ltnp` names' && during 'the simulated band' && never_served
}
television_driver() {
    fresh
    stick 4 0bda 2838 stick
    held_by 4 dvb_usb_rtl28xxu
    # The server sends it away, as that of the distribution does.
    run && says 'receiver stick found: stick (0bda:2838); its server runs on port 1234' && during rtl_tcp:127.0.0.1:1234
}
television_driver_stays() {
    local words
    for words in 'Detaching kernel driver failed!' 'Kernel driver is active, or device is claimed' 'usb_claim_interface error -6'; do
        fresh
        stick 4 0bda 2838 stick
        held_by 4 dvb_usb_rtl28xxu
        echo "$words" >"$HERE/server.words"
        run && says 'receiver stick found: stick (0bda:2838), but the kernel'\''s television driver (dvb_usb_rtl28xxu) holds it; `sudo modprobe -r dvb_usb_rtl28xxu`' &&
            during 'the simulated band' || return 1
    done
}
other_program() {
    fresh
    stick 4 0bda 2838 stick
    held_by 4 usbfs
    run && says 'another program has it; close that program first' && never_served
}
no_rights() {
    fresh
    stick 4 0bda 2838 stick
    # Root may do everything with a file, but not with one that is not there.
    rm "$HERE/dev/bus/usb/001/004"
    run && says "you have no right to use $HERE/dev/bus/usb/001/004; pull the stick" && says "sudo chmod a+rw $HERE/dev/bus/usb/001/004" &&
        never_served
}
server_words() {
    local words
    for words in 'usb_open error -3|may not open the stick' 'usb_claim_interface error -6|another program or a driver' \
        'No supported devices found.|does not find the stick any more' 'the moon is full|the last lines of'; do
        fresh
        stick 4 0bda 2838 stick
        echo "${words%|*}" >"$HERE/server.words"
        run && says "${words#*|}" && during 'the simulated band' || return 1
    done
    says 'the moon is full'
}
by_hand() {
    fresh
    stick 4 0bda 2838 stick
    run rtl_tcp:attic:1234 && says 'antenna: rtl_tcp:attic:1234' && during rtl_tcp:attic:1234 && after rtl_tcp:attic:1234 && never_served
}
chosen_before() {
    fresh
    stick 4 0bda 2838 stick
    echo rtl_tcp:attic:1234 >"$HERE/antenna"
    run && says 'antenna: rtl_tcp:attic:1234, as chosen before' && after rtl_tcp:attic:1234 && never_served
}
stick_wanted() {
    fresh
    run stick && return 1
    says 'kora: no receiver stick is plugged in' && {
        stick 4 0bda 2838 stick
        run stick && during rtl_tcp:127.0.0.1:1234
    } && {
        held_by 4 dvb_usb_rtl28xxu
        echo 'usb_claim_interface error -6' >"$HERE/server.words"
        : >"$HERE/tcp"
        ! run stick && says 'kora: receiver stick found: stick (0bda:2838), but the kernel'
    }
}
not_understood() {
    fresh
    run nonsense && return 1
    says 'the antenna could not be chosen' && says '"nonsense" is no antenna'
}
broken_off() {
    fresh
    echo rtl_tcp:127.0.0.1:1235 >"$HERE/antenna"
    echo rtl_tcp:127.0.0.1:1235 >"$HERE/home/stick.antenna"
    run && says 'the simulated band plays' && during 'the simulated band' && [ ! -f "$HERE/home/stick.antenna" ]
}
silent_machine() {
    fresh
    : >"$HERE/silent"
    stick 4 0bda 2838 stick
    run && says 'no sound: this machine has neither a sound server nor a sound card'
}

check WithoutAStickTheSimulatedBandPlays without_a_stick
check AStickIsServedOnAPortOfThisMachineUntilTheHandsetEnds stick_is_served
check OtherSticksOfTheKindAreKnown other_sticks_are_known
check TheServerIsInstalledWhenItIsMissing server_is_installed
check APortInUseIsPassedOver next_port_is_taken
check ThatAllPortsAreInUseIsSaid all_ports_taken
check ADriverOfTheKernelThatTheServerSendsAwayIsNoObstacle television_driver
check ADriverOfTheKernelThatHoldsTheStickIsNamedWithTheCommandThatHelps television_driver_stays
check AnotherProgramThatHasTheStickIsNamed other_program
check MissingRightsAreNamedWithTheCommandThatHelps no_rights
check TheServersLastWordsAreExplained server_words
check AnAntennaGivenByHandWinsOverAStick by_hand
check AnAntennaChosenBeforeWinsOverAStick chosen_before
check AStickThatIsAskedForHasToBeThere stick_wanted
check AnAntennaThatIsNotUnderstoodEndsTheRunWithTheReason not_understood
check AServerOfARunThatWasBrokenOffIsForgotten broken_off
check AMachineWithoutSoundSaysSo silent_machine
finish
