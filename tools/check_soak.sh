#!/bin/bash
# Plays whole games at random under the address and undefined-behaviour sanitizers, on three screens at densities 1 to 3.
# ./check soak [GAMES [SEED [say]]]: 300 unless told; "say" prints all that is done.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD TEST
say "Building..."
build_preset asan soak || exit 1
export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1
exec build/asan/tests/rough/soak "${1:-300}" "${@:2}"
