#!/bin/bash
# Plays a game in a real window on a sound daemon of its own that hangs, dies and is missing.
# Disturbs no sound of this machine.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD RUN TEST SOUND
say "Building..."
build_preset release || exit 1
mkdir -p build/check/shots/sound
exec timeout -k 10 600 python3 tests/long/sound.py "$PWD/build/release/fento-lira-master" \
    "$PWD/build/check/shots/sound"
