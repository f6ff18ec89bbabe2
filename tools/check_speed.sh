#!/bin/bash
# Measures the release build: what was measured, what must be reached, by ./check speed.
# ./check speed GROUP... measures only board, growth, start, moves, groups, dense or folder.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD RUN TEST BENCH
say "Building..."
build_preset release || exit 1
quietly build/bench-configure.log cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DFENTO_BENCH=ON \
    -DFENTO_TESTS=OFF -DFENTO_WARNINGS_AS_ERRORS=OFF || exit 1
quietly build/bench-build.log cmake --build build/bench --target board_bench growth_bench picture_bench bare_window || exit 1

# Photographs with soft shapes and grain, the first three of 24 megapixels; made once.
photos=build/bench/photos
mkdir -p $photos
number=0
for size in 6000x4000 6000x4000 6000x4000 5472x3648 5184x3456 4896x3264 4288x2848 4000x3000; do
    number=$((number + 1))
    [ -e $photos/photo-$number.jpg ] && continue
    [ $number = 1 ] && say "Making photographs, this takes a minute the first time..."
    convert -size 1500x1000 -seed $number plasma:fractal -filter Triangle -resize $size! -attenuate 0.2 \
        +noise Gaussian -quality 90 $photos/new.jpg && mv $photos/new.jpg $photos/photo-$number.jpg || exit 1
done

exec python3 bench/speed.py build/release/fento-lira-master build/bench/bench $photos "$@"
