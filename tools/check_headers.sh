#!/bin/bash
# Every header compiles on its own. Those of platform/qt need the toolkit's flags and are left out.
set -u
cd "$(dirname "$0")/.." || exit 1
stamp=$PWD/build/check/headers.sum
mkdir -p build/check
cd src || exit 1
# shellcheck disable=SC2016
one() {
    echo "#include \"$1\"" | "${CXX:-g++}" -std=c++20 -I. -Wall -Wextra -Werror -fsyntax-only -x c++ - && return
    echo "$1 does not compile alone"
    exit 255
}
export -f one
mapfile -t headers < <(find core play browser shell platform -name '*.h' -not -path 'platform/qt/*' | sort)
# Nothing has changed since the last good run: nothing to do.
sum=$(sha256sum "${headers[@]}" | sha256sum)
[ "$(cat "$stamp" 2>/dev/null)" = "$sum" ] && { echo "${#headers[@]} headers, unchanged"; exit 0; }
printf '%s\0' "${headers[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c 'one "$0"' || exit 1
echo "$sum" >"$stamp"
echo "${#headers[@]} headers"
