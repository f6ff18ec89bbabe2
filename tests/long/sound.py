"""The real program on a sound daemon of our own that hangs, dies, comes back or is missing: pieces go on moving.

usage: sound.py PROGRAM SCREENSHOT_FOLDER
"""

import signal
import statistics
import subprocess

from rough import *  # noqa: F403

RIGHT = 300  # pixels by which a piece is carried


def start_daemon(screen, log):
    """PulseAudio with one sink that goes nowhere, found by its socket only. It ends with this script."""
    screen.env.update(PULSE_RUNTIME_PATH=screen.home, PULSE_SERVER=f"unix:{screen.home}/native")
    run("rm", "-f", screen.home + "/native")
    process = subprocess.Popen(
        ["setpriv", "--pdeathsig", "KILL", "pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no",
         "--exit-idle-time=-1", "--log-target=stderr", "-L", "module-null-sink",
         "-L", f"module-native-protocol-unix socket={screen.home}/native auth-anonymous=1"],
        stdin=subprocess.DEVNULL, stdout=log, stderr=log, env=screen.env)
    wait_for(lambda: run("pactl", "info", env=screen.env), "the sound daemon")
    return process


def plays(screen):
    wait_for(lambda: run("pactl", "list", "short", "sink-inputs", env=screen.env), "the game's stream at the daemon")


def die(daemon):
    daemon.kill()
    daemon.wait()


def moves(game, what):
    """Carries a piece about while it clicks; the moves must be on the screen in time."""
    screen, saved, seconds = game.screen, game.save("som"), []
    x, y = map(round, game.center(saved, max(saved.pieces, key=lambda p: p["id"])))
    for _ in range(10):
        screen.move(x, y)
        screen.press()
        seconds.append(until_changed(screen, (x + RIGHT, y), lambda: screen.move(x + RIGHT, y, settle=False)))
        screen.move(x, y)
        screen.release()
    print(f"  moves shown {what}: {statistics.median(seconds) * 1000:.1f} ms", flush=True)
    check(statistics.median(seconds) <= ANSWER_WITHIN, f"moves take {seconds} s {what}")


def within(limit, what, act):
    begin = time.monotonic()
    act()
    took = time.monotonic() - begin
    print(f"  {what}: {took:.1f} s", flush=True)
    check(took <= limit, f"{what} took {took:.1f} s")
    return took


def main(program, shots):
    with Screen(1366, 768) as screen, open(shots + "/daemon.log", "wb") as log:
        daemon = start_daemon(screen, log)
        game = Game(screen, program, terminal=screen.home + "/terminal.txt")
        game.picture("foto.jpg", "180x120", "plasma:tomato-steelblue", "-seed", "7")
        usual = within(60, "start with a daemon", game.start)
        plays(screen)
        game.start_picture(3)
        moves(game, "while it works")
        daemon.send_signal(signal.SIGSTOP)
        moves(game, "while it hangs")
        daemon.send_signal(signal.SIGCONT)
        for _ in range(2):  # what was found again can be lost again
            die(daemon)
            moves(game, "when it died")
            daemon = start_daemon(screen, log)
            time.sleep(2)  # until the next try is due
            moves(game, "when it is back")
            plays(screen)
        daemon.send_signal(signal.SIGSTOP)
        within(3, "end while it hangs", game.end)
        within(usual + 2, "start while it hangs", game.start)
        within(3, "end while it hangs", game.end)
        die(daemon)
        within(usual + 2, "start without a daemon", game.start)
        game.end()
        with open(game.terminal) as file:
            check(not file.read(), "the terminal got something")


if __name__ == "__main__":
    script(main)
