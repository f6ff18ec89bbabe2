#!/bin/bash
# Makes Qt and SDL for Windows from Debian's sources, into build/windows/libraries, and gathers the licences that go
# with them, into build/windows/licences. Qt takes half an hour, once: while version, options, toolchain and compiler
# stay the same, a call costs nothing and needs no network. Both may be copied from clone to clone.
# Ends with status 77 where the sources can't be had; the last line says why.
set -u
cd "$(dirname "$0")/../.." || exit 1
. tools/packages.sh
need BUILD TEST WINDOWS
here=$PWD/tools/windows out=$PWD/build/windows
mkdir -p "$out/sources" "$out/log" || exit 1

# The version that this machine has itself: Qt runs its tools while it is built.
version_of() {
    case $1 in
        qt6-base) dpkg-query -W -f '${source:Version}' qt6-base-dev ;;
        libsdl2) dpkg-query -W -f '${source:Version}' libsdl2-dev ;;
    esac 2>/dev/null
}
dsc_of() { printf '%s' "$out/sources/$1_$(version_of "$1" | sed 's/^[0-9]*://').dsc"; }

# All that decides what a library becomes; comments don't.
recipe_of() {
    { version_of "$1"; dpkg-query -W -f '${Version}\n' g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev
      sed '/^ *#/d' "$here/$1.cmake" "$here/toolchain.cmake"; } | sha256sum | cut -d ' ' -f 1
}

# apt with lists and a state of its own, made from the machine's; those are left as they are.
sources_apt() {
    apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$out/apt/parts" -o Dir::State::Lists="$out/apt/lists" \
        -o Dir::Cache="$out/apt/cache" -o APT::Sandbox::User="$(id -un)" "$@"
}
list_sources() {
    local list
    rm -rf "$out/apt" && mkdir -p "$out"/apt/{parts,got,lists/partial,cache/archives/partial} || return 1
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
        grep -qsiE 'debian|ubuntu' "$list" || continue  # others have no business here
        case $list in
            *.sources) sed 's/^Types:.*/Types: deb-src/' "$list" ;;
            *.list) sed -n 's/^deb[[:blank:]]/deb-src /p' "$list" ;;
        esac >"$out/apt/parts/${list##*/}"
    done
    sources_apt update
}

# fetch SOURCE: its files are in build/windows/sources; apt has compared their sums with the signed list.
fetch() {
    local version log=$out/log/fetch-$1.log
    version=$(version_of "$1")
    [ -n "$version" ] || { say "skipped: only Debian and its kin have the sources of $1"; exit 77; }
    [ -e "$(dsc_of "$1")" ] && return 0
    if ! { list_sources && (cd "$out/apt/got" && sources_apt source --download-only "$1=$version" && mv ./* "$out/sources/"); } \
        >"$log" 2>&1 </dev/null; then
        rm -rf "$out/apt"
        say "skipped: the sources of $1 $version can't be had from this machine's mirrors ($log)"
        exit 77
    fi
    rm -rf "$out/apt"
}

# unpack SOURCE FOLDER: with Debian's patches, among them those for known holes. All or nothing.
unpack() {
    [ -d "$2" ] && return 0
    rm -rf "$2.part"
    quietly "$out/log/unpack-$1.log" dpkg-source -x "$(dsc_of "$1")" "$2.part" && mv "$2.part" "$2"
}

# make_library SOURCE: an interrupted build goes on where it was.
make_library() {
    local recipe work start=$SECONDS place=$out/libraries/$1
    recipe=$(recipe_of "$1") work=$out/work/$1-${recipe:0:12}
    [ "$(cat "$place/.recipe" 2>/dev/null)" = "$recipe" ] && { say "ok      $1 (as it was)"; return 0; }
    fetch "$1"
    say "Building $1 $(version_of "$1") for Windows..."
    [ -d "$work" ] || rm -rf "$out/work/$1-"*
    rm -rf "$place"
    mkdir -p "$work" && unpack "$1" "$work/source" || return 1
    # Another recipe is another folder, and most of what it compiles is the same.
    export CCACHE_BASEDIR=$work CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros
    quietly "$out/log/$1-configure.log" nice cmake -C "$here/$1.cmake" -S "$work/source" -B "$work/build" -G Ninja \
        --toolchain "$here/toolchain.cmake" -DCMAKE_INSTALL_PREFIX="$place" \
        -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache &&
        quietly "$out/log/$1-build.log" nice cmake --build "$work/build" -j "$(nproc)" &&
        quietly "$out/log/$1-install.log" cmake --install "$work/build" || return 1
    printf '%s\n' "$recipe" >"$place/.recipe"
    rm -rf "$work"
    say "ok      $1 ($((SECONDS - start)) s, $(du -sh "$place" | cut -f 1))"
}

# The licences stand in the sources, which are unpacked for it once more.
gather_licences() {
    local recipe work=$out/work/licences
    recipe=$(cat "$out"/libraries/*/.recipe "$here"/* tools/packages.sh LICENSE packaging/windows/LICENCAS.txt | sha256sum)
    [ "$(cat "$out/licences.made" 2>/dev/null)" = "$recipe" ] && return 0
    fetch qt6-base
    fetch libsdl2
    rm -rf "$work" && mkdir -p "$work" && unpack qt6-base "$work/qt6-base" && unpack libsdl2 "$work/libsdl2" || return 1
    quietly "$out/log/licences.log" python3 "$here/licences.py" "$work" "$out/licences" || return 1
    printf '%s\n' "$recipe" >"$out/licences.made"
    rm -rf "$work"
    say "ok      licences ($(find "$out/licences" -type f | wc -l) files)"
}

make_library libsdl2 && make_library qt6-base && gather_licences
