# The packages the project needs on Debian and Ubuntu, and how they get there. Sourced by
# ./play, ./check and the long checks:   . tools/packages.sh; need BUILD RUN
# dpkg is asked first, so a machine that has everything fetches nothing.
# shellcheck shell=bash disable=SC2034

export PYTHONDONTWRITEBYTECODE=1  # the checks leave nothing beside the sources

BUILD_PACKAGES="g++ cmake ninja-build qt6-base-dev libsdl2-dev"
RUN_PACKAGES="qt6-translations-l10n fonts-dejavu-core"
# For a machine without a display: an X server that is served over VNC.
VNC_PACKAGES="tigervnc-standalone-server tigervnc-tools openbox xauth"
TEST_PACKAGES="ccache libgtest-dev libgmock-dev git python3-minimal libpython3-stdlib xvfb xauth openbox xdotool imagemagick
    x11-utils x11-xserver-utils python3-xlib procps iproute2 fonts-dejavu-core qt6-translations-l10n desktop-file-utils appstream dpkg-dev file librsvg2-common"
BENCH_PACKAGES="libbenchmark-dev"
PACKAGE_CHECK_PACKAGES="lintian"
FUZZ_PACKAGES="clang libclang-rt-dev"
SOUND_PACKAGES="pulseaudio pulseaudio-utils"
TRACE_PACKAGES="strace"
BARE_PACKAGES="debootstrap git"
# The program for Windows: compiler, sources of the libraries, and what runs the result here.
WINDOWS_PACKAGES="g++-mingw-w64-x86-64-posix dpkg-dev googletest wine wine64 unzip"

say() { printf '%s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# The packages of a list that are not installed.
missing_packages() {
    local name
    for name in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || printf '%s ' "$name"
    done
}

# need LIST...: installs what is missing of the lists named (BUILD RUN VNC TEST ...).
need() {
    local list wanted='' missing name root=''
    for list in "$@"; do
        name=${list}_PACKAGES
        wanted+=" ${!name}"
    done
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        [ -n "${FENTO_PACKAGES_SAID:-}" ] || say "Not a Debian system: these packages must be there:$wanted"
        FENTO_PACKAGES_SAID=1
        return 0
    fi
    # shellcheck disable=SC2086
    missing=$(missing_packages $wanted)
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "Please install as root: apt-get install $missing"
        root="sudo"
    fi
    say "Installing: $missing"
    mkdir -p build
    # A foreign source that can't be reached must not stop us; what counts is the installation.
    # shellcheck disable=SC2086
    if ! { $root apt-get update -qq || true
           $root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
         } >build/setup.log 2>&1 </dev/null; then
        tail -n 20 build/setup.log >&2
        fail "The packages could not be installed; the whole log is build/setup.log."
    fi
}

# quietly LOG COMMAND...: runs it with its output in a file; shows the end of it if it fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null && return 0
    tail -n 40 "$log" >&2
    say "Failed: $* (whole log: $log)" >&2
    return 1
}

# build_preset NAME TARGET...: configures only when there is something new, builds in silence.
build_preset() {
    local preset=$1
    shift
    quietly "build/$preset-configure.log" cmake --preset "$preset" || return 1
    quietly "build/$preset-build.log" cmake --build --preset "$preset" ${1:+--target "$@"}
}
