#!/bin/bash
# Every include points down. Each line below lists folders from top to bottom: a folder includes its own headers and
# those of the folders behind it, or what was generated from itself. main.cpp stands over all of them. The toolkit stays
# in platform/qt.
set -u
cd "$(dirname "$0")/../src" || exit 1
base="platform/controls platform/drawing platform/system"
floors="play browser shell core/board core $base
platform/qt platform/qt/widgets platform/qt/pictures platform/qt/sound $base
platform/headless $base"
bad=0
while read -ra folders; do
    while [ ${#folders[@]} -gt 0 ]; do
        allowed=$(IFS='|' && echo "${folders[*]}")
        up=$(grep -HnE '^ *# *include *"' "${folders[0]}"/*.cpp "${folders[0]}"/*.h | grep -vE "\"(($allowed)/[^/]+|[a-z_]+\.moc)\"")
        [ -z "$up" ] || { echo "$up"; bad=1; }
        folders=("${folders[@]:1}")
    done
done <<<"$floors"
comm -13 <(tr ' ' '\n' <<<"$floors" | sort -u) <(find . -mindepth 2 -name '*.cpp' -printf '%h\n' | cut -c3- | sort -u) |
    grep . && { echo "has no floor"; bad=1; }
grep -rnE '# *include *[<"](Q|q[a-z]+\.h|SDL)' . | grep -v '^./platform/qt/' && { echo "is the toolkit's"; bad=1; }
exit $bad
