#!/bin/bash
# The committed waves, splash, icon and ticks are what their programs make today.
set -u
cd "$(dirname "$0")/.." || exit 1
made=build/check/assets
rm -rf "$made" && mkdir -p "$made"
bash tools/make_assets.sh small "$made" || exit 1
bad=0
while read -r file; do
    cmp "$made/$file" "assets/$file" || bad=1
done < <(cd "$made" && find . -type f)
size=$(cat Imagens/* | wc -c)
count=$(find Imagens -type f | wc -l)
echo "$count pictures, $size bytes"
[ "$count" -ge 12 ] && [ "$size" -lt $((6 * 1024 * 1024)) ] || bad=1
exit $bad
