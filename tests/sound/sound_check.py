"""The real program's sound: which waves come out, in which order, whole; and a daemon that fails.

usage: sound_check.py PROGRAM SCREENSHOT_FOLDER WAVES_FOLDER
"""

import os
import statistics
import sys
import time
import wave
from array import array

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))

from desktop import Screen, check, script, wait_for  # noqa: E402
from game import Game, solve  # noqa: E402
from pointer import Pointer  # noqa: E402
from pulse import RATE, Daemon  # noqa: E402

TOLERANCE = 4  # of a sample


def reference(path):
    """A wave file's samples as the device must get them, straight lines between its own, from the first sound on."""
    with wave.open(path) as file:
        own, data = file.getframerate(), file.readframes(file.getnframes())
        samples = array("h", data) if file.getsampwidth() == 2 else [(value - 128) * 256 for value in data]
    result = []
    for i in range(len(samples) * RATE // own):
        left = min(i * own // RATE, len(samples) - 1)
        right = min(left + 1, len(samples) - 1)
        result.append(samples[left] + (samples[right] - samples[left]) * (i * own / RATE - left))
    return result[next(i for i, value in enumerate(result) if abs(value) > TOLERANCE):]


def heard(path, known):
    """The waves that the device was given, in order; one that was cut off in brackets, what is none of them as "?"."""
    with open(path, "rb") as file:
        samples = array("h", file.read()[:os.path.getsize(path) // 2 * 2])
    names, at = [], 0
    while at < len(samples):
        if abs(samples[at]) <= TOLERANCE:
            at += 1
            continue
        same = {name: next((i for i, value in enumerate(reference[:len(samples) - at])
                            if abs(samples[at + i] - value) > TOLERANCE), len(reference)) for name, reference in known.items()}
        name = max(same, key=same.get)
        names.append("?" if same[name] < 20 else name if same[name] == len(known[name]) else f"({name})")
        at += max(same[name], 1)
    return names


def waves(screen, program, folder):
    """A game played on a device that is a file."""
    known = {name: reference(f"{folder}/{name.lower()}.wav") for name in ("CLICK", "GIRO", "COMPLETE", "ROTATE")}
    game = Game(screen, program)
    device = screen.home + "/device"
    game.env.update(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=device)
    game.picture("foto.jpg", "180x120", "plasma:tomato-steelblue", "-seed", "7")
    game.start()
    game.start_picture(3)

    def plays(what, act, *expected):
        since = os.path.getsize(device)
        act()
        time.sleep(1.5)
        with open(device, "rb") as file, open(device + " part", "wb") as part:
            file.seek(since)
            part.write(file.read())
        names = heard(device + " part", known)
        print(f"  {what}: {names}")
        # The last one to its end; those before it may be cut off.
        check(names[-1:] == list(expected) and "?" not in names, f"{what}: {names}, expected {expected}")

    saved = game.save("som")
    piece = next(p for p in saved.pieces if p["id"] == 3)
    screen.move(*game.center(saved, piece))
    plays("pick-up", screen.press, "CLICK")
    plays("turn", lambda: screen.xdo("click", 3), "GIRO")
    plays("drop", screen.release, "CLICK")
    saved, count = game.save("som"), len(saved.pieces)
    solve(game, saved, left=2)
    plays("drop at home", lambda: solve(game, saved, left=1, done=count - 2), "ROTATE")
    plays("win", lambda: solve(game, saved, done=count - 1), "COMPLETE")
    game.won()
    game.start_picture(3)
    game.menu(1, "Down", "Down", "Down", "Return")
    saved = game.save("som")
    plays("switched off", lambda: screen.click(*game.center(saved, saved.pieces[0])))
    game.end()


def moves(game, pointer, what, limit=0.1):
    """Carries a piece about while it clicks; the moves must be on the screen in time."""
    saved, seconds = game.save("som"), []
    piece = max(saved.pieces, key=lambda p: p["id"])
    x, y = game.center(saved, piece)
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
    check(statistics.median(seconds) <= limit, f"moves take {seconds} s {what}")


def starts(game, what, limit=60):
    begin = time.monotonic()
    game.start()
    took = time.monotonic() - begin
    print(f"  start with {what}: {took:.1f} s")
    check(took <= limit, f"the start took {took:.1f} s with {what}")
    return took


def ends(game):
    begin = time.monotonic()
    game.end()
    check(time.monotonic() - begin <= 3, "the program does not end")
    with open(game.terminal, errors="replace") as terminal:
        check(not terminal.read(), "the terminal got something")


def failing_daemon(screen, program, log):
    with Daemon(log) as daemon, Pointer(screen.env["DISPLAY"]) as pointer:
        game = Game(screen, program, terminal=screen.home + "/terminal.txt")
        game.env["PULSE_SERVER"] = daemon.server
        game.picture("foto.jpg", "180x120", "plasma:tomato-steelblue", "-seed", "7")
        usual = starts(game, "a daemon")
        wait_for(lambda: daemon.streams() >= 1, "the game's stream at the daemon")
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
            wait_for(lambda: daemon.streams() >= 1, "the game's stream at the daemon that came back")
        daemon.hang()
        ends(game)
        starts(game, "a daemon that hangs", usual + 2)
        ends(game)
        daemon.close()
        starts(game, "a daemon that is gone", usual + 2)
        ends(game)


def main(program, shots, folder):
    with Screen(1366, 768) as screen, open(shots + "/daemon.log", "wb") as log:
        waves(screen, program, folder)
        failing_daemon(screen, program, log)
    print("the sound is as it should be")


if __name__ == "__main__":
    script(main)
