#!/bin/bash
# Makes the program for Windows and tries it under wine: its tests, then the packed program in a real window.
# The first time takes three quarters of an hour, most of it for Qt; build/windows keeps what it makes.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh
bash tools/windows/libraries.sh || exit $?
need RUN
out=$PWD/build/windows bad=0
say "Building the program and its tests for Windows..."
build_preset windows || exit 1

# step TITLE COMMAND: what the command says last is shown, all of it if it fails.
step() {
    local title=$1 start=$SECONDS log
    shift
    log=$out/log/$(tr -c 'a-zA-Z0-9\n' _ <<<"$title").log
    if timeout -k 10 1200 "$@" >"$log" 2>&1 </dev/null; then
        say "ok      $title ($((SECONDS - start)) s): $(tail -n 1 "$log" | tr -d '\r')"
    else
        bad=1
        say "FAILED  $title (whole log: $log)"
        tail -n 30 "$log"
    fi
}
end_wine() { wineserver -k -w 2>/dev/null; }
trap end_wine EXIT

# What is true of Linux' desktop only: its fonts' widths, its places, a drive list that begins at "/".
elsewhere=Windows.DialogsStandOverThemAndAnswerToTheirKeys:Windows.ScreenSkinPlacesAndWordsAreTheDesktops
elsewhere+=:GameWindows.AreMadeOfTheseWidgets
export WINEPREFIX=$out/wine/tests
for test in "$out"/program/tests/{*,*/*}/*_tests.exe; do
    [ -e "$test" ] && step "$(basename "$test" .exe)" bash tools/windows/wine.sh "$test" --gtest_brief=1 "--gtest_filter=-$elsewhere"
done
step "soak" bash tools/windows/wine.sh "$out/program/tests/rough/soak.exe" 3
end_wine

step "package" bash tools/windows/package.sh
sed -n 's/^/        /p' "$out/log/package.log"
rm -rf "$out/played" && mkdir -p "$out/played" && unzip -q -d "$out/played" "$out"/fento-lira-master-*-windows.zip || exit 1
build_preset dev fento-lira-master || exit 1
program="$out/played/Fento-Lira Master/fento-lira-master.exe"
here=$PWD/build/dev/fento-lira-master
# Each half of a game is played by the program of one system: what it saves is taken up by that of the other.
play_both() {
    export WINEPREFIX=$out/wine/$1
    mkdir -p "$out/shots/$1"
    step "real window: $1" python3 tests/e2e/whole_game.py "$2" "$out/shots/$1" "$3"
    end_wine
}
play_both from_windows "$program" "$here"
play_both to_windows "$here" "$program"
[ $bad = 0 ] && say "The program for Windows: $(ls "$out"/fento-lira-master-*-windows.zip)"
exit $bad
