# Shared by ./run and ./test: what the system must have, and how to get it.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

base_packages=(
    g++ cmake ninja-build ccache pkg-config
    qtbase5-dev qtbase5-dev-tools qtbase5-private-dev
    libgl-dev libopengl-dev libgl1-mesa-dri
    libx11-dev libxtst-dev libxcb1-dev zlib1g-dev
    xvfb xauth fonts-dejavu-core
)
test_packages=(
    qt6-base-dev qt6-base-dev-tools qt6-base-private-dev libqt6opengl6-dev
    libgtest-dev libgmock-dev libbenchmark-dev libmypaint-dev
    clang-format clang-tidy
)

say() { printf '%s\n' "== $*"; }

# Installs those of the named Debian packages that are missing; says so when it cannot.
need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    say "installing: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing and there is no sudo to install them: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# configure PRESET [CMAKE ARGUMENTS...]: only when the build folder is new or was set up otherwise.
configure() {
    local preset=$1
    shift
    cmake --preset "$preset" "$@" >"$root/build/$preset.configure.log" 2>&1 || {
        cat "$root/build/$preset.configure.log" >&2
        return 1
    }
}

# with_display COMMAND...: on a virtual display of its own. The X server picks its number itself
# and the programs find Mesa's software renderer whatever the machine has.
with_display() {
    LIBGL_ALWAYS_SOFTWARE=1 QT_QPA_PLATFORM=xcb XDG_SESSION_TYPE=x11 \
        xvfb-run -a -s "-screen 0 1600x1200x24 +extension GLX +extension XTEST" "$@"
}
