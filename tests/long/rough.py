"""The real program under rough treatment: what it takes of memory and time, and how soon it answers."""

import os
import re
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
from desktop import Failure, Screen, check, run, script, wait_for  # noqa: E402, F401
from game import Game, solve  # noqa: E402, F401
from pointer import Pointer  # noqa: E402

GREY = 0xC0C0C0
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


def probe(game, pointer, dialog, most_seconds):
    """Clicks on the first two thumbnails in turn until the scan is over. The seconds each answer took, sorted."""
    corners = {number: frame_corner(game, dialog, number) for number in (1, 2)}
    for number, at in corners.items():
        wait_for(lambda: pointer.pixel(*at) == GREY, f"thumbnail {number}")
    middles = {number: game.thumbnail(dialog, number) for number in corners}
    answers, number, begun = [], 1, time.monotonic()
    looked = begun
    while time.monotonic() - begun < most_seconds:
        number = 3 - number
        pointer.move(*middles[number])
        took = pointer.seconds_until_changed(*corners[number], GREY, pointer.click(1), 20.0)
        check(took is not None, f"no answer to a click within 20 s, {time.monotonic() - begun:.0f} s after the first")
        answers.append(took)
        if time.monotonic() - looked > 2:  # over once the program does nothing without being clicked at
            looked, used = time.monotonic(), processor_seconds(game)
            time.sleep(0.3)
            if processor_seconds(game) - used < 0.02:
                return sorted(answers)
    raise Failure("the scan does not end")


def in_time(answers):
    late = sum(took > ANSWER_WITHIN for took in answers)
    print(f"{len(answers)} clicks: median {1000 * answers[len(answers) // 2]:.0f} ms, 99 of 100 within "
          f"{1000 * answers[len(answers) * 99 // 100]:.0f} ms, longest {1000 * answers[-1]:.0f} ms; "
          f"load {os.getloadavg()[0]:.1f}")
    check(late * 100 <= len(answers), f"{late} of {len(answers)} answers took more than {ANSWER_WITHIN} s")


def doors(game):
    """Nothing of the program can be reached from outside, and nothing else was started by it."""
    place = f"/proc/{game.process.pid}"
    own = {os.readlink(f"{place}/fd/{fd}") for fd in os.listdir(place + "/fd")}
    for family, state in ("tcp", "0A"), ("tcp6", "0A"), ("udp", "07"), ("udp6", "07"), ("unix", "00010000"):
        for words in map(str.split, open(f"{place}/net/{family}").readlines()[1:]):
            inode = words[6 if family == "unix" else 9]
            check(words[3] != state or f"socket:[{inode}]" not in own, f"a socket of its own: {words}")
    check(not open(f"{place}/task/{game.process.pid}/children").read().strip(), "it has started a program")
