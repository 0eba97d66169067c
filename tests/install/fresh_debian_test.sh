#!/usr/bin/env bash
# Installs the package by apt in a Debian of its own that holds nothing but the base system, lets the radio live there as a
# user's, and removes it again. By hand: it wants to be root, the program debootstrap, some 300 MB of packages from the
# distribution's server (its address may be given), 1.5 GB of disk for a while, and a quarter of an hour.
# usage: fresh_debian_test.sh FOLDER-OF-PROGRAMS [SERVER]
set -uo pipefail
KORA_PROGRAMS=$1 SERVER=${2:-} SUITE=PackageInAFreshDebian
WORK=$(mktemp -d)
USER_HOME=$WORK/home
. "$(dirname "${BASH_SOURCE[0]}")/checks.sh"
DEB=$WORK/kora.deb ROOT=$WORK/debian
inside() { chroot "$ROOT" env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
# As Ada, who has an account there, on the display of this machine.
as_ada() {
    chroot --userspec=ada:ada "$ROOT" env -i HOME=/home/ada PATH=/usr/bin:/bin:/usr/games LANG=C.UTF-8 DISPLAY="$DISPLAY" \
        XAUTHORITY=/home/ada/.Xauthority KORA_HOSTSOUND=0 KORA_TUNERLOG='\tuner.log' "$@" </dev/null
}
clean_up() {
    local server
    # Wine's server of that Debian is known by its root.
    for server in /proc/[0-9]*/root; do
        [ "$(readlink "$server")" = "$ROOT" ] && kill "$(basename "$(dirname "$server")")" 2>/dev/null
    done
    sleep 1
    umount "$ROOT/tmp/.X11-unix" "$ROOT/dev" "$ROOT/proc" 2>/dev/null
    mountpoint -q "$ROOT/proc" || rm -rf --one-file-system "$WORK"
}
trap clean_up EXIT
[ "$(id -u)" -eq 0 ] || { echo "to make a Debian of its own this has to run as root"; exit 2; }
command -v debootstrap >/dev/null || { echo "the package debootstrap is missing"; exit 2; }
[ -n "${DISPLAY:-}" ] || { echo "a display is missing: run it under xvfb-run"; exit 2; }

make_debian() {
    debootstrap --variant=minbase bookworm "$ROOT" ${SERVER:+"$SERVER"} >"$WORK/debootstrap.log" 2>&1 || { tail "$WORK/debootstrap.log"; return 1; }
    mount -t proc proc "$ROOT/proc" && mount --bind /dev "$ROOT/dev" && mkdir -p "$ROOT/tmp/.X11-unix" &&
        mount --bind /tmp/.X11-unix "$ROOT/tmp/.X11-unix" && inside useradd -m ada &&
        { [ -z "${XAUTHORITY:-}" ] || install -m 644 "$XAUTHORITY" "$ROOT/home/ada/.Xauthority"; }
}
# What is not the package manager's own book-keeping.
listing() { (cd "$ROOT" && find . -xdev \( -path ./var/lib/apt -o -path ./var/lib/dpkg -o -path ./var/cache -o -path ./var/log -o -path ./home -o -path ./tmp \) -prune -o -print | sort); }
install_by_apt() { cp "$DEB" "$ROOT/root/" && inside apt-get install -y --no-install-recommends /root/kora.deb; }
wine_is_there_because_of_it() { inside dpkg-query -W wine64 fonts-wine x11-utils libxcb-xtest0 && inside test -x /usr/bin/kora; }
radio_runs() { as_ada kora handset status | grep -q '^Radio *running'; }
starts() { as_ada kora start && wait_for 120 radio_runs; }
tuned() { grep -q '^SetChannel 9850 -> 0' "$ROOT/home/ada/.local/share/kora-handset/device/tuner.log"; }
type_frequency() { as_ada kora handset key 9 8 5 && wait_for 60 tuned; }
# Its libraries are there, the display that is recommended is not. The box with these words waits for somebody.
larger_it_wants_what_is_recommended() {
    local said
    said=$(as_ada timeout 20 kora run --size 2 2>&1)
    grep -qx 'kora: the phone cannot be shown 2 times as large without these packages: xvfb' <<<"$said" || { echo "$said"; return 1; }
}
lists_go_out() { as_ada kora handset channels export /home/ada/lists.json && grep -q '"Kora One"' "$ROOT/home/ada/lists.json"; }
uninstalls_for_the_user() { as_ada kora uninstall --all && [ ! -e "$ROOT/home/ada/.local/share/kora-handset" ]; }
remove_by_apt() { inside apt-get purge -y kora && inside apt-get autoremove -y --purge; }
nothing_of_it_is_left() { rm -f "$ROOT/root/kora.deb"; same "$before" "$(listing)"; }
dpkg_knows_nothing_of_it() { ! inside dpkg-query -W kora; }

mkdir -p "$USER_HOME"
copy_tree "$WORK/tree"
check IsPacked as_user "$WORK/tree/kora" package --no-build "$DEB"
check AFreshDebianIsMade make_debian
check ItsPackagesAreListed inside apt-get update
before=$(listing)
check IsInstalledByApt install_by_apt
check WhatItNeedsCameWithIt wine_is_there_because_of_it
check ItStarts starts
check TypedDigitsTune type_frequency
check TheChannelListsGoOutToAFile lists_go_out
check ShownLargerItWantsWhatIsRecommended larger_it_wants_what_is_recommended
check TheRadioCloses as_ada kora stop
check TheUsersHandsetIsRemoved uninstalls_for_the_user
check IsRemovedByApt remove_by_apt
check NothingOfItIsLeft nothing_of_it_is_left
check ThePackageManagerKnowsNothingOfIt dpkg_knows_nothing_of_it
finish
