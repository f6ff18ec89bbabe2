#!/bin/bash
# Kills a program that saves, at random moments; lets each call of a save fail; two programs save at once: the old file or the new one is there, whole. ./check kill [TIMES [SEED]]: 1,000 unless told.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD TEST TRACE
say "Building..."
build_preset dev saver || exit 1
# On a real disk, and all that killed programs leave behind is under one roof.
place=build/check/kill
rm -rf "$place" && mkdir -p "$place/tmp" || exit 1
trap 'rm -rf "$place"' EXIT
chmod 755 "$place"
TMPDIR=$PWD/$place/tmp python3 tests/long/kill.py build/dev/tests/rough/saver "$place/save" "$@"
