# The package for Debian and what descends from it. Sourced by package.sh.

# The version that the program itself tells.
kora_version() { sed -n 's/^FILEVERSION \([0-9]*\), \([0-9]*\), \([0-9]*\), .*/\1.\2.\3/p' "$KORA_ROOT/resources/ui.rc"; }

# joined WORD…: with commas.
joined() { local IFS=,; printf '%s' "${*//,/}" | sed 's/,/, /g'; }

# deb_libraries PROGRAM: the packages of the libraries that it is linked to, with the versions from which they will do.
deb_libraries() {
    local folder
    folder=$(mktemp -d)
    # It looks for the sources' own description of a package, and needs nothing of it.
    mkdir "$folder/debian" && : >"$folder/debian/control"
    (cd "$folder" && dpkg-shlibdeps -O -e"$1") | sed -n 's/^shlibs:Depends=//p'
    rm -r "$folder"
}

# deb_control KIBIBYTES LIBRARIES
deb_control() {
    cat <<TEXT
Package: kora
Version: $(kora_version)
Architecture: amd64
Maintainer: $KORA_MAINTAINER
Installed-Size: $1
Depends: $(joined "${KORA_RUN_PACKAGES[@]}"), $2
Recommends: rtl-sdr, xvfb
Section: sound
Priority: optional
Description: FM radio on its handset
 Kora is an FM radio for a telephone of the year 2008, and the telephone under
 it, drawn around its display. It tunes, seeks, shows names and texts of
 stations (RDS), keeps channels in groups, scans the band, and records to AMR
 and WAV files, by hand or at booked times.
 .
 It plays a simulated band, or what is really on the air with a receiver stick
 in the USB port.
TEXT
}

# deb_documents FOLDER: as the distribution wants them: one file of licences, and a list of changes.
deb_documents() {
    {
        cat "$1/LICENSE"
        echo
        cat "$1/THIRD-PARTY.md"
        printf '\nThe texts are in the folder "notices" beside this file; those of the GNU licences are on every Debian in\n'
        printf '/usr/share/common-licenses/GPL-3 and /usr/share/common-licenses/LGPL-2.1.\n'
    } >"$1/copyright"
    chmod 644 "$1/copyright"
    rm "$1/LICENSE" "$1/THIRD-PARTY.md" "$1/notices/GPL-3.txt"
    printf 'kora (%s) unstable; urgency=medium\n\n  * As it was built.\n\n -- %s  %s\n' "$(kora_version)" \
        "$KORA_MAINTAINER" "$(date -R -d "@${SOURCE_DATE_EPOCH:-$(date +%s)}")" | gzip -9 -n >"$1/changelog.gz"
}

# package_deb STAGE FILE
package_deb() {
    umask 022
    install_tree "$1/usr" /usr
    deb_documents "$1/usr/share/doc/kora"
    mkdir "$1/DEBIAN"
    local libraries
    libraries=$(deb_libraries "$1/usr/lib/kora/kora-magnifier")
    [ -n "$libraries" ] || fail "the packages of the magnifier's libraries are not known"
    deb_control "$(du -sk "$1/usr" | cut -f1)" "$libraries" >"$1/DEBIAN/control"
    (cd "$1" && find usr -type f -print0 | sort -z | xargs -0 md5sum) >"$1/DEBIAN/md5sums"
    chmod -R u=rwX,go=rX "$1"
    dpkg-deb --root-owner-group --build "$1" "$2" >"$1.log" 2>&1 || { cat "$1.log" >&2; fail "the package could not be written"; }
    rm -f "$1.log"
}
