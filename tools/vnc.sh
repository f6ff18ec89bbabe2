# Serves a program over VNC on the loopback address. Sourced by ./play.
# shellcheck shell=bash disable=SC2034

# serve_over_vnc PROGRAM: starts an X server of its own, prints how to reach it, runs the
# program in it and ends with it. Leaves no process and no file behind.
serve_over_vnc() {
    local program=$1 number port password status
    VNC_FOLDER=$(mktemp -d) && chmod 700 "$VNC_FOLDER"
    VNC_PROCESSES=()
    trap end_vnc EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    # VNC takes eight characters; letters that can be mistaken for others are left out.
    password=$(LC_ALL=C tr -dc 'a-km-zA-HJ-NP-Z2-9' </dev/urandom | head -c 8)
    printf '%s\n' "$password" | vncpasswd -f >"$VNC_FOLDER/passwd"
    export XAUTHORITY=$VNC_FOLDER/Xauthority
    for number in $(seq 20 99); do
        port=$((5900 + number))
        [ -e "/tmp/.X$number-lock" ] || [ -e "/tmp/.X11-unix/X$number" ] && continue
        (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null && continue
        start_xvnc "$number" "$port" && break
        number=
    done
    [ -n "$number" ] || fail "No X server could be started: $(tail -n 3 "$VNC_FOLDER/xvnc.log")"
    export DISPLAY=:$number
    export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$VNC_FOLDER}
    openbox >"$VNC_FOLDER/openbox.log" 2>&1 </dev/null &
    VNC_PROCESSES+=($!)
    say "No display: open 127.0.0.1:$port (or ssh -L $port:127.0.0.1:$port to this machine) in a VNC viewer, password $password"
    QT_QPA_PLATFORM=xcb "$program" </dev/null &
    VNC_PROCESSES+=($!)
    wait $!
    status=$?
    exit $status
}

# start_xvnc NUMBER PORT: true once the server answers.
start_xvnc() {
    local server i
    xauth -f "$XAUTHORITY" add ":$1" . "$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')" 2>/dev/null
    Xvnc ":$1" -rfbport "$2" -interface 127.0.0.1 -localhost=1 -UseIPv6=0 -nolisten tcp -auth "$XAUTHORITY" \
        -SecurityTypes VncAuth -PasswordFile "$VNC_FOLDER/passwd" -AlwaysShared=1 -AcceptSetDesktopSize=0 \
        -geometry 1280x800 -depth 24 -desktop "Fento-Lira Master" >"$VNC_FOLDER/xvnc.log" 2>&1 </dev/null &
    server=$!
    for i in $(seq 100); do
        kill -0 "$server" 2>/dev/null || return 1
        if [ -e "/tmp/.X11-unix/X$1" ] && (exec 3<>"/dev/tcp/127.0.0.1/$2") 2>/dev/null; then
            VNC_PROCESSES+=("$server")
            return 0
        fi
        sleep 0.1
    done
    kill "$server" 2>/dev/null
    return 1
}

# The program first, the server last; only what was started here.
end_vnc() {
    local i
    for ((i = ${#VNC_PROCESSES[@]} - 1; i >= 0; --i)); do
        kill "${VNC_PROCESSES[i]}" 2>/dev/null && wait "${VNC_PROCESSES[i]}" 2>/dev/null
    done
    rm -rf "$VNC_FOLDER"
}
