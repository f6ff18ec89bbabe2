"""The real program's sound, recorded: which waves, in which order, how soon; and a daemon that fails.

usage: sound_check.py PROGRAM SCREENSHOT_FOLDER WAVES_FOLDER
"""

import os
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))

from desktop import Failure, Game, Saved, Screen, run, wait_for  # noqa: E402
from pointer import Pointer  # noqa: E402
from pulse import RATE, Daemon, Recorder  # noqa: E402
from waves import find, references, rough_likeness  # noqa: E402

HEARD_WITHIN = 0.030  # from the press to the sink
PRESSES = 15
GAMES = 8  # that may be played until one is heard without gaps


class Dropout(Failure):
    """The machine was too busy to deliver the sound in time: the same must be listened to once more."""


class SoundScreen(Screen):
    """Keeps what the game writes to its terminal; says which daemon the game finds."""

    def __init__(self, width, height):
        super().__init__(width, height)
        self.terminal = os.path.join(self.home, "terminal.txt")

    def _start(self, command, **more):
        if not os.path.basename(command[0]).startswith("fento"):
            return super()._start(command, **more)
        with open(self.terminal, "wb") as terminal:
            process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=terminal, stderr=terminal, **more)
        self.processes.append(process)
        return process

    def said(self):
        with open(self.terminal, "rb") as terminal:
            return terminal.read().decode(errors="replace")


class Player:
    """Carries pieces about with the mouse and knows where on the screen they lie."""

    def __init__(self, game, pointer, saved):
        self.game, self.pointer, self.saved = game, pointer, saved
        half = saved.tile // 2
        self.pieces = sorted(saved.pieces, key=lambda p: (p["row"], p["col"]))
        for piece in self.pieces:
            piece["at"] = game.to_screen(piece["x"] + half, piece["y"] + half)

    def aligned(self, x, y):
        """The place of a dropped piece's middle: corners come to rest on a lattice."""
        left, top = self.game.to_screen(0, 0)
        half, pitch = self.saved.tile // 2, self.saved.cell // self.saved.unit
        return (left + half + round((x - left - half) / pitch) * pitch,
                top + half + round((y - top - half) / pitch) * pitch)

    def free_places(self):
        """Places in view far from every piece, not below the panel in the corner."""
        width, height = self.game.screen.width, self.game.screen.height
        for y in range(height - 260, 250, -30):
            for x in range(width - 450, 450, -30):
                if all(abs(p["at"][0] - x) > 150 or abs(p["at"][1] - y) > 150 for p in self.pieces):
                    yield self.aligned(x, y)

    def grab(self, piece):
        self.pointer.move(*piece["at"])
        time.sleep(0.05)
        return self.pointer.press()

    def drop(self, piece, place):
        x, y = piece["at"]
        for step in range(1, 5):
            self.pointer.move(x + (place[0] - x) * step / 4, y + (place[1] - y) * step / 4)
            time.sleep(0.01)
        time.sleep(0.05)
        piece["at"] = place
        return self.pointer.release()

    def turn_upright(self, piece):
        for _ in range((4 - piece["rotation"]) % 4):
            self.pointer.click(3)
            time.sleep(0.02)
        piece["rotation"] = 0

    def home(self, piece):
        first = self.pieces[0]["at"]
        return (first[0] + piece["col"] * self.saved.cell, first[1] + piece["row"] * self.saved.cell)


class Check:
    def __init__(self, recorder, known):
        self.recorder, self.known = recorder, known

    def hears(self, what, expected, since, wait, whole=None):
        """The waves after `since` are `expected`; those named in `whole` (or all) with their full lengths."""
        time.sleep(wait)
        heard = find(self.recorder.samples[since:], self.known)
        names = [wave.name for wave in heard]
        refuse_dropouts(what, heard)
        if names != expected:
            raise Failure(f"{what}: heard {heard}, expected {expected}")
        for index, wave in enumerate(heard):
            if (whole is None or index in whole) and not wave.whole:
                raise Failure(f"{what}: {heard}: {wave.name} ended after {wave.length} samples")
        for index, wave in enumerate(heard):
            if whole is not None and index not in whole and wave.whole:
                raise Failure(f"{what}: {heard}: {wave.name} was not cut off")
        lengths = ", ".join(f"{w.name} {w.length * 1000 / RATE:.1f} ms{'' if w.whole else ' (cut off)'}"
                            for w in heard)
        print(f"  {what}: {lengths or 'silence'}")
        return heard

    def last_is(self, what, name, since, wait):
        """The waves before the last one were cut off at once, or within a buffer of it."""
        time.sleep(wait)
        heard = find(self.recorder.samples[since:], self.known)
        refuse_dropouts(what, heard)
        if not heard or heard[-1].name != name or not heard[-1].whole:
            raise Failure(f"{what}: heard {heard}, expected {name} to its end")
        if any(wave.whole or wave.length > RATE * 0.03 for wave in heard[:-1]):
            raise Failure(f"{what}: {heard}: a wave was not cut off")
        wave = heard[-1]
        like = rough_likeness(self.recorder.samples[since + wave.start:since + wave.end], self.known[name])
        print(f"  {what}: {name} {wave.length * 1000 / RATE:.1f} ms, correlation {like:.4f}"
              f"{', after ' + str(heard[:-1]) if heard[:-1] else ''}")


def refuse_dropouts(what, heard):
    if any(wave.name == "?" or wave.gap for wave in heard) and heard[0].name != "?":
        raise Dropout(f"{what}: {heard[:6]}: with gaps")


def onset(recorder, since, loud=2000):
    samples = recorder.samples
    return next((i for i in range(since, len(samples)) if abs(samples[i]) > loud), None)


def measure_floor(daemon, recorder, wave):
    """Milliseconds until a sound that the daemon holds itself is in the recording: nobody can be faster."""
    line = daemon.open_line()
    line.sendall(f"load-sample click {wave}\n".encode())
    time.sleep(0.3)
    delays = []
    for _ in range(PRESSES):
        since = recorder.position()
        sent = time.monotonic()
        line.sendall(b"play-sample click fento\n")
        time.sleep(0.3)
        place = onset(recorder, since)
        if place is not None:
            delays.append((recorder.moment(place) - sent) * 1000)
    line.close()
    return delays


def measure_presses(player, recorder, check):
    """Milliseconds from a press on a piece to the first loud sample of its click."""
    piece, delays = player.pieces[-1], []
    for number in range(PRESSES):
        time.sleep(0.2 + number * 0.0037)
        since = recorder.position()
        pressed = player.grab(piece)
        time.sleep(0.25)
        place = onset(recorder, since)
        if place is None:
            raise Failure("a pick-up was not heard")
        delays.append((recorder.moment(place) - pressed) * 1000)
        player.drop(piece, piece["at"])
        time.sleep(0.1)
    return delays


def say_delays(what, delays):
    print(f"  {what}: median {statistics.median(delays):.1f} ms, {min(delays):.1f} to {max(delays):.1f} ms "
          f"({len(delays)} times)")


def show_time(player, piece, place):
    """Milliseconds from the last move of a carried piece until it is seen at `place`, a bare spot of the board."""
    player.pointer.move(*piece["at"])
    before = player.pointer.pixel(*place)
    player.pointer.press()
    time.sleep(0.02)
    moved = player.pointer.move(*place)
    seconds = player.pointer.seconds_until_changed(*place, before, moved)
    player.pointer.release()
    time.sleep(0.05)
    if seconds is None:
        raise Failure("the game stands still: a carried piece does not move")
    piece["at"] = place
    return seconds * 1000


def move_about(player, what, slowest=None):
    """Carries a piece between two bare places; each move must be on the screen in time."""
    piece = player.pieces[-1]
    times = []
    for _ in range(10):
        times.append(show_time(player, piece, next(player.free_places())))
    print(f"  moves shown {what}: median {statistics.median(times):.1f} ms, at most {max(times):.1f} ms")
    if slowest is not None and statistics.median(times) > slowest:
        raise Failure(f"moves take {statistics.median(times):.1f} ms {what}")
    return times


def quiet(screen, what):
    if screen.said():
        raise Failure(f"{what}: the terminal got: {screen.said()[:500]}")


def start_timed(game):
    begin = time.monotonic()
    game.start()
    return time.monotonic() - begin


def end_timed(game):
    begin = time.monotonic()
    game.end()
    if game.process.returncode != 0:
        raise Failure(f"the program ended with {game.process.returncode}")
    return time.monotonic() - begin


def start_game(game):
    dialog = game.new_game(3)
    time.sleep(1.0)
    game.screen.click(*game.thumbnail(dialog, 1), times=2)
    game.screen.gone("Busca Imagens")
    time.sleep(0.6)


def play_and_listen(game, pointer, recorder, check, daemon, waves):
    screen = game.screen
    start_game(game)
    player = Player(game, pointer, Saved(game.save("som")))
    pieces = player.pieces

    print("waves:")
    time.sleep(0.5)
    since = recorder.position()
    player.grab(pieces[1])
    check.hears("pick-up", ["CLICK"], since, 0.3)
    since = recorder.position()
    pointer.click(3)
    check.hears("turn", ["GIRO"], since, 0.4)
    pieces[1]["rotation"] = (pieces[1]["rotation"] + 1) % 4
    since = recorder.position()
    player.drop(pieces[1], next(player.free_places()))
    check.hears("drop", ["CLICK"], since, 0.3)

    since = recorder.position()
    player.grab(pieces[1])
    time.sleep(0.03)
    pointer.click(3)
    time.sleep(0.09)
    place = next(player.free_places())
    pointer.move(*place)
    pointer.release()
    pieces[1].update(at=place, rotation=(pieces[1]["rotation"] + 1) % 4)
    check.hears("pick-up, turn 30 ms later, drop 90 ms later", ["CLICK", "GIRO", "CLICK"], since, 0.4, whole=[2])

    print("time to the ear:")
    floor = measure_floor(daemon, recorder, waves + "/click.wav")
    say_delays("floor, a sound that the daemon plays by itself", floor)
    delays = measure_presses(player, recorder, check)
    say_delays("pick-up", delays)
    # The sink may work ahead of the clock; a floor below 0 is what it is ahead by.
    delay = statistics.median(delays) - min(0, statistics.median(floor))
    print(f"  a pick-up is heard within {delay:.1f} ms")
    if delay > HEARD_WITHIN * 1000:
        raise Failure(f"a pick-up is heard after {delay:.1f} ms")

    print("switch:")
    since = recorder.position()
    game.menu(1, "Down", "Down", "Down", "Return")
    player.grab(pieces[-1])
    pointer.click(3)
    pieces[-1]["rotation"] = (pieces[-1]["rotation"] + 1) % 4
    player.drop(pieces[-1], next(player.free_places()))
    check.hears("switched off: menu, pick-up, turn, drop", [], since, 0.4)
    game.menu(1, "Down", "Down", "Down", "Return")
    time.sleep(0.3)

    print("home:")
    corner = player.aligned(*game.to_screen(-game.board_offset[0] + 110, -game.board_offset[1] + 110))
    for piece in pieces:
        player.grab(piece)
        player.turn_upright(piece)
        time.sleep(0.4)
        since = recorder.position()
        player.drop(piece, player.home(piece) if piece is not pieces[0] else corner)
        if piece is not pieces[-1]:
            check.last_is("drop at home", "ROTATE", since, 0.3)
        else:
            check.last_is("win", "COMPLETE", since, 1.6)
    screen.window("Parabéns!!")
    screen.key("Return")
    screen.gone("Parabéns!!")


def break_the_daemon(game, pointer, recorder, check, daemon):
    screen = game.screen
    start_game(game)
    player = Player(game, pointer, Saved(game.save("som")))
    print("a daemon that fails:")
    normal = move_about(player, "while it works")
    limit = statistics.median(normal) * 2 + 20
    daemon.hang()
    move_about(player, "while it hangs", limit)
    time.sleep(3)
    move_about(player, "after it hung for seconds", limit)
    daemon.go_on()
    time.sleep(1.5)
    since = recorder.position()
    player.grab(player.pieces[-1])
    check.hears("it goes on: pick-up", ["CLICK"], since, 0.5)
    player.drop(player.pieces[-1], player.pieces[-1]["at"])
    daemon.die()
    move_about(player, "when it died", limit)
    time.sleep(2)
    move_about(player, "two seconds later", limit)
    quiet(screen, "a daemon that died")
    print(f"  the program ended {end_timed(game):.1f} s after it was asked to")


def start_without(screen, game, usual, log):
    daemon = Daemon(log)
    try:
        daemon.hang()
        game.env["PULSE_SERVER"] = daemon.server
        judge(screen, "a daemon that hangs", start_timed(game), usual)
        took = end_timed(game)
        if took > 3:
            raise Failure(f"the program took {took:.1f} s to end while the daemon hangs")
    finally:
        daemon.close()
    judge(screen, "a daemon that is gone", start_timed(game), usual)
    end_timed(game)
    del game.env["PULSE_SERVER"]
    judge(screen, "no sound device at all", start_timed(game), usual)
    end_timed(game)


def judge(screen, what, seconds, usual):
    print(f"  start with {what}: {seconds:.1f} s (usual {usual:.1f} s)")
    if seconds > usual + 2:
        raise Failure(f"the start took {seconds:.1f} s with {what}")
    time.sleep(1)
    quiet(screen, what)


def main():
    program, shots, waves = map(os.path.abspath, sys.argv[1:4])
    os.makedirs(shots, exist_ok=True)
    with SoundScreen(1366, 768) as screen, open(shots + "/daemon.log", "wb") as log:
        daemon = Daemon(log)
        recorder = pointer = None
        try:
            recorder = Recorder(daemon, log)
            pointer = Pointer(screen.env["DISPLAY"])
            game = Game(screen, program)
            game.env["PULSE_SERVER"] = daemon.server
            os.makedirs(game.folder + "/Imagens")
            run("convert", "-size", "180x120", "plasma:tomato-steelblue", "-seed", "7",
                game.folder + "/Imagens/foto pequena.jpg")
            usual = start_timed(game)
            wait_for(lambda: daemon.streams() >= 1, "the game's stream at the daemon", 5)
            print(f"the game plays; the recorder's chunks come every few ms, late by at most "
                  f"{max(recorder.lateness[-200:]) * 1000:.0f} ms")
            check = Check(recorder, references(waves, RATE))
            for attempt in range(1, GAMES + 1):
                try:
                    play_and_listen(game, pointer, recorder, check, daemon, waves)
                    break
                except Dropout as dropout:
                    if attempt == GAMES:
                        raise
                    print(f"  {dropout}: the machine is busy, another game")
                    pointer.release()
                    if screen.has_window("Parabéns!!"):
                        screen.key("Return")
                        screen.gone("Parabéns!!")
            break_the_daemon(game, pointer, recorder, check, daemon)
            start_without(screen, game, usual, log)
        except Failure:
            screen.screenshot(shots + "/failed.png")
            raise
        finally:
            if pointer:
                pointer.close()
            if recorder:
                recorder.close()
                with open(shots + "/recording.s16", "wb") as file:
                    recorder.samples.tofile(file)
            daemon.close()
    print("the sound is as it should be")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"sound: {failure}")
