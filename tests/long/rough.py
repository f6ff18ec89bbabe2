"""The real program under rough treatment: what it takes of memory and time, and how soon it answers."""

import itertools
import os
import re
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
from desktop import Failure, Screen, check, run, script, wait_for  # noqa: E402, F401
from game import Game  # noqa: E402, F401

GREY = (0xC0, 0xC0, 0xC0)
ANSWER_WITHIN = 0.1  # seconds from a click to its black frame; one in a hundred may be late on a busy machine


def memory(game, what="VmRSS"):
    """MiB now; the most since it was last asked for, for "VmHWM"."""
    with open(f"/proc/{game.process.pid}/status") as file:
        told = int(re.search(what + r":\s+(\d+)", file.read()).group(1)) / 1024
    with open(f"/proc/{game.process.pid}/clear_refs", "w") as file:
        file.write("5")
    return told


def processor_seconds(game):
    return time.clock_gettime((~game.process.pid << 3) | 2)


def frame_corner(game, dialog, number):
    """A pixel of the frame of a thumbnail in the first row, beside its picture."""
    x, y, _, _ = game.screen.place(dialog)
    return round(x + (2835 + 50 + (number - 1) * 1835) / 15) + 1, round(y + (60 + 10 + 200 + 60) / 15)


def open_dialog(game):
    """The picture dialog as soon as it is there."""
    game.menu(0, "Down", "Right", "Down", "Down")
    game.screen.xdo("key", "Return")
    return game.screen.window("Busca Imagens")


def close_dialog(game):
    game.screen.key("alt+F4")
    game.screen.gone("Busca Imagens")


def until_changed(screen, at, since):
    """Seconds from that moment until the pixel, which was just read, is another."""
    before = screen.pixel(*at)
    moment = since()
    while screen.pixel(*at) == before:
        check(time.monotonic() - moment < 20, f"no answer at {at}")
        time.sleep(0.0005)
    return time.monotonic() - moment


def probe(game, dialog, most_seconds=120):
    """Clicks on the first two thumbnails in turn until the scan is over. The seconds each answer took, sorted."""
    screen, answers, looked = game.screen, [], time.monotonic()
    places = [(game.thumbnail(dialog, number), frame_corner(game, dialog, number)) for number in (1, 2)]
    end = looked + most_seconds

    def click():
        moment = screen.press(settle=False)
        screen.release(settle=False)
        return moment

    for middle, corner in itertools.cycle(places):
        wait_for(lambda: screen.pixel(*corner) == GREY, "the frame of a thumbnail")
        screen.move(*middle, settle=False)
        time.sleep(0.02)  # an even pace: many quick answers don't outweigh a stall
        answers.append(until_changed(screen, corner, click))
        if time.monotonic() - looked > 1:  # over once the program does nothing without being clicked at
            used = processor_seconds(game)
            time.sleep(0.3)
            if processor_seconds(game) - used < 0.02:
                return sorted(answers)
            looked = time.monotonic()
            check(looked < end, "the scan does not end")


def in_time(answers):
    late = sum(took > ANSWER_WITHIN for took in answers)
    print(f"{len(answers)} clicks: median {1000 * answers[len(answers) // 2]:.0f} ms, 99 of 100 within "
          f"{1000 * answers[len(answers) * 99 // 100]:.0f} ms, longest {1000 * answers[-1]:.0f} ms; "
          f"load {os.getloadavg()[0]:.1f}", flush=True)
    check(late * 100 <= len(answers), f"{late} of {len(answers)} answers took more than {ANSWER_WITHIN} s")
