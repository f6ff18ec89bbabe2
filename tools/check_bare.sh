#!/bin/bash
# The project on a bare machine: a fresh Debian, a clean clone, ./check and the command to play,
# then the Debian package installed, played and removed. Needs root; takes about ten minutes.
# What is committed is tried. `FENTO_BARE=DIR` keeps the machine there; otherwise it is removed.
#
# usage: check_bare.sh [RELEASE]   bookworm (Debian 12) unless told
set -u
cd "$(dirname "$0")/.." || exit 1
. tools/packages.sh
[ "$(id -u)" = 0 ] || { say "skipped: a chroot needs root"; exit 77; }
need BARE
release=${1:-bookworm}
project=$PWD
root=${FENTO_BARE:-$(mktemp -d /var/tmp/fento-bare-XXXXXX)}
log=$project/build/bare
mkdir -p "$log"

# The address from which this machine itself gets Debian's packages.
mirror=$(sed -n 's#^deb \(\[[^]]*\] \)\{0,1\}\([^ ]*\) bookworm .*#\2#p; s#^URIs: \(.*/debian\)/\{0,1\}$#\1#p' \
    /etc/apt/sources.list /etc/apt/sources.list.d/* 2>/dev/null | head -n 1)
[ -n "$mirror" ] || { say "skipped: this machine has no source of Debian packages"; exit 77; }

mounted=()
end_bare() {
    local i p
    for p in /proc/[0-9]*; do  # whatever still runs in the bare machine
        [ "$(readlink "$p/root" 2>/dev/null)" = "$root" ] && kill "${p#/proc/}" 2>/dev/null
    done
    sleep 1
    for ((i = ${#mounted[@]} - 1; i >= 0; --i)); do umount -l "${mounted[i]}"; done
    [ -n "${FENTO_BARE:-}" ] || rm -rf --one-file-system "$root"
}
trap end_bare EXIT
trap 'exit 143' INT TERM HUP

if [ ! -e "$root/etc/debian_version" ]; then
    quietly "$log/debootstrap.log" debootstrap --variant=minbase --include=ca-certificates "$release" "$root" "$mirror" || exit 1
fi
cp -L /etc/resolv.conf "$root/etc/resolv.conf" 2>/dev/null
# How the packages are reached is this machine's business: proxies, certificates.
find /etc/apt/apt.conf.d -name '*prox*' -exec cp {} "$root/etc/apt/apt.conf.d/" \;
for place in proc sys dev; do
    mount --rbind "/$place" "$root/$place" && mount --make-rslave "$root/$place" && mounted+=("$root/$place")
done
rm -rf "$root/home/player" && mkdir -p "$root/home/player"
git clone -q --no-hardlinks "$project" "$root/home/player/fento" || exit 1

# inside TITLE COMMAND: in the bare machine, with nothing of our own environment.
inside() {
    local title=$1 start=$SECONDS status
    shift
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin:/usr/games HOME=/home/player TERM=dumb \
        ${http_proxy:+http_proxy="$http_proxy"} ${https_proxy:+https_proxy="$https_proxy"} \
        bash -c "cd /home/player/fento && $*" >"$log/$title.log" 2>&1 </dev/null
    status=$?
    say "== $title: status $status after $((SECONDS - start)) s"
    tail -n 12 "$log/$title.log"
    return $status
}

# play_inside TITLE COMMAND: with no display; looks at the doors it opens, then ends it.
play_inside() {
    local title=$1 line port doors pid i bad=0
    shift
    inside "$title" "$@" &
    pid=$!
    for i in $(seq 3000); do
        line=$(grep -m 1 '^No display:' "$log/$title.log" 2>/dev/null) && break
        kill -0 $pid 2>/dev/null || break
        sleep 0.5
    done
    port=$(sed -n 's/.*127\.0\.0\.1:\([0-9]*\) .*/\1/p' <<<"$line")
    [ -n "$port" ] || { say "$title: no VNC server came up"; wait $pid; return 1; }
    sleep 8
    doors=$(awk -v p="$(printf ':%04X' "$port")" '$4 == "0A" && index($2, p) {print $2}' /proc/net/tcp /proc/net/tcp6)
    say "$title: listens on $doors (0100007F is 127.0.0.1)"
    [ "$doors" = "0100007F:$(printf %04X "$port")" ] || bad=1
    # The program itself, found by the root of its file system.
    local games=() p
    for p in /proc/[0-9]*; do
        [ "$(readlink "$p/root")" = "$root" ] && [ "$(cat "$p/comm" 2>/dev/null)" = fento-lira-mast ] && games+=("${p#/proc/}")
    done
    say "$title: ${#games[@]} game running"
    [ ${#games[@]} = 1 ] || bad=1
    for p in "${games[@]}"; do kill "$p"; done
    for i in $(seq 40); do kill -0 $pid 2>/dev/null || break; sleep 0.5; done
    kill -0 $pid 2>/dev/null && { say "$title: did not end with its game"; bad=1; kill $pid; }
    wait $pid 2>/dev/null
    return $bad
}

bad=0
inside check ./check || bad=1
play_inside play ./play || bad=1
inside play-again "time (. tools/packages.sh; need BUILD RUN VNC; build_preset release)" || bad=1
inside package "bash tools/check_package.sh && apt-get install -y -qq -o Dpkg::Use-Pty=0 --no-install-recommends ./build/package/*.deb" || bad=1
play_inside installed ". tools/packages.sh; . tools/vnc.sh; serve_over_vnc /usr/games/fento-lira-master" || bad=1
inside removed "ls -A ~/.local/share/fento-lira-master && apt-get remove -y -qq fento-lira-master && ! ls /usr/games/fento-lira-master /usr/share/fento-lira-master" || bad=1
say "bare machine: $([ $bad = 0 ] && echo all good || echo FAILED); logs: build/bare"
exit $bad
