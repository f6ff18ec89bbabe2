"""A folder of 2,000 photographs: how soon the first thumbnail comes, how quickly the dialog answers while it fills,
how much memory the thumbnails take.

A probe clicks on one thumbnail after the other without a pause and waits each time for the black frame.

usage: folders.py PROGRAM SCREENSHOT_FOLDER PHOTOGRAPHS_FOLDER [COUNT]
"""

import os
import re
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [os.path.join(HERE, "..", "e2e"), os.path.join(HERE, "..", "sound")]
from desktop import Failure, Screen, script, wait_for  # noqa: E402
from game import Game  # noqa: E402
from pointer import Pointer  # noqa: E402

FIRST_WITHIN = 0.5  # seconds from the dialog's appearing
ANSWER_WITHIN = 0.1  # seconds from a click to its black frame; one in a hundred may be late on a busy machine
BYTES_PER_THUMBNAIL = 109 * 100 * 4 + 4000  # the largest one, its path, tooltip and cell
GREY = 0xC0C0C0


def resident(game):
    with open(f"/proc/{game.process.pid}/status") as file:
        return int(re.search(r"VmRSS:\s+(\d+)", file.read()).group(1)) / 1024


def processor_seconds(game):
    return time.clock_gettime((~game.process.pid << 3) | 2)


def frame_corner(screen, dialog, number):
    """A pixel of the frame of a thumbnail in the first row, beside its picture."""
    x, y, _, _ = screen.place(dialog)
    return round(x + (2835 + 50 + (number - 1) * 1835) / 15) + 1, round(y + (60 + 10 + 200 + 60) / 15)


def probe(game, pointer, dialog, count):
    """Clicks on thumbnails until the scan is over; the seconds each answer took."""
    corners = {number: frame_corner(game.screen, dialog, number) for number in range(1, 5)}
    for number, at in corners.items():
        wait_for(lambda: pointer.pixel(*at) == GREY, f"thumbnail {number}")
    middles = {number: game.thumbnail(dialog, number) for number in corners}
    answers, number, begun = [], 1, time.monotonic()
    looked = begun
    while time.monotonic() - begun < 1.0 * count:
        number = number % 4 + 1
        pointer.move(*middles[number])
        since = pointer.click(1)
        took = pointer.seconds_until_changed(*corners[number], GREY, since, 20.0)
        if took is None:
            raise Failure(f"no answer to a click within 20 s, {time.monotonic() - begun:.0f} s after the first thumbnail")
        answers.append(took)
        if time.monotonic() - looked > 2:  # over once the program does nothing without being clicked at
            looked, used = time.monotonic(), processor_seconds(game)
            time.sleep(0.3)
            if processor_seconds(game) - used < 0.02:
                return answers, looked - begun
    raise Failure("the scan does not end")


def open_dialog(game):
    """The picture dialog as soon as it is there."""
    game.menu(0, "Down", "Right", "Down", "Down")
    game.screen.xdo("key", "Return")
    return game.screen.window("Busca Imagens")


def main(program, shots, photographs, count=2000):
    count = int(count)
    originals = sorted(os.path.join(photographs, name) for name in os.listdir(photographs))
    with Screen(1366, 768) as screen:
        game = Game(screen, program)
        os.makedirs(game.folder + "/Imagens")
        for number in range(count):
            target = f"{game.folder}/Imagens/foto {number:05}.jpg"
            original = originals[number % len(originals)]
            try:
                os.link(original, target)
            except OSError:  # another file system
                os.symlink(os.path.abspath(original), target)
        game.start()
        pointer = Pointer(screen.env["DISPLAY"])
        before = resident(game)
        dialog = open_dialog(game)
        shown = time.monotonic()
        corner = frame_corner(screen, dialog, 1)
        wait_for(lambda: pointer.pixel(*corner) == GREY, "the first thumbnail")
        first = time.monotonic() - shown
        answers, lasted = probe(game, pointer, dialog, count)
        after = resident(game)
        screen.screenshot(f"{shots}/folder.png")
        screen.key("alt+F4")
        screen.gone("Busca Imagens")
        left = resident(game)
        # Closing in mid-scan: the dialog goes at once and nothing goes on behind it.
        corner = frame_corner(screen, open_dialog(game), 4)
        wait_for(lambda: pointer.pixel(*corner) == GREY, "the fourth thumbnail")
        screen.xdo("key", "alt+F4")
        since = time.monotonic()
        screen.gone("Busca Imagens")
        closed = time.monotonic() - since
        time.sleep(0.3)
        used = processor_seconds(game)
        time.sleep(0.5)
        idle = processor_seconds(game) - used < 0.02
        game.end()
    answers.sort()
    late = sum(took > ANSWER_WITHIN for took in answers)
    bound = count * BYTES_PER_THUMBNAIL / 2**20 + 16
    print(f"{count} photographs, {len(originals)} of them different; load {os.getloadavg()[0]:.1f}")
    print(f"first thumbnail {1000 * first:.0f} ms after the dialog; all of them after {lasted:.0f} s")
    print(f"{len(answers)} clicks: median {1000 * answers[len(answers) // 2]:.0f} ms, "
          f"99 of 100 within {1000 * answers[len(answers) * 99 // 100]:.0f} ms, longest {1000 * answers[-1]:.0f} ms")
    print(f"memory {before:.0f} MiB, with all thumbnails {after:.0f} MiB (at most {before + bound:.0f}), "
          f"closed {left:.0f} MiB; closed in mid-scan within {1000 * closed:.0f} ms")
    wrong = [what for true, what in (
        (first <= FIRST_WITHIN, "the first thumbnail is late"),
        (late * 100 <= len(answers), f"{late} of {len(answers)} answers took more than 100 ms"),
        (after - before <= bound, "memory grows by more than the thumbnails"),
        (closed <= 1.0, "the dialog does not close at once"),
        (idle, "the scan goes on behind the closed dialog")) if not true]
    if wrong:
        raise Failure("; ".join(wrong))


if __name__ == "__main__":
    script(main)
