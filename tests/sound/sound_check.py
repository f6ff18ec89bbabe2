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

HEARD_WITHIN = 0.028  # from the press to the sink, which works ahead of the clock by up to 2 ms
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
    def __init__(self, recorder, known):
        self.recorder, self.known = recorder, known

    def listen(self, what, act, wait):
        """The waves from before `act` until `wait` seconds after it."""
        since = self.recorder.position()
        act()
        time.sleep(wait)
        heard = find(self.recorder.samples[since:], self.known)
        print(f"  {what}: {heard[:6]}")
        if any(wave.name == "?" for wave in heard) and heard[0].name != "?":
            raise Dropout(f"{what} has gaps")
        return heard

    def hears(self, what, act, wait, *expected, cut=()):
        """Just these waves with their full lengths, but those at the places `cut` cut off."""
        heard = self.listen(what, act, wait)
        check([wave.name for wave in heard] == list(expected), f"{what}: heard {heard}, expected {expected}")
        for place, wave in enumerate(heard):
            check(wave.whole == (place not in cut), f"{what}: {heard}")

    def hears_last(self, what, act, wait, name):
        """That wave to its end; the waves before it are cut off at once, or within a buffer of it."""
        heard = self.listen(what, act, wait)
        check(heard and heard[-1].name == name and heard[-1].whole, f"{what}: heard {heard}, expected {name}")
        check(not any(wave.whole or wave.length > RATE * 0.03 for wave in heard[:-1]), f"{what}: not cut off: {heard}")

    def delay(self, press):
        """Seconds from a press to the first loud sample."""
        since = self.recorder.position()
        pressed = press()
        time.sleep(0.25)
        samples = self.recorder.samples
        place = next((i for i in range(since, len(samples)) if abs(samples[i]) > 2000), None)
        check(place is not None, "a pick-up was not heard")
        return self.recorder.moment(place) - pressed


def play_and_listen(game, pointer, ear):
    player = Player(game, pointer)
    pieces, piece = player.pieces, player.pieces[1]
    print("waves:")
    ear.hears("pick-up", lambda: player.grab(piece), 0.3, "CLICK")
    ear.hears("turn", lambda: player.turn(piece), 0.4, "GIRO")
    ear.hears("drop", lambda: player.drop(piece, player.free_place()), 0.3, "CLICK")

    def in_haste():
        player.grab(piece)
        time.sleep(0.03)
        player.turn(piece)
        time.sleep(0.09)
        piece["at"] = player.free_place()
        pointer.move(*piece["at"])
        pointer.release()

    ear.hears("pick-up, turn 30 ms later, drop 90 ms later", in_haste, 0.4, "CLICK", "GIRO", "CLICK", cut=(0, 1))

    delays = []
    for number in range(15):
        delays.append(ear.delay(lambda: player.grab(pieces[-1])))
        player.drop(pieces[-1], pieces[-1]["at"])
        time.sleep(0.3 + number * 0.0037)  # it is heard out; the next comes at another place in the sink's round
    delay = statistics.median(delays)
    print(f"  a pick-up is heard after {delay * 1000:.1f} ms")
    check(delay <= HEARD_WITHIN, f"a pick-up is heard after {delay:.3f} s")

    def switched_off():
        game.menu(1, "Down", "Down", "Down", "Return")
        player.grab(pieces[-1])
        player.turn(pieces[-1])
        player.drop(pieces[-1], player.free_place())

    ear.hears("switched off: menu, pick-up, turn, drop", switched_off, 0.4)
    game.menu(1, "Down", "Down", "Down", "Return")

    left, top = game.board_offset
    corner = player.aligned(*game.to_screen(110 - left, 110 - top))
    for piece in pieces:
        player.grab(piece)
        while piece["rotation"]:
            player.turn(piece)
            time.sleep(0.02)
        time.sleep(0.4)  # the turns are heard out
        last = piece is pieces[-1]
        place = corner if piece is pieces[0] else player.home(piece)
        ear.hears_last("win" if last else "drop at home", lambda: player.drop(piece, place), 1.6 if last else 0.3,
                       "COMPLETE" if last else "ROTATE")
    game.won()


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


def break_the_daemon(game, pointer, ear, daemon):
    player = Player(game, pointer)
    print("a daemon that fails:")
    limit = player.moves("while it works") * 2 + 0.020
    daemon.hang()
    player.moves("while it hangs", limit)
    time.sleep(3)
    player.moves("after it hung for seconds", limit)
    daemon.go_on()
    time.sleep(1.5)
    piece = player.pieces[-1]
    ear.hears("it goes on: pick-up", lambda: player.grab(piece), 0.5, "CLICK")
    player.drop(piece, piece["at"])
    daemon.die()
    player.moves("when it died", limit)
    time.sleep(2)
    player.moves("two seconds later", limit)
    quiet(game, "a daemon that died")
    game.end()


def quiet(game, what):
    with open(game.terminal, errors="replace") as terminal:
        said = terminal.read()
    check(not said, f"{what}: the terminal got: {said[:500]}")


def timed(act):
    begin = time.monotonic()
    act()
    return time.monotonic() - begin


def starts(game, what, usual):
    took = timed(game.start)
    print(f"  start with {what}: {took:.1f} s (usual {usual:.1f} s)")
    check(took <= usual + 2, f"the start took {took:.1f} s with {what}")
    time.sleep(1)
    quiet(game, what)


def start_without(game, usual, log):
    daemon = Daemon(log)
    try:
        daemon.hang()
        game.env["PULSE_SERVER"] = daemon.server
        starts(game, "a daemon that hangs", usual)
        took = timed(game.end)
        check(took <= 3, f"the program took {took:.1f} s to end while the daemon hangs")
    finally:
        daemon.close()
    starts(game, "a daemon that is gone", usual)
    game.end()
    del game.env["PULSE_SERVER"]
    starts(game, "no sound device at all", usual)
    game.end()


def main(program, shots, waves):
    with Screen(1366, 768) as screen, open(shots + "/daemon.log", "wb") as log, Daemon(log) as daemon, \
            Recorder(daemon, log) as recorder, Pointer(screen.env["DISPLAY"]) as pointer:
        game = Game(screen, program, terminal=screen.home + "/terminal.txt")
        game.env["PULSE_SERVER"] = daemon.server
        game.picture("foto pequena.jpg", "180x120", "plasma:tomato-steelblue", "-seed", "7")
        usual = timed(game.start)
        wait_for(lambda: daemon.streams() >= 1, "the game's stream at the daemon")
        ear = Ear(recorder, references(waves, RATE))
        listen_until_no_gaps(game, pointer, ear)
        break_the_daemon(game, pointer, ear, daemon)
        start_without(game, usual, log)
    print("the sound is as it should be")


if __name__ == "__main__":
    script(main)
