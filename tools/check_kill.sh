#!/bin/bash
# Kills a program that saves, at random moments, and saves where files may not grow: the old ones stay whole.
# ./check kill [ROUNDS [SEED]]
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD TEST
say "Building..."
build_preset dev kill_check || exit 1
# On a real disk, and all that killed programs leave behind is under one roof.
place=build/check/kill
rm -rf "$place" && mkdir -p "$place/tmp" "$place/save" || exit 1
trap 'rm -rf "$place"' EXIT
TMPDIR=$PWD/$place/tmp build/dev/tests/rough/kill_check "$place/save" "${1:-200}" ${2:+"$2"}
