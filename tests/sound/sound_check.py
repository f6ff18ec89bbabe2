"""The real program's sound, recorded: which waves, in which order, how soon; and a daemon that fails.

usage: sound_check.py PROGRAM SCREENSHOT_FOLDER WAVES_FOLDER
"""

import os
import statistics
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))

from desktop import Failure, Screen, check, script, wait_for  # noqa: E402
from game import Game  # noqa: E402
from pointer import Pointer  # noqa: E402
from pulse import RATE, Daemon, Recorder  # noqa: E402
from waves import find, references  # noqa: E402

GAMES = 8  # that may be played until one is heard without gaps


class Dropout(Failure):
    """The machine was too busy to deliver the sound in time: the same must be listened to once more."""


class Player:
    """Carries pieces about with the mouse and knows where on the screen they lie."""

    def __init__(self, game, pointer):
        game.start_picture(3)
        self.game, self.pointer, self.saved = game, pointer, game.save("som")
        self.pieces = sorted(self.saved.pieces, key=lambda p: (p["row"], p["col"]))
        for piece in self.pieces:
            piece["at"] = game.center(self.saved, piece)

    def aligned(self, x, y):
        """The place of a dropped piece's middle: corners come to rest on a lattice."""
        left, top = self.game.to_screen(0, 0)
        half, pitch = self.saved.tile // 2, self.saved.cell // self.saved.unit
        return (left + half + round((x - left - half) / pitch) * pitch,
                top + half + round((y - top - half) / pitch) * pitch)

    def free_place(self):
        """A place in view far from every piece, not below the panel in the corner."""
        width, height = self.game.screen.width, self.game.screen.height
        return next(self.aligned(x, y) for y in range(height - 260, 250, -30) for x in range(width - 450, 450, -30)
                    if all(abs(p["at"][0] - x) > 150 or abs(p["at"][1] - y) > 150 for p in self.pieces))

    def grab(self, piece):
        self.pointer.move(*piece["at"])
        self.game.screen.settle()
        return self.pointer.press()

    def turn(self, piece):
        self.pointer.click(3)
        piece["rotation"] = (piece["rotation"] + 1) % 4

    def drop(self, piece, place):
        x, y = piece["at"]
        for step in range(1, 5):
            self.pointer.move(x + (place[0] - x) * step / 4, y + (place[1] - y) * step / 4)
            time.sleep(0.01)
        piece["at"] = place
        self.pointer.release()

    def home(self, piece):
        x, y = self.pieces[0]["at"]
        return x + piece["col"] * self.saved.cell, y + piece["row"] * self.saved.cell

    def seconds_shown(self):
        """From the last move of a carried piece until it is seen at a bare spot of the board."""
        piece, place = self.pieces[-1], self.free_place()
        self.pointer.move(*piece["at"])
        before = self.pointer.pixel(*place)
        self.pointer.press()
        self.game.screen.settle()
        moved = self.pointer.move(*place)
        seconds = self.pointer.seconds_until_changed(*place, before, moved)
        self.pointer.release()
        self.game.screen.settle()
        check(seconds is not None, "the game stands still: a carried piece does not move")
        piece["at"] = place
        return seconds

    def moves(self, what, limit=1.0):
        """Carries a piece about; the moves must be on the screen in time."""
        seconds = statistics.median(self.seconds_shown() for _ in range(10))
        print(f"  moves shown {what}: {seconds * 1000:.1f} ms")
        check(seconds <= limit, f"moves take {seconds:.3f} s {what}")
        return seconds


class Ear:
    """Hears the waves of a recording."""

    def __init__(self, recorder, known):
        self.recorder, self.known = recorder, known

    def hears(self, what, act, wait, *expected):
        """These waves, the last to its end; those before it may be cut off."""
        since = self.recorder.position()
        act()
        time.sleep(wait)
        heard = find(self.recorder.samples[since:], self.known)
        print(f"  {what}: {heard[:6]}")
        if any(wave.name == "?" for wave in heard):
            raise Dropout(f"{what} has gaps")
        last = heard[-1:]
        check([wave.name for wave in last] == list(expected[-1:]) and all(wave.whole for wave in last) and
              all(wave.name in expected for wave in heard), f"{what}: heard {heard}, expected {expected}")


def play_and_listen(game, pointer, ear):
    player = Player(game, pointer)
    pieces = player.pieces
    left, top = game.board_offset
    corner = player.aligned(*game.to_screen(110 - left, 110 - top))
    for piece in pieces:
        ear.hears("pick-up", lambda: player.grab(piece), 0.3, "CLICK")
        while piece["rotation"]:
            ear.hears("turn", lambda: player.turn(piece), 0.4, "GIRO")
        place = corner if piece is pieces[0] else player.home(piece)
        if piece is pieces[-1]:
            ear.hears("win", lambda: player.drop(piece, place), 1.6, "CLICK", "ROTATE", "COMPLETE")
        else:
            ear.hears("drop at home", lambda: player.drop(piece, place), 0.3, "CLICK", "ROTATE")
    game.won()
    game.menu(1, "Down", "Down", "Down", "Return")
    game.start_picture(3)
    ear.hears("switched off", lambda: Player(game, pointer).seconds_shown(), 0.4)
    game.menu(1, "Down", "Down", "Down", "Return")


def listen_until_no_gaps(game, pointer, ear):
    for attempt in range(1, GAMES + 1):
        try:
            return play_and_listen(game, pointer, ear)
        except Dropout as dropout:
            if attempt == GAMES:
                raise
            print(f"  {dropout}: the machine is busy, another game")
            pointer.release()
            if game.screen.has_window("Parabéns!!"):
                game.won()


def break_the_daemon(game, pointer, daemon):
    player = Player(game, pointer)
    print("a daemon that fails:")
    limit = player.moves("while it works") * 2 + 0.020
    daemon.hang()
    player.moves("while it hangs", limit)
    daemon.go_on()
    for _ in range(2):  # once more: what was found again can be lost again
        daemon.die()
        player.moves("when it died", limit)
        daemon.start()
        time.sleep(2)  # until the next try is due
        player.moves("when it is back", limit)
        wait_for(lambda: daemon.streams() >= 1, "the game's stream at the daemon that came back")
    quiet(game, "a daemon that died")
    game.end()


def quiet(game, what):
    with open(game.terminal, errors="replace") as terminal:
        said = terminal.read()
    check(not said, f"{what}: the terminal got: {said[:500]}")


def starts(game, what, limit):
    begin = time.monotonic()
    game.start()
    took = time.monotonic() - begin
    print(f"  start with {what}: {took:.1f} s")
    check(took <= limit, f"the start took {took:.1f} s with {what}")
    quiet(game, what)
    return took


def start_without(game, daemon, usual):
    daemon.start()
    daemon.hang()
    starts(game, "a daemon that hangs", usual + 2)
    begin = time.monotonic()
    game.end()
    check(time.monotonic() - begin <= 3, "the program does not end while the daemon hangs")
    daemon.close()
    starts(game, "a daemon that is gone", usual + 2)
    game.end()


def main(program, shots, waves):
    with Screen(1366, 768) as screen, open(shots + "/daemon.log", "wb") as log, Daemon(log) as daemon, \
            Pointer(screen.env["DISPLAY"]) as pointer:
        game = Game(screen, program, terminal=screen.home + "/terminal.txt")
        game.env["PULSE_SERVER"] = daemon.server
        game.picture("foto pequena.jpg", "180x120", "plasma:tomato-steelblue", "-seed", "7")
        usual = starts(game, "a daemon", 60)
        wait_for(lambda: daemon.streams() >= 1, "the game's stream at the daemon")
        with Recorder(daemon, log) as recorder:
            listen_until_no_gaps(game, pointer, Ear(recorder, references(waves, RATE)))
        break_the_daemon(game, pointer, daemon)
        start_without(game, daemon, usual)
    print("the sound is as it should be")


if __name__ == "__main__":
    script(main)
