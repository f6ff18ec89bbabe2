#!/bin/bash
# The desktop entry and the metainfo are what desktops and shops expect.
set -u
cd "$(dirname "$0")/../packaging" || exit 1
bad=0
info=example.fento_lira.fento_lira_master.metainfo.xml
desktop-file-validate fento-lira-master.desktop || bad=1
appstreamcli validate --no-net $info || bad=1
# One version everywhere.
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' ../CMakeLists.txt)
grep -q "release version=\"$version\"" $info || { echo "metainfo: not version $version"; bad=1; }
grep -q "^fento-lira-master ($version-" changelog || { echo "changelog: not version $version"; bad=1; }
grep -q "^\.TH .*\"$version\"" fento-lira-master.6 || { echo "man page: not version $version"; bad=1; }
grep -q "^## $version" ../CHANGELOG.md || { echo "CHANGELOG.md: no version $version"; bad=1; }
exit $bad
