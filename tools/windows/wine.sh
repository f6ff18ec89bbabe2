#!/bin/bash
# Runs a program for Windows under wine: wine.sh PROGRAM [ARGUMENT ...]. The Windows it runs on stands in $WINEPREFIX, or
# in build/windows/wine; one display each. Its fonts are those of Debian.
root=$(cd "$(dirname "$0")/../.." && pwd) || exit 1
export WINEPREFIX=${WINEPREFIX:-$root/build/windows/wine/tests} WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES=mscoree,mshtml=

set_up() {
    local font
    mkdir -p "$WINEPREFIX" && wine winecfg -v win10 || return 1
    for font in "Segoe UI" "MS Shell Dlg" "MS Shell Dlg 2" Tahoma Arial; do
        wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "DejaVu Sans" /f || return 1
    done
    wineserver -k -w
    touch "$WINEPREFIX/.ready"
}
if [ ! -e "$WINEPREFIX/.ready" ]; then
    (unset DISPLAY; set_up) >/dev/null 2>&1 </dev/null || { echo "wine can't be set up in $WINEPREFIX" >&2; exit 1; }
fi

# wine keeps the variables of Linux' own Qt from its programs; what is meant for these bears its mark.
while read -r name; do export "WINE$name=${!name}"; done < <(compgen -e QT_)
# A program that has just been built finds its libraries where they were made; a packed one has them beside it.
case $(realpath "$1") in
    "$root"/build/windows/program/*)
        runtime=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
        for place in "$runtime" /usr/x86_64-w64-mingw32/lib "$root"/build/windows/libraries/{qt6-base,libsdl2}/bin; do
            WINEPATH+="Z:${place//\//\\};"
        done
        export WINEPATH ;;
esac
exec wine "$@"
