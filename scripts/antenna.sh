# What the radio receives with: a receiver stick on the bus and the server for it. Sourced after handset.sh.

# The system's tables, as they are anywhere but in a test.
KORA_SYSFS=${KORA_SYSFS:-/sys}
KORA_DEVICES=${KORA_DEVICES:-/dev}
KORA_TCP_TABLES=${KORA_TCP_TABLES:-/proc/net/tcp /proc/net/tcp6}
# Sticks with the chip that the server knows, by vendor and product.
KORA_STICKS=(0bda:2832 0bda:2838 0413:6680 0413:6f0f 0458:707f 0ccd:00a9 0ccd:00b3 0ccd:00b4 0ccd:00b5 0ccd:00b7
    0ccd:00b8 0ccd:00b9 0ccd:00c0 0ccd:00c6 0ccd:00d3 0ccd:00d7 0ccd:00e0 1554:5020 15f4:0131 15f4:0133 185b:0620
    185b:0650 185b:0680 1b80:d393 1b80:d394 1b80:d395 1b80:d397 1b80:d398 1b80:d39d 1b80:d3a4 1b80:d3a8 1b80:d3af
    1b80:d3b0 1d19:1101 1d19:1102 1d19:1103 1d19:1104 1f4d:a803 1f4d:b803 1f4d:c803 1f4d:d286 1f4d:d803)
KORA_STICK_PACKAGES=(rtl-sdr)
KORA_STICK_FIRST_PORT=${KORA_STICK_FIRST_PORT:-1234}
KORA_STICK_PORTS=20  # so many from there on are tried

# stick_find: the first stick on the bus: its folder in the system's table, and its name, its node and the driver that
# holds it, in STICK_NAME, STICK_NODE and STICK_DRIVER.
stick_find() {
    local device id interface
    for device in "$KORA_SYSFS"/bus/usb/devices/*; do
        [ -f "$device/idVendor" ] && [ -f "$device/idProduct" ] || continue
        id=$(<"$device/idVendor"):$(<"$device/idProduct")
        case " ${KORA_STICKS[*]} " in *" $id "*) ;; *) continue ;; esac
        STICK_NAME=$id
        [ ! -f "$device/product" ] || STICK_NAME="$(<"$device/product") ($id)"
        STICK_NODE=$KORA_DEVICES/bus/usb/$(printf '%03d/%03d' "$(<"$device/busnum")" "$(<"$device/devnum")")
        STICK_DRIVER=
        for interface in "$device":*; do
            [ -e "$interface/driver" ] || continue
            STICK_DRIVER=$(basename "$(readlink -f "$interface/driver")")
            break
        done
        return 0
    done
    return 1
}

# stick_obstacle: why the stick that was found cannot be used, with the command that helps; fails when it can. The kernel's
# television driver is none by itself: the distribution's server sends it away, and says so when it cannot.
stick_obstacle() {
    case $STICK_DRIVER in
        usbfs)
            printf 'another program has it; close that program first (`sudo fuser -v %s` names it)' "$STICK_NODE" ;;
        *)
            { [ ! -r "$STICK_NODE" ] || [ ! -w "$STICK_NODE" ]; } || return 1
            printf 'you have no right to use %s; pull the stick and plug it in again, since the package rtl-sdr brings the rule that grants it, or `sudo chmod a+rw %s` until it is pulled' \
                "$STICK_NODE" "$STICK_NODE" ;;
    esac
}

# port_listens PORT: some program waits for connections there. Nothing is connected: the server would take it for its
# only client.
port_listens() {
    local tables
    read -ra tables <<<"$KORA_TCP_TABLES"
    grep -qsi "^ *[0-9]*: [0-9A-F]*:$(printf '%04X' "$1") [0-9A-F]*:0000 0A " "${tables[@]}"
}

# Somebody else has the stick.
holder_words() {
    case $STICK_DRIVER in
        dvb_usb_*)
            printf 'the kernel'\''s television driver (%s) holds it; `sudo modprobe -r %s` takes it away until the next start of the machine, and `echo blacklist %s | sudo tee /etc/modprobe.d/kora-stick.conf` for good' \
                "$STICK_DRIVER" "$STICK_DRIVER" "$STICK_DRIVER" ;;
        *)
            printf 'another program or a driver of the kernel has the stick; `sudo modprobe -r dvb_usb_rtl28xxu` or closing that program helps' ;;
    esac
}

# What the server's own last words mean, if anything.
server_fault() {
    case $(tr '\n' ' ' <"$KORA_HOME/stick.log") in
        *'usb_open error -3'* | *LIBUSB_ERROR_ACCESS*)
            printf 'the server may not open the stick; pull it and plug it in again, or `sudo chmod a+rw %s`' "$STICK_NODE" ;;
        *'usb_claim_interface error -6'* | *LIBUSB_ERROR_BUSY* | *'Detaching kernel driver failed'* | *'Kernel driver is active'*)
            holder_words ;;
        *'No supported devices found'*) printf 'the server does not find the stick any more; it may have been pulled' ;;
        *)
            printf 'the server ended at once; the last lines of %s say why:\n%s' "$KORA_HOME/stick.log" \
                "$(tail -n 3 "$KORA_HOME/stick.log")" ;;
    esac
}

# stick_serve: starts the server for the stick on the first free port from 1234 on, and gives STICK_PORT and
# STICK_SERVER; fails with the reason in STICK_FAULT.
stick_serve() {
    local port deadline
    for ((port = KORA_STICK_FIRST_PORT; port < KORA_STICK_FIRST_PORT + KORA_STICK_PORTS; port++)); do
        port_listens "$port" && continue
        rtl_tcp -a 127.0.0.1 -p "$port" >"$KORA_HOME/stick.log" 2>&1 </dev/null &
        STICK_SERVER=$! STICK_PORT=$port deadline=$((SECONDS + 15))
        until port_listens "$port"; do
            if ! kill -0 "$STICK_SERVER" 2>/dev/null; then
                wait "$STICK_SERVER" || true
                STICK_SERVER=
                # Somebody was faster.
                if grep -qi 'address already in use' "$KORA_HOME/stick.log"; then continue 2; fi
                STICK_FAULT=$(server_fault)
                return 1
            fi
            if [ $SECONDS -ge $deadline ]; then
                stick_stop
                STICK_FAULT="the server did not come up in 15 s; $KORA_HOME/stick.log says more"
                return 1
            fi
            sleep 0.1
        done
        return 0
    done
    STICK_FAULT="all ports from $KORA_STICK_FIRST_PORT to $((port - 1)) are in use; \`sudo ss -ltnp\` names the programs that have them"
    return 1
}

stick_stop() {
    [ -n "${STICK_SERVER:-}" ] || return 0
    kill "$STICK_SERVER" 2>/dev/null || true
    wait "$STICK_SERVER" 2>/dev/null || true
    STICK_SERVER=
}

# antenna_choose WHAT…: as the handset's command line has it.
antenna_choose() {
    handset_exe antenna "$@" >"$KORA_HOME/antenna.log" 2>&1 || fail "the antenna could not be chosen:
$(tr -d '\r' <"$KORA_HOME/antenna.log")"
}

antenna_text() {
    handset_exe antenna >"$KORA_HOME/antenna.log" 2>&1 || return 0
    sed -n 's/^antenna  *//p' "$KORA_HOME/antenna.log" | tr -d '\r'
}

# The server of a stick that this script chose, here or in a run that was broken off, is none to be kept.
antenna_forget() {
    [ -f "$KORA_HOME/stick.antenna" ] || return 0
    case $(antenna_text) in "$(<"$KORA_HOME/stick.antenna")"*) antenna_choose band ;; esac
    rm -f "$KORA_HOME/stick.antenna"
}

# antenna_stick: receives with the stick on the bus; fails with the reason in STICK_FAULT when it cannot be used.
antenna_stick() {
    command -v rtl_tcp >/dev/null || packages_need "${KORA_STICK_PACKAGES[@]}"
    STICK_FAULT=$(stick_obstacle) && return 1
    stick_serve || return 1
    printf 'rtl_tcp:127.0.0.1:%d\n' "$STICK_PORT" >"$KORA_HOME/stick.antenna"
    antenna_choose "rtl_tcp:127.0.0.1:$STICK_PORT"
    step "receiver stick found: $STICK_NAME; its server runs on port $STICK_PORT and ends with the handset"
    host_plays || step "no sound: this machine has neither a sound server nor a sound card; \`pulseaudio --start\` starts one where it is installed"
}

# antenna_begin WHAT: what `./kora run` receives with. Empty: a stick that is plugged in, else what was chosen before.
antenna_begin() {
    local chosen
    antenna_forget
    case $1 in
        '')
            chosen=$(antenna_text)
            if [ -n "$chosen" ] && [ "$chosen" != 'the simulated band' ]; then
                step "antenna: $chosen, as chosen before; \`--antenna band\` goes back"
            elif ! stick_find; then
                step 'no receiver stick is plugged in: the simulated band plays; `--antenna ether` shows the radio on real signals'
            elif ! antenna_stick; then
                step "receiver stick found: $STICK_NAME, but $STICK_FAULT. The simulated band plays"
            fi
            ;;
        stick)
            stick_find || fail 'no receiver stick is plugged in (`lsusb` lists what is); `--antenna rtl_tcp:HOST:PORT` takes one of another machine'
            antenna_stick || fail "receiver stick found: $STICK_NAME, but $STICK_FAULT"
            ;;
        *)
            antenna_choose "$1"
            step "antenna: $(antenna_text)"
            ;;
    esac
}

# What was started for the handset ends with it; what was chosen by hand stays chosen.
antenna_end() {
    handset_exe ether stop >"$KORA_HOME/antenna.log" 2>&1 || true
    [ -z "${STICK_SERVER:-}" ] || antenna_forget
    stick_stop
}
