#!/bin/bash
# Feeds every reader of what the program did not write itself with what nobody would write.
# ./check fuzz [SECONDS]: all together for so long, 120 unless told. ./check fuzz SECONDS READER: that one alone.
# Inputs that led somewhere new are kept in build/fuzz/corpus, what breaks a reader in build/fuzz/found.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

readers="game ini colours road bmp gif jpg skin"
[ $# -lt 2 ] || readers=${*:2}
count=$(wc -w <<<"$readers") seconds=${1:-120}
[[ $seconds =~ ^[0-9]+$ ]] || fail "usage: ./check fuzz [SECONDS [READER...]]"
need BUILD TEST FUZZ
say "Building..."
# Every part is watched, not the fuzzer alone: it goes by what code an input reaches.
quietly build/fuzz-configure.log cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS_DEBUG="-O2 -g1 -fno-omit-frame-pointer" \
    -DCMAKE_CXX_FLAGS="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined" \
    -DFENTO_FUZZ=ON -DFENTO_WARNINGS_AS_ERRORS=OFF || exit 1
quietly build/fuzz-build.log cmake --build build/fuzz --target fuzz || exit 1

seeds=build/fuzz/seeds
rm -rf $seeds && mkdir -p $seeds/{game,ini,colours,road,bmp,gif,jpg,skin} build/fuzz/found
cp tests/data/*.pzl $seeds/game/
for file in tests/data/*.pzl; do sed '2s/.*/@\r/' "$file" >"$seeds/road/${file##*/}"; done
cp tests/data/ini/* $seeds/ini/
echo -n "255,-1,0, 1e3 ,&H,,4294967296" >$seeds/colours/odd
cp assets/Puzzle.skn $seeds/skin/
convert -size 60x40 plasma:red-blue -seed 3 $seeds/plain.png || exit 1
convert $seeds/plain.png -define bmp:format=bmp4 $seeds/bmp/four.bmp
for colours in 2 16 256; do convert $seeds/plain.png -colors $colours BMP3:$seeds/bmp/$colours.bmp; done
convert $seeds/plain.png -colors 16 -compress RLE BMP3:$seeds/bmp/rle.bmp
convert $seeds/plain.png -colors 8 $seeds/gif/plain.gif
convert $seeds/plain.png \( $seeds/plain.png -negate \) -interlace GIF -dispose Previous $seeds/gif/two.gif
convert $seeds/plain.png -orient RightTop $seeds/jpg/plain.jpg
convert $seeds/plain.png -interlace JPEG -sampling-factor 2x2 $seeds/jpg/passes.jpg
convert $seeds/plain.png -colorspace Gray $seeds/jpg/grey.jpg

TMPDIR=$(mktemp -d -p "$([ -d /dev/shm ] && echo /dev/shm || echo /tmp)") || exit 1
# What was freed stays poisoned for a few megabytes, not for 256, whose pages would cost more than most readers.
export TMPDIR QT_LOGGING_RULES="*=false" ASAN_OPTIONS=quarantine_size_mb=4:malloc_context_size=4
trap 'rm -rf "$TMPDIR"' EXIT
bad=0 all=0 begin=$SECONDS
for reader in $readers; do
    corpus=build/fuzz/corpus/$reader log=build/fuzz/$reader.log most=16384 more=()
    mkdir -p "$corpus"
    for words in "tests/data/$reader.dict" "tests/data/${reader/road/game}.dict"; do
        [ -f "$words" ] && more=(-dict="$words")
    done
    # What the toolkit keeps for itself is no leak of ours.
    case $reader in
        bmp | gif | jpg | skin) most=8192 more+=(-detect_leaks=0) ;;
        ini | colours) most=1024 ;;
    esac
    if build/fuzz/tests/fuzz/fuzz --reader="$reader" -max_total_time=$(((seconds + count - 1) / count)) -timeout=20 \
        -rss_limit_mb=3000 -max_len=$most -artifact_prefix="build/fuzz/found/$reader-" -print_final_stats=1 "${more[@]}" \
        "$corpus" "$seeds/$reader" >"$log" 2>&1 </dev/null; then
        runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
        pace=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
        say "ok      $reader: $runs runs, $pace a second, $(grep -o 'cov: [0-9]*' "$log" | tail -n 1), no finding"
        all=$((all + ${runs:-0}))
        [ "${runs:-0}" -ge 1 ] || { say "FAILED  $reader: did not run"; bad=1; }
    else
        say "FAILED  $reader (whole log: $log)"
        tail -n 40 "$log"
        bad=1
    fi
done
took=$((SECONDS - begin))
say "all readers: $all runs in $took s, $((all / (took > 0 ? took : 1))) a second"
exit $bad
