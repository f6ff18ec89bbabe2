#!/bin/bash
# Builds the Debian package and looks at it: what it holds, what lintian says, and that it can be
# unpacked into a tree from which the program starts. `tools/check_bare.sh` installs it for real.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh
need BUILD RUN TEST PACKAGE_CHECK
build_preset release || exit 1
rm -rf build/package && mkdir -p build/package
# CPack can't pack names with accents in the C locale.
(umask 022 && cd build/package && LC_ALL=C.UTF-8 quietly cpack.log cpack --config ../release/CPackConfig.cmake) || exit 1
deb=$(ls build/package/*.deb)
bad=0
holds() { dpkg-deb -c "$deb" | awk '{print $6}' | grep -qx "\./usr/$1" || { say "The package lacks usr/$1"; bad=1; }; }
for path in games/fento-lira-master share/fento-lira-master/Puzzle.skn share/applications/fento-lira-master.desktop \
    share/metainfo/example.fento_lira.fento_lira_master.metainfo.xml share/man/man6/fento-lira-master.6.gz \
    share/doc/fento-lira-master/copyright share/doc/fento-lira-master/changelog.Debian.gz \
    share/icons/hicolor/scalable/apps/fento-lira-master.svg \
    share/icons/hicolor/16x16/apps/fento-lira-master.png share/icons/hicolor/32x32/apps/fento-lira-master.png \
    share/icons/hicolor/48x48/apps/fento-lira-master.png share/icons/hicolor/96x96/apps/fento-lira-master.png; do
    holds "$path"
done
dpkg-deb -x "$deb" build/package/tree
diff -r Imagens build/package/tree/usr/share/fento-lira-master/Imagens || { say "The package holds other pictures"; bad=1; }
dpkg-deb -f "$deb" Depends | grep -q libqt6widgets6 || { say "No dependency on the toolkit"; bad=1; }
lintian --fail-on error,warning --suppress-tags initial-upload-closes-no-bugs --allow-root "$deb" || bad=1
say "$(basename "$deb"): $(stat -c %s "$deb") bytes"
exit $bad
