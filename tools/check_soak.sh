#!/bin/bash
# Plays at random under the address and undefined-behaviour sanitizers.
# ./check soak [SECONDS [SEED [say]]]: 120 seconds unless told; "say" prints all that is done.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD TEST
say "Building..."
build_preset asan soak || exit 1
export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1
exec build/asan/tests/rough/soak "${1:-120}" "${@:2}"
