#!/bin/bash
# A folder of 2,000 photographs in the picture dialog: first thumbnail, answers to clicks while it fills, memory.
# ./check folders COUNT takes another number of photographs.
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh

need BUILD RUN TEST
say "Building..."
build_preset release || exit 1

# A dozen photographs of 12 and 24 megapixels with soft shapes and grain; made once.
photos=$PWD/build/check/photos
mkdir -p "$photos" build/check/shots/folders
for number in 1 2 3 4 5 6 7 8 9 10 11 12; do
    [ -e "$photos/$number.jpg" ] && continue
    [ $number = 1 ] && say "Making photographs, this takes some minutes the first time..."
    size=4000x3000
    [ $((number % 4)) = 0 ] && size=6000x4000
    convert -size 1000x750 -seed $number plasma:fractal -filter Triangle -resize $size! -attenuate 0.2 \
        +noise Gaussian -quality 90 "$photos/$number.part.jpg" && mv "$photos/$number.part.jpg" "$photos/$number.jpg" || exit 1
done
exec timeout -k 10 1800 python3 tests/long/folders.py "$PWD/build/release/fento-lira-master" \
    "$PWD/build/check/shots/folders" "$photos" "$@"
