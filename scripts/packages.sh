# shellcheck shell=bash disable=SC2034
# The Debian packages the project needs, and how they get onto the machine.
# "a|b" means that either will do and that a is installed when there is neither: a full
# LibreOffice that is already there is used as it is.

build_packages=(
    cmake ninja-build g++ 'pkg-config|pkgconf'
    qt6-base-dev libqpdf-dev libsqlite3-dev libreoffice-dev
    libseccomp-dev libfontconfig-dev
)
run_packages=(
    'libreoffice-writer-nogui|libreoffice-writer'
    'libreoffice-calc-nogui|libreoffice-calc'
    'libreoffice-impress-nogui|libreoffice-impress'
    'libreoffice-draw-nogui|libreoffice-draw'
    ghostscript poppler-utils libqt6svg6 qt6-translations-l10n qt6-wayland xdg-utils
    'fonts-liberation|fonts-liberation2' fonts-dejavu fonts-opensymbol
    fonts-crosextra-carlito fonts-crosextra-caladea
)
test_packages=(
    python3 python3-jsonschema qpdf clang-format shellcheck
    xvfb openbox icewm xdotool dbus-daemon at-spi2-core python3-gi python3-xlib
    bash-completion man-db
    desktop-file-utils appstream shared-mime-info libglib2.0-bin librsvg2-bin
)

package_packages=(build-essential dpkg-dev debhelper fakeroot lintian)

# missing_packages ENTRY…: the packages to install, one a line.
missing_packages() {
    local entry name names installed
    read -ra names <<<"${*//|/ }"
    # shellcheck disable=SC2016 # the variables are dpkg-query's own
    installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${names[@]}" 2>/dev/null) || true
    for entry in "$@"; do
        for name in ${entry//|/ }; do
            case $'\n'$installed$'\n' in *$'\n'"$name installed"$'\n'*) continue 2 ;; esac
        done
        printf '%s\n' "${entry%%|*}"
    done
}

# ensure_packages ENTRY…: installs what is missing, and says so.
ensure_packages() {
    local missing=()
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        complain "This machine has no apt. Quorlin needs what Debian calls: ${*%%|*}"
        return 0
    fi
    mapfile -t missing < <(missing_packages "$@")
    [ "${#missing[@]}" -eq 0 ] || install_packages "${missing[@]}"
}

# install_packages NAME…: through apt, as root or with sudo; ends the script when neither works.
install_packages() {
    local as_root=() command="apt-get install --no-install-recommends $*"
    local advice="Install by hand, then run this again:  sudo apt-get update && sudo $command"
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        command -v sudo >/dev/null ||
            die "Missing packages, and neither root nor sudo to install them. As root, run:" \
                "  apt-get update && $command"
    fi
    say "Installing through apt${as_root[0]:+ with sudo}: $*"
    as_root+=(env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
    logged apt-update "Trying to install with the package lists as they are." \
        "${as_root[@]}" update || true
    logged apt-install "$advice" "${as_root[@]}" install -y --no-install-recommends "$@" || exit 1
}
