#!/bin/bash
# Feeds the readers of saved games and of settings with what nobody would write.
# ./check fuzz [SECONDS]: each for so long, 60 unless told. Inputs found are kept in build/fuzz/corpus.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

seconds=${1:-60}
[[ $seconds =~ ^[0-9]+$ ]] || fail "usage: ./check fuzz [SECONDS]"
need BUILD TEST FUZZ
say "Building..."
# Every part is watched, not the fuzzers alone: they go by what code an input reaches.
quietly build/fuzz-configure.log cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g1 -fno-omit-frame-pointer" \
    -DCMAKE_CXX_FLAGS="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined" \
    -DFENTO_FUZZ=ON -DFENTO_DESKTOP=OFF -DFENTO_WARNINGS_AS_ERRORS=OFF || exit 1

bad=0
for reader in saved_game:pzl profile_file:ini; do
    name=${reader%:*} ending=${reader#*:}
    quietly "build/fuzz-build-$name.log" cmake --build build/fuzz --target "fuzz_$name" || exit 1
    mkdir -p "build/fuzz/corpus/$name" "build/fuzz/seeds/$name" "build/fuzz/found"
    find tests/data -name "*.$ending" -exec cp {} "build/fuzz/seeds/$name/" \;
    [ -n "$(ls "build/fuzz/seeds/$name")" ] || fail "tests/data has no *.$ending"
    log=build/fuzz/$name.log
    if "build/fuzz/tests/fuzz/fuzz_$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -max_len=16384 \
        -dict="tests/data/$name.dict" -artifact_prefix="build/fuzz/found/$name-" -print_final_stats=1 \
        "build/fuzz/corpus/$name" "build/fuzz/seeds/$name" >"$log" 2>&1 </dev/null; then
        runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
        say "ok      fuzz_$name: $runs inputs, $(grep -o 'cov: [0-9]*' "$log" | tail -n 1), no fault"
        [ "${runs:-0}" -ge 100 ] || { say "FAILED  fuzz_$name: hardly ran"; bad=1; }
    else
        say "FAILED  fuzz_$name (whole log: $log)"
        tail -n 40 "$log"
        bad=1
    fi
done
exit $bad
