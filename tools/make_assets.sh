#!/bin/bash
# Makes everything in assets/ and Imagens/ that a program of ours draws or sounds:
#   tools/make_assets.sh            all, into the project
#   tools/make_assets.sh small DIR  waves, splash, icon and ticks into DIR, for comparison
# Needs g++; the pictures also need ImageMagick, which writes the JPG, GIF and palette files.
set -eu
cd "$(dirname "$0")/.."
what=${1:-all} target=${2:-assets}
bin=build/tools
mkdir -p $bin "$target/waves" "$target/skin"
flags="-std=c++20 -O2 -Wall -Wextra -Wshadow -Itools"
for source in tools/paint/*.cpp; do
    # shellcheck disable=SC2086
    g++ $flags -c "$source" -o "$bin/$(basename "$source" .cpp).o" &
done
wait
ar rcs $bin/libpaint.a $bin/*.o
for tool in make_waves make_splash make_icon make_ticks; do
    # shellcheck disable=SC2086
    g++ $flags tools/$tool.cpp $bin/libpaint.a -o $bin/$tool
done
$bin/make_waves "$target/waves"
$bin/make_splash "$target/splash.bmp"
$bin/make_splash "$target/splash-dense.bmp" 2
$bin/make_icon "$target"
$bin/make_ticks "$target/skin"
[ "$what" = all ] || exit 0
exec bash tools/make_pictures.sh
