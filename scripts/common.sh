# What ./run and ./test share: the Debian packages they need, and configuring a build.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# To build and run the editor.
run_packages=(
    g++ cmake ninja-build
    qt6-base-dev qt6-serialport-dev qt6-svg-dev
    libcli11-dev nlohmann-json3-dev
)

# Without an X server, Qt needs its own part for Wayland.
if [[ -n ${WAYLAND_DISPLAY:-} && -z ${DISPLAY:-} ]]; then
    run_packages+=(qt6-wayland)
fi

# To build and run the tests as well.
# shellcheck disable=SC2034  # used by ./test
test_packages=(
    "${run_packages[@]}"
    ccache clang-format clang-tidy
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xauth xdotool xclip poppler-utils
    shellcheck desktop-file-utils appstream
)

say() { printf '%s\n' "$*"; }

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# Prints those of the given packages that are not installed.
missing_packages() {
    local installed
    # dpkg-query fails when it does not know a package, but still prints the others.
    # shellcheck disable=SC2016  # the field names are dpkg-query's own
    installed=$(dpkg-query --show --showformat='${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
    local package
    for package in "$@"; do
        grep -qxF "$package installed" <<<"$installed" || say "$package"
    done
}

# Runs a command as root. Asks for a password only where somebody can type one.
as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    elif sudo -n true 2>/dev/null; then
        sudo -n "$@"
    elif [[ -t 0 && -t 2 ]] && command -v sudo >/dev/null; then
        sudo "$@"
    else
        return 1
    fi
}

apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=120 \
        -o Dpkg::Options::=--force-confdef -o Dpkg::Options::=--force-confold "$@" </dev/null
}

# Installs those of the given packages that are missing; ends the program with a list when that cannot be done.
install_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "This is not a Debian system, so its packages are not checked. Needed are: $*"
        return
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [[ ${#missing[@]} -eq 0 ]] && return

    say "Installing ${missing[*]}"
    apt_get update || true
    apt_get install --no-install-recommends "${missing[@]}" || true

    mapfile -t missing < <(missing_packages "$@")
    if [[ ${#missing[@]} -gt 0 ]]; then
        fail "These packages are missing and could not be installed:

    ${missing[*]}

Install them as root, then start again:

    apt-get update && apt-get install ${missing[*]}"
    fi
}

# True when the preset's build folder is ready to build. One that was copied or moved with the project is not, nor one
# from before the presets last changed.
is_configured() {
    local folder=$root/build/$1
    [[ $folder/build.ninja -nt $root/CMakePresets.json ]] &&
        grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"
}

# configure PRESET
configure() {
    local preset=$1 fresh=()
    is_configured "$preset" || fresh=(--fresh)
    (cd "$root" && cmake --preset "$preset" "${fresh[@]}")
}
