#!/bin/bash
# Packs the program for Windows: build/windows/fento-lira-master-VERSION-windows.zip, and beside it the sources of all
# that is in it. Leaves the folder that players get unpacked in build/windows/player. Equal sources give equal files.
set -u
cd "$(dirname "$0")/../.." || exit 1
. tools/packages.sh
out=$PWD/build/windows
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=fento-lira-master-$version player="$out/player/Fento-Lira Master"
rm -rf "$out/player" "$out/$name"-*
quietly "$out/log/package.log" cmake --install "$out/program" --prefix "$player" || exit 1

# Every library that a program or library asks for lies beside the program or comes with Windows. What comes with it is
# told by the list of mingw-w64: it links against nothing else.
imports() { x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/.*DLL Name: //p'; }
system=$(ls /usr/x86_64-w64-mingw32/lib | sed -n 's/^lib\(.*\)\.a$/\1/p')
missing=$(find "$player" -name '*.exe' -o -name '*.dll' | while read -r file; do imports "$file"; done | sort -fu |
    while read -r library; do
        [ -e "$player/$library" ] || grep -qixF -e "${library%.*}" -e "$library" <<<"$system" || printf '%s\n' "$library"
    done)
[ -z "$missing" ] || { say "Neither beside the program nor part of Windows:" $missing; exit 1; }

moment=$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CMakeLists.txt)
find "$player" -exec touch -d "@$moment" {} +
(cd "$out/player" && find . -mindepth 1 | LC_ALL=C sort | TZ=UTC zip -q -X -9 -@ "$out/$name-windows.zip") || exit 1
pack() { tar --sort=name --mtime="@$moment" --owner=0 --group=0 --numeric-owner -C "$1" -cf "$out/$name-windows-sources.tar" "${@:2}"; }
git archive --format=tar.gz --prefix="$name/" -o "$out/sources/$name.tar.gz" HEAD &&
    pack "$out/sources" "$name.tar.gz" $(cd "$out/sources" && ls ./*.dsc ./*.debian.tar.* ./*.orig.tar.*) || exit 1
rm "$out/sources/$name.tar.gz"
for file in "$name-windows.zip" "$name-windows-sources.tar"; do say "$file: $(stat -c %s "$out/$file") bytes"; done
say "unpacked: $(du -sb "$player" | cut -f 1) bytes in $(find "$player" -type f | wc -l) files"
