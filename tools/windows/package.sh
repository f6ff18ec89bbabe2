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
quietly "$out/log/install.log" cmake --install "$out/program" --prefix "$player" || exit 1

# Every library that a program or library asks for lies beside the program or comes with Windows: those that mingw-w64
# links against, and the names under which Windows 10 has its own parts.
imports() { x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/.*DLL Name: //p'; }
system=$(ls /usr/x86_64-w64-mingw32/lib | sed -n 's/^lib\(.*\)\.a$/\1/p')
missing=$(find "$player" -name '*.exe' -o -name '*.dll' | while read -r file; do imports "$file"; done | sort -fu |
    grep -vi '^api-ms-win-core-' | while read -r library; do
        [ -e "$player/$library" ] || grep -qixF -e "${library%.*}" -e "$library" <<<"$system" || printf '%s\n' "$library"
    done)
[ -z "$missing" ] || { say "Neither beside the program nor part of Windows:" $missing; exit 1; }

moment=$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CMakeLists.txt)
# Not by zip, which does not mark names as UTF-8.
python3 - "$out/$name-windows.zip" "$out/player" "$moment" <<'END' || exit 1
import sys, time, zipfile
from pathlib import Path
with zipfile.ZipFile(sys.argv[1], "w", zipfile.ZIP_DEFLATED, compresslevel=9) as pack:
    for path in sorted(path for path in Path(sys.argv[2]).rglob("*") if path.is_file()):
        entry = zipfile.ZipInfo(path.relative_to(sys.argv[2]).as_posix(), time.gmtime(int(sys.argv[3]))[:6])
        entry.external_attr = (0o100755 if path.suffix in (".exe", ".dll") else 0o100644) << 16
        pack.writestr(entry, path.read_bytes(), zipfile.ZIP_DEFLATED)
END
pack() { tar --sort=name --mtime="@$moment" --owner=0 --group=0 --numeric-owner -C "$1" -cf "$out/$name-windows-sources.tar" "${@:2}"; }
git archive --format=tar.gz --prefix="$name/" -o "$out/sources/$name.tar.gz" HEAD &&
    pack "$out/sources" "$name.tar.gz" $(cd "$out/sources" && ls ./*.dsc ./*.debian.tar.* ./*.orig.tar.*) || exit 1
rm "$out/sources/$name.tar.gz"
for file in "$name-windows.zip" "$name-windows-sources.tar"; do say "$file: $(stat -c %s "$out/$file") bytes"; done
say "unpacked: $(du -sb "$player" | cut -f 1) bytes in $(find "$player" -type f | wc -l) files"
