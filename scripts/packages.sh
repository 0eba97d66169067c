# What has to be on the machine. Sourced.

KORA_BUILD_PACKAGES=(cmake ninja-build googletest g++-mingw-w64-x86-64-posix librsvg2-bin imagemagick wine64 fonts-wine dpkg-dev tcl make gcc libc6-dev nlohmann-json3-dev)
KORA_DISPLAY_PACKAGES=(xvfb x11-utils imagemagick)
# An installed radio needs these alone, and xvfb to be shown enlarged; fonts-wine has the device's own font, Tahoma, and
# x11-utils shows the messages of a start without a terminal.
KORA_RUN_PACKAGES=(wine64 fonts-wine x11-utils)
KORA_PACKAGE_PACKAGES=(zip librsvg2-bin dpkg-dev)
KORA_MAINTAINER="Kora developers <kora@users.noreply.github.com>"
KORA_TEST_PACKAGES=(clang xdotool libclang-rt-dev g++-mingw-w64-i686-posix ffmpeg sqlite3 desktop-file-utils zip unzip lintian libunicorn-dev libxml2-utils jq python3)
KORA_MAGNIFIER_PACKAGES=(cmake ninja-build g++ libxcb1-dev libxcb-xtest0-dev xvfb x11-utils)
KORA_RECEPTION_PACKAGES=(cmake ninja-build g++ gcc make libc6-dev dpkg-dev)
KORA_COVERAGE_PACKAGES=(gcovr)

# Of what apt says: how much there is to do, and in quarters how much of it is done.
install_progress() {
    local line all=0 steps=0 quarter=0
    while read -r line; do
        case $line in
            *' newly installed, '*) line=${line#*upgraded, }; all=${line%% *} ;;
            'Need to get '*) steps=0; printf '   %d packages, %s to fetch\n' "$all" "$(cut -d' ' -f4,5 <<<"$line")" ;;
            Get:* | Unpacking* | 'Setting up'*)  # the three steps of a package
                steps=$((steps + 1))
                if [ "$all" -gt 0 ] && [ $((steps * 4)) -ge $(((quarter + 1) * all * 3)) ]; then
                    quarter=$((quarter + 1))
                    printf '   %d %%\n' $((25 * quarter))
                fi ;;
        esac
    done >&2
}

# packages_need NAME…: installs those that are missing, as root or through sudo, and says so.
packages_need() {
    local missing=() name
    for name in "$@"; do
        dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'install ok installed' || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "these packages are missing and neither root nor sudo is at hand: ${missing[*]}"
        root=(sudo)
    fi
    step "installing ${missing[*]}"
    mkdir -p "$KORA_HOME"
    local log=$KORA_HOME/install.log
    { "${root[@]}" apt-get update -q &&
      "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
    } 2>&1 | tee "$log" | install_progress || fail "the installation failed; the last lines of $log say why:
$(tail -n 5 "$log")"
}
