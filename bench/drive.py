"""The real program under a private X server, its CPU time read from outside.

Nothing in the program is instrumented. The system keeps the CPU time of a process, all its
threads together, to the nanosecond; wall time says little on a machine that others use too.
"""

import os
import time

from desktop import Failure, Screen, run, wait_for
from game import Game

LEVELS = {54: ((1366, 768), 3), 247: ((1920, 1080), 5), 864: ((3840, 2160), 5)}  # pieces: screen, level


def cpu(pid):
    """Seconds of CPU that a process has used so far (the clock that clock_getcpuclockid names)."""
    return time.clock_gettime((~pid << 3) | 2)


def until_idle(pid, quiet=0.3, seconds=60.0):
    """Waits until the process has done nothing for `quiet` seconds.

    Returns its CPU time then and the moment at which it last worked.
    """
    used, worked = cpu(pid), time.monotonic()
    end = worked + seconds
    while time.monotonic() < end:
        time.sleep(0.004)
        now, before = cpu(pid), used
        used = now
        if now - before > 0.0002:
            worked = time.monotonic()
        elif time.monotonic() - worked > quiet:
            return used, worked
    raise Failure(f"process {pid} did not come to rest within {seconds:g} s")


def status(pid, key):
    """A line of /proc/PID/status, in MiB."""
    with open(f"/proc/{pid}/status") as file:
        for line in file:
            if line.startswith(key + ":"):
                return int(line.split()[1]) / 1024
    raise Failure(f"no {key} of process {pid}")


class Driven(Game):
    """A game whose folder of pictures holds given photographs."""

    def __init__(self, screen, program, photos, scale=1):
        super().__init__(screen, program, scale=scale)
        self.pictures = os.path.join(self.folder, "Imagens")
        os.makedirs(self.pictures)
        for number, photo in enumerate(photos):
            run("cp", "--reflink=auto", photo, f"{self.pictures}/foto {number:03}.jpg")

    def end(self):
        """Ends the program and takes its folder away: there will be many of them."""
        super().end()
        run("rm", "-r", self.folder)

    def started(self):
        """Starts the program; returns its CPU time when the main window has come and is at rest."""
        self.start()
        return cpu(self.process.pid)

    def choose(self, level, name):
        """Starts a game from a picture; returns CPU and wall seconds from the choice to the board.

        The choice is the second press of a double click. It is over when the program rests.
        """
        dialog = self.new_game(level)
        names = os.listdir(self.pictures)  # the file system's own order, as the dialog's
        self.screen.click(*self.thumbnail(dialog, names.index(name) + 1))
        start, clock = cpu(self.process.pid), time.monotonic()
        self.screen.xdo("click", 1)
        self.screen.gone("Busca Imagens")
        used, worked = until_idle(self.process.pid)
        return used - start, worked - clock

    def scan(self, pictures):
        """Opens the picture dialog; returns CPU seconds from the command to the last thumbnail."""
        self.menu(0, "Down", "Right", "Down", "Down")
        start = cpu(self.process.pid)
        self.screen.key("Return")
        self.screen.window("Busca Imagens")
        used = cpu(self.process.pid)
        self.screen.key("alt+F4")
        self.screen.gone("Busca Imagens")
        return used - start

    def idle(self, seconds=3.0):
        """The share of a core that the program takes while only its clock runs."""
        start = cpu(self.process.pid)
        time.sleep(seconds)
        return (cpu(self.process.pid) - start) / seconds

    def find_piece(self):
        """A point in the middle of the screen's upper part at which a piece lies."""
        pixel = self.screen.pixel
        width, height = self.screen.width, self.screen.height
        for y in range(self.origin[1] + 60, height - 60, 7):
            for x in range(width // 4, 3 * width // 4, 7):
                if all(pixel(x + dx, y + dy) != self.BOARD for dx in range(-12, 13, 4) for dy in range(-12, 13, 4)):
                    return x, y
        raise Failure("no piece on the board")


def zigzag(x, y, count, reach):
    """`count` places round x, y, none the same as the one before it."""
    step = 6
    way = [step * (k if k <= reach // step else 2 * (reach // step) - k) for k in range(2 * (reach // step))]
    return [(x + way[k % len(way)], y + way[k // 2 % len(way)] // 2) for k in range(1, count + 1)]


def moves(screen, places, pause=0.04):
    """Moves the pointer from place to place, from one process of its own."""
    words = []
    for x, y in places:
        words += ["mousemove", round(x), round(y), "sleep", pause]
    screen.xdo(*words)


def cost_of_moves(screen, pid, x, y, count, reach):
    """CPU seconds of one move of what is held at x, y."""
    screen.settle()
    start = cpu(pid)
    moves(screen, zigzag(x, y, count, reach))
    screen.settle()
    return (cpu(pid) - start) / count


class BareWindow:
    """The yardstick of the moves, on a screen of its own."""

    def __init__(self, program, size, rect):
        self.screen = Screen(*size)
        self.process = self.screen._start([program, *map(str, rect)], env=self.screen.env)
        window = self.screen.window("bare window")
        wait_for(lambda: self.screen.place(window)[2] >= size[0] - 2, "the maximised bare window")
        self.screen.settle()

    def close(self):
        self.screen.close()
