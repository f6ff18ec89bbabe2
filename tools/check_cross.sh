#!/bin/bash
# Every event at every moment, each pair once, on the twin of the desktop; then the real program under a monkey.
# ./check cross [EVENTS [SEED]]: 20,000 events of the monkey unless told.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD RUN TEST
say "Building..."
build_preset dev soak fento-lira-master || exit 1
build/dev/tests/rough/soak cross || exit 1
mkdir -p build/check/shots/cross
exec timeout -k 10 1800 python3 tests/long/monkey.py "$PWD/build/dev/fento-lira-master" "$PWD/build/check/shots/cross" "$@"
