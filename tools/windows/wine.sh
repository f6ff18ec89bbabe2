#!/bin/bash
# Runs a program for Windows under wine: wine.sh PROGRAM [ARGUMENT ...]. Each display has a Windows of its own, in
# build/windows/wine, whose fonts are those of Debian. Beside the program libraries come from where they were made.
root=$(cd "$(dirname "$0")/../.." && pwd) || exit 1
export WINEPREFIX=$root/build/windows/wine/${DISPLAY:-none} WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES=mscoree,mshtml=

# Windows' own drawing of text and windows needs no display while it is set up, and takes a long way without one.
set_up() {
    local font
    mkdir -p "$WINEPREFIX" && wine winecfg -v win10 || return 1
    for font in "Segoe UI" "MS Shell Dlg" "MS Shell Dlg 2" Tahoma Arial; do
        wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "DejaVu Sans" /f || return 1
    done
    wineserver -k -w
    touch "$WINEPREFIX/.ready"
}
[ -e "$WINEPREFIX/.ready" ] || set_up >/dev/null 2>&1 </dev/null || { echo "wine can't be set up in $WINEPREFIX" >&2; exit 1; }

# wine hides the variables of Linux' own Qt from its programs; what is meant for these bears its prefix.
while read -r name; do export "WINE$name=${!name}"; done < <(compgen -e QT_)
runtime=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
windows() { local path=$1; printf 'Z:%s' "${path//\//\\}"; }
export WINEPATH
WINEPATH="$(windows "$runtime");$(windows /usr/x86_64-w64-mingw32/lib);$(windows "$root/build/windows/libraries/qt6-base/bin")"
WINEPATH+=";$(windows "$root/build/windows/libraries/libsdl2/bin")"
exec wine "$@"
