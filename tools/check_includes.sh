#!/bin/bash
# Who may include what: the toolkit stays in platform/qt, lower folders don't know higher ones,
# rules and services don't know windows.
set -u
cd "$(dirname "$0")/.." || exit 1
cd src || exit 1
top=..
bad=0

# forbid "REASON" "PATTERN of an include" FILES...
forbid() {
    local reason=$1 pattern=$2 hits
    shift 2
    [ $# -gt 0 ] || return 0
    hits=$(grep -HnE "^[[:space:]]*#[[:space:]]*include[[:space:]]*$pattern" "$@")
    [ -n "$hits" ] || return 0
    printf '%s:\n%s\n' "$reason" "$hits"
    bad=1
}
sources() { find "$@" \( -name '*.h' -o -name '*.cpp' \) -print; }

# Windows: their headers, and the files that implement them, are those named by fento_windows.
mapfile -t windows < <(for folder in core play shell browser; do
    sed -n '/^fento_windows(/,/)/p' $folder/CMakeLists.txt | grep -oE '[a-z0-9_]+\.cpp' | sed "s#^#$folder/#"
done)
[ ${#windows[@]} -gt 5 ] || { echo "The lists of windows in the CMakeLists.txt were not understood."; exit 1; }
window_headers='"(core/frm_main|shell/(frm_splash|frm_about|form1|startup)|browser/[a-z0-9_]+)\.h"'

mapfile -t all < <(sources core play browser shell platform "$top/tests" "$top/bench" "$top/tools" 2>/dev/null)
mapfile -t portable < <(printf '%s\n' "${all[@]}" | grep -v -e '^platform/qt/' -e '/tests/platform/qt_' -e '/bench/')
forbid "The toolkit is included outside platform/qt" '[<"](Q[A-Za-z]+|Qt[A-Za-z]+/.*|SDL.*|q[a-z]+\.h)[>"]' "${portable[@]}"
mapfile -t inner < <(printf '%s\n' "${portable[@]}" | grep -E '^(core|play|browser|shell|platform)/')
# shellcheck disable=SC2046
forbid "platform/qt is included from outside" '"platform/qt/' $(printf '%s\n' "${inner[@]}")
# shellcheck disable=SC2046
forbid "The program includes tests or the headless twin" '"(tests|platform/headless|bench)/' \
    $(printf '%s\n' "${inner[@]}" | grep -v '^platform/headless/')

# shellcheck disable=SC2046
forbid "platform includes a higher folder" '"(core|play|browser|shell)/' $(sources platform | grep -v '^platform/qt/main\.cpp$')

is_window() { printf '%s\n' "${windows[@]}" | grep -qxF "$1" || grep -qE "$window_headers" <<<"\"$1\""; }
rules() { sources "$1" | while read -r f; do is_window "$f" || echo "$f"; done; }
mapfile -t coreRules < <(rules core)
mapfile -t playRules < <(rules play)
mapfile -t services < <(rules shell)
if [ ${#coreRules[@]} = 0 ] || [ ${#services[@]} = 0 ]; then
    echo "No rules or services found."
    exit 1
fi
forbid "A rule of core includes a higher folder or a window" '"((play|browser|shell)/|core/frm_)' "${coreRules[@]}"
forbid "A rule of play includes the shell, the browser or a window" '"((browser|shell)/|core/frm_)' "${playRules[@]}"
forbid "A service of the shell includes play, the browser or a window" \
    '"((play|browser)/|core/frm_|shell/(frm_|form1|startup\.h))' "${services[@]}"

echo "${#all[@]} files looked at"
exit $bad
