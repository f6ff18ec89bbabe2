#!/bin/bash
# Draws the sample pictures. Needs g++ and ImageMagick.
#   tools/make_pictures.sh               all, into Imagens/
#   tools/make_pictures.sh DIR           all, into DIR
#   tools/make_pictures.sh DIR NAME...   the named ones, "Vitral" for instance
set -eu
cd "$(dirname "$0")/.."
target=${1:-Imagens} bin=build/tools/pictures
mkdir -p "$target" $bin
export target bin
# shellcheck disable=SC2016
printf '%s\0' tools/make_pictures.cpp tools/pictures/*.cpp tools/paint/*.cpp |
    xargs -0 -P "$(nproc)" -I{} sh -c 'g++ -std=c++20 -O2 -Wall -Wextra -Wshadow -Itools -c "{}" -o "$bin/$(basename "{}" .cpp).o"'
g++ $bin/*.o -o $bin/make_pictures

# One picture: drawn, then stored as JPG, but the window as GIF and the tiles as a palette BMP. The two that are full
# of the smallest things are stored a little softer, or they would be too large.
one() {
    "$bin/make_pictures" "$1" "$bin/$1.ppm"
    case $1 in
        Vitral) convert "$bin/$1.ppm" -resize 900x1200 -dither FloydSteinberg -colors 255 "$target/$1.gif" ;;
        Azulejos) convert "$bin/$1.ppm" +dither -colors 256 -type Palette -compress None "BMP3:$target/$1.bmp" ;;
        "Noite estrelada" | "Serra ao amanhecer")
            convert "$bin/$1.ppm" -blur 0x0.4 -strip -sampling-factor 4:2:0 -quality 72 "$target/$1.jpg" ;;
        *) convert "$bin/$1.ppm" -strip -sampling-factor 4:2:0 -quality 78 "$target/$1.jpg" ;;
    esac
    rm "$bin/$1.ppm"
}
export -f one
names() {
    if [ $# -gt 1 ]; then printf '%s\n' "${@:2}"; else $bin/make_pictures; fi
}
# shellcheck disable=SC2016
names "$@" | tr '\n' '\0' | xargs -0 -n 1 -P "$(nproc)" bash -c 'one "$0"'
