#!/bin/bash
# Every header compiles alone. The build proves it of those that a source includes before anything else; the others
# are compiled here.
set -u
cd "$(dirname "$0")/../src" || exit 1
proved=$(find . -name '*.cpp' -exec grep -hm1 '^#include' {} + | sed -n 's/^#include "\(.*\)"/\1/p')
bad=0
while read -r header; do
    grep -qxF "$header" <<<"$proved" && continue
    "${CXX:-g++}" -std=c++20 -I. -Wall -Wextra -Werror -fsyntax-only -x c++ - <<<"#include \"$header\"" ||
        { echo "$header does not compile alone"; bad=1; }
done < <(find . -name '*.h' -printf '%P\n' | sort)
exit $bad
