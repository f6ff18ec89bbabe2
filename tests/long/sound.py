"""The real program's sound: which waves come out, whole; and a daemon that fails.

usage: sound.py PROGRAM SCREENSHOT_FOLDER WAVES_FOLDER
"""

import statistics
import wave
from array import array

from rough import *  # noqa: F403
from pulse import RATE, Daemon

TOLERANCE = 4  # of a sample


def heard(samples):
    """Without the silence behind them."""
    while samples and abs(samples[-1]) <= TOLERANCE:
        samples.pop()
    return samples


def reference(path):
    """A wave file's samples as the device must get them: straight lines between its own."""
    with wave.open(path) as file:
        own, data = file.getframerate(), file.readframes(file.getnframes())
        samples = array("h", data) if file.getsampwidth() == 2 else [(value - 128) * 256 for value in data]
    samples.append(samples[-1])
    moments = (divmod(i * own, RATE) for i in range((len(samples) - 1) * RATE // own))
    return heard([samples[left] + (samples[left + 1] - samples[left]) * part / RATE for left, part in moments])


def waves(screen, program, folder):
    """A game played on a device that is a file."""
    game = Game(screen, program)
    device = screen.home + "/device"
    game.env.update(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=device)
    game.picture("foto.jpg", "180x120", "plasma:tomato-steelblue", "-seed", "7")
    game.start()
    game.start_picture(3)

    def plays(what, act, name):
        """What is heard ends with the whole wave."""
        since = os.path.getsize(device) // 2 * 2
        act()
        time.sleep(1.5)
        with open(device, "rb") as file:
            file.seek(since)
            samples = array("h", file.read()[:(os.path.getsize(device) - since) // 2 * 2])
        got, whole = heard(samples), reference(f"{folder}/{name}.wav") if name else []
        check(bool(got) == bool(whole) and len(got) >= len(whole), f"{what}: {len(got)} samples, not {len(whole)}")
        apart = max((abs(a - b) for a, b in zip(reversed(got), reversed(whole))), default=0)
        check(apart <= TOLERANCE, f"{what}: {apart} apart from {name}")
        print(f"  {what}: {name or 'nothing'}, {len(whole)} samples")

    saved = game.save("som")
    count = len(saved.pieces)
    screen.move(*game.center(saved, saved.pieces[-1]))
    plays("pick-up", screen.press, "click")
    plays("turn", lambda: screen.xdo("click", 3), "giro")
    plays("drop", screen.release, "click")
    saved = game.save("som")
    solve(game, saved, left=2)
    plays("drop at home", lambda: solve(game, saved, left=1, done=count - 2), "rotate")
    plays("win", lambda: solve(game, saved, done=count - 1), "complete")
    game.won()
    game.start_picture(3)
    game.menu(1, "Down", "Down", "Down", "Return")
    saved = game.save("som")
    plays("switched off", lambda: screen.click(*game.center(saved, saved.pieces[0])), None)
    game.end()


def moves(game, pointer, what):
    """Carries a piece about while it clicks; the moves must be on the screen in time."""
    saved, seconds = game.save("som"), []
    x, y = game.center(saved, max(saved.pieces, key=lambda p: p["id"]))
    for _ in range(10):
        pointer.move(x, y)
        pointer.press()
        game.screen.settle()
        before, moved = pointer.pixel(x + 300, y), pointer.move(x + 300, y)
        seconds.append(pointer.seconds_until_changed(x + 300, y, before, moved) or 9)
        pointer.move(x, y)
        pointer.release()
        game.screen.settle()
    print(f"  moves shown {what}: {statistics.median(seconds) * 1000:.1f} ms")
    check(statistics.median(seconds) <= 0.1, f"moves take {seconds} s {what}")


def within(limit, what, act):
    begin = time.monotonic()
    act()
    took = time.monotonic() - begin
    print(f"  {what}: {took:.1f} s")
    check(took <= limit, f"{what} took {took:.1f} s")
    return took


def failing_daemon(screen, program, log):
    with Daemon(log) as daemon, Pointer(screen.env["DISPLAY"]) as pointer:
        game = Game(screen, program, terminal=screen.home + "/terminal.txt")
        game.env["PULSE_SERVER"] = daemon.server
        game.picture("foto.jpg", "180x120", "plasma:tomato-steelblue", "-seed", "7")
        usual = within(60, "start with a daemon", game.start)
        daemon.plays()
        game.start_picture(3)
        moves(game, pointer, "while it works")
        daemon.hang()
        moves(game, pointer, "while it hangs")
        daemon.go_on()
        for _ in range(2):  # what was found again can be lost again
            daemon.die()
            moves(game, pointer, "when it died")
            daemon.start()
            time.sleep(2)  # until the next try is due
            moves(game, pointer, "when it is back")
            daemon.plays()
        daemon.hang()
        within(3, "end while it hangs", game.end)
        within(usual + 2, "start while it hangs", game.start)
        within(3, "end while it hangs", game.end)
        daemon.die()
        within(usual + 2, "start without a daemon", game.start)
        game.end()
        check(not open(game.terminal).read(), "the terminal got something")


def main(program, shots, folder):
    with Screen(1366, 768) as screen, open(shots + "/daemon.log", "wb") as log:
        waves(screen, program, folder)
        failing_daemon(screen, program, log)


if __name__ == "__main__":
    script(main)
