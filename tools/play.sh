#!/bin/bash
# Sets the machine up if need be, builds the program and starts it. With no display it is
# served over VNC, on the loopback address only, with a password for this one run.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD RUN
[ -x build/release/fento-lira-master ] || say "Building, this takes a few minutes the first time..."
build_preset release || exit 1
program=$PWD/build/release/fento-lira-master
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && exec "$program"

need VNC
. tools/vnc.sh
serve_over_vnc "$program"
