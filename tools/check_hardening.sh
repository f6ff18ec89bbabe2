#!/bin/bash
# The program is built so that a fault stays a fault: position independent, its tables read-only, no stack that can be
# executed, guarded stack frames, checked copies. ./check hardening [PROGRAM]: the dev build unless told.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

program=${1:-build/dev/fento-lira-master}
[ -x "$program" ] || fail "no $program"
bad=0
is_there() { # WHAT PATTERN COMMAND...
    local what=$1 pattern=$2
    shift 2
    "$@" "$program" 2>/dev/null | grep -qE "$pattern" || { say "missing: $what"; bad=1; }
}
is_there "position independent code" 'DYN \(Position-Independent' readelf -hW
is_there "relocations read-only" GNU_RELRO readelf -lW
is_there "all symbols bound at the start" 'BIND_NOW|FLAGS_1.*NOW' readelf -dW
is_there "a stack that is not executed" 'GNU_STACK +0x[0-9a-f]+ 0x[0-9a-f]+ 0x[0-9a-f]+ 0x[0-9a-f]+ 0x[0-9a-f]+ RW ' readelf -lW
is_there "guarded stack frames" __stack_chk_fail readelf -sW --dyn-syms
is_there "checked copies" '__[a-z]+_chk' readelf -sW --dyn-syms
grep -q -- -fstack-clash-protection "$(dirname "$program")/build.ninja" || { say "missing: probed stack"; bad=1; }
[ $bad = 0 ] && say "$program is hardened"
exit $bad
