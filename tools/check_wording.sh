#!/bin/bash
# Unfinished work and words that don't belong into what we publish.
set -u
cd "$(dirname "$0")/.." || exit 1
bad=0
self=':!tools/check_wording.sh'
hits() {  # hits "REASON" PATTERN [git grep options and paths]
    local reason=$1 found
    shift
    found=$(git grep -nIE "$@") || return 0
    printf '%s:\n%s\n' "$reason" "$found"
    bad=1
}
hits "Unfinished" -e '\b(TODO|FIXME|XXX|HACK)\b' -- . "$self"
hits "Speaks of a paper instead of the program" -iw -e 'spe[c]|spe[c]s|spe[c]ification|the original program|helper sessio[n]' -- . "$self"
hits "Counts paragraphs of a paper" -e '\bParts? [1-4]\.[0-9]' -- . "$self"
hits "Tabs in sources" -P -e '\t' -- '*.h' '*.cpp' '*.txt' '*.cmake' ':!tests/golden'
hits "Blanks at a line's end" -e '[[:blank:]]+$' -- '*.h' '*.cpp' '*.sh' '*.cmake' '*.py'
hits "Rounding goes by numbers.h" -w -e 'lround|lrint|llround' -- '*.h' '*.cpp' ':!src/platform/qt' ':!tools'
hits "Compiled by hand only" -e '^(<<<<<<<|>>>>>>>) ' -- .
exit $bad
