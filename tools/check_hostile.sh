#!/bin/bash
# The real program among broken and huge pictures, spoilt saved games, odd settings and folders without rights.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD RUN TEST
say "Building..."
build_preset release || exit 1
mkdir -p build/check/shots/hostile
exec timeout -k 10 1200 python3 tests/long/hostile.py "$PWD/build/release/fento-lira-master" "$PWD/build/check/shots/hostile"
