"""The real program on a sound daemon of our own that hangs, dies, comes back or is missing: pieces go on moving.

usage: sound.py PROGRAM SCREENSHOT_FOLDER
"""

import signal
import statistics
import subprocess

from rough import *  # noqa: F403

RIGHT = 300  # pixels by which a piece is carried


class Daemon:
    """PulseAudio with one sink that goes nowhere, found by its socket only."""

    def __init__(self, screen, log):
        self.socket, self.log = screen.home + "/native", log
        self.env = dict(screen.env, PULSE_RUNTIME_PATH=screen.home, PULSE_SERVER="unix:" + self.socket)
        self.start()

    def start(self):
        if os.path.exists(self.socket):
            os.remove(self.socket)
        self.process = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--log-target=stderr",
             "-L", f"module-native-protocol-unix socket={self.socket} auth-anonymous=1", "-L", "module-null-sink"],
            stdin=subprocess.DEVNULL, stdout=self.log, stderr=self.log, env=self.env)
        wait_for(lambda: run("pactl", "info", env=self.env), "the sound daemon")

    def plays(self):
        wait_for(lambda: run("pactl", "list", "short", "sink-inputs", env=self.env), "the game's stream at the daemon")

    def die(self):
        self.process.kill()
        self.process.wait()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.die()


def moves(game, what):
    """Carries a piece about while it clicks; the moves must be on the screen in time."""
    screen, saved, seconds = game.screen, game.save("som"), []
    x, y = map(round, game.center(saved, max(saved.pieces, key=lambda p: p["id"])))
    for _ in range(10):
        screen.move(x, y)
        screen.press()
        seconds.append(until_changed(screen, (x + RIGHT, y), lambda: screen.mouse.move(x + RIGHT, y)))
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
    with Screen(1366, 768) as screen, open(shots + "/daemon.log", "wb") as log, Daemon(screen, log) as daemon:
        game = Game(screen, program, terminal=screen.home + "/terminal.txt")
        game.env["PULSE_SERVER"] = daemon.env["PULSE_SERVER"]
        game.picture("foto.jpg", "180x120", "plasma:tomato-steelblue", "-seed", "7")
        usual = within(60, "start with a daemon", game.start)
        daemon.plays()
        game.start_picture(3)
        moves(game, "while it works")
        daemon.process.send_signal(signal.SIGSTOP)
        moves(game, "while it hangs")
        daemon.process.send_signal(signal.SIGCONT)
        for _ in range(2):  # what was found again can be lost again
            daemon.die()
            moves(game, "when it died")
            daemon.start()
            time.sleep(2)  # until the next try is due
            moves(game, "when it is back")
            daemon.plays()
        daemon.process.send_signal(signal.SIGSTOP)
        within(3, "end while it hangs", game.end)
        within(usual + 2, "start while it hangs", game.start)
        within(3, "end while it hangs", game.end)
        daemon.die()
        within(usual + 2, "start without a daemon", game.start)
        game.end()
        with open(game.terminal) as file:
            check(not file.read(), "the terminal got something")


if __name__ == "__main__":
    script(main)
