#!/bin/bash
# Makes what the program for Windows is built with: Qt and SDL for Windows, and their licences.
# The first time takes half an hour; build/windows keeps the result.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh
bash tools/windows/libraries.sh || exit $?
