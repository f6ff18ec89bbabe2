"""Measures how fast the game is and compares each figure with what it must reach.

usage: speed.py PROGRAM BENCH_FOLDER PHOTO_FOLDER [GROUP...]
groups: board, growth, start, moves, groups, dense, folder; without one, all of them
"""

import json
import os
import subprocess
import sys
from statistics import median

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "tests", "e2e"))
import drive  # noqa: E402
from desktop import Failure, Screen  # noqa: E402

REPETITIONS = 9
MOVES = 60  # of one repetition


class Table:
    def __init__(self):
        self.short = 0

    def row(self, what, measured, limit, unit="", note=""):
        """Prints one figure that must not exceed `limit`."""
        fine = measured <= limit
        self.short += not fine
        print(f"{'ok   ' if fine else 'SHORT'} {what:<64} {measured:9.3g} {unit:<5} at most {limit:g}"
              f"{'   ' + note if note else ''}", flush=True)


def ratio(pairs):
    """The median of the quotients of measurements that were taken side by side."""
    return median(a / b for a, b in pairs)


def ms(values):
    return f"{median(values) * 1000:.3g} ms"


def spread(pairs):
    quotients = sorted(a / b for a, b in pairs)
    return f"{ms(a for a, _ in pairs)} against {ms(b for _, b in pairs)}; {quotients[0]:.2f} to {quotients[-1]:.2f}"


def google_benchmark(program, *arguments):
    """By benchmark name, CPU and wall seconds of each repetition."""
    done = subprocess.run([program, "--benchmark_format=json", *arguments], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True)
    if done.returncode:
        raise Failure(f"{program}: {done.stderr.strip()}")
    unit = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
    times = {}
    for result in json.loads(done.stdout)["benchmarks"]:
        if result.get("error_occurred"):
            raise Failure(f"{program}: {result['error_message']}")
        if result.get("run_type") == "iteration":
            scale = unit[result["time_unit"]]
            times.setdefault(result["run_name"], []).append((result["cpu_time"] * scale, result["real_time"] * scale))
    return times


class Speed:
    def __init__(self, program, bench, photos):
        self.program, self.bench = program, bench
        names = sorted(n for n in os.listdir(photos) if n.endswith(".jpg"))
        self.photos = [os.path.join(photos, n) for n in names]
        self.large = self.photos[:3]  # those of 6000x4000
        self.table = Table()

    def decode(self, kind, files):
        """CPU and wall seconds of one decode of each file, by a fresh process."""
        times = google_benchmark(self.bench + "/picture_bench", f"--benchmark_filter={kind}", *files)
        return next(iter(times.values()))[0]

    # The routines by themselves ------------------------------------------------------

    def board(self):
        times = google_benchmark(self.bench + "/board_bench", f"--benchmark_repetitions={REPETITIONS}",
                                 "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.1")
        of = {name: median(cpu for cpu, _ in values) for name, values in times.items()}
        us = lambda name: f"{of[name] * 1e6:.3g} us"  # noqa: E731
        whole = of["ComposeWhole"]
        self.table.row("whole 4K board composed, against memcpy", whole / of["CopyBoard"], 2.0, "times",
                       f"{us('ComposeWhole')} against {us('CopyBoard')}")
        for over, name in ((0, "spread pieces"), (1, "bare board")):
            large, small = f"MoveOnePiece/864/{over}", f"MoveOnePiece/50/{over}"
            self.table.row(f"single piece moved over {name}, 864 against 50 pieces", of[large] / of[small], 1.3, "times",
                           f"{us(large)} against {us(small)}")
            self.table.row(f"single piece moved over {name}, against a whole board", of[large] / whole, 1 / 200, "times")
        self.table.row("half of 864 pieces moved, against a whole board", of["MoveHalfOfThePieces"] / whole, 1.2, "times",
                       f"{us('MoveHalfOfThePieces')} against {us('ComposeWhole')}")
        self.table.row("pick-up in a group of 800, against a whole board", of["PickUpInGroup/800"] / whole, 1 / 20, "times",
                       us("PickUpInGroup/800"))
        self.table.row("pick-up per piece, group of 800 against 200",
                       of["PickUpInGroup/800"] / of["PickUpInGroup/200"] / 4, 1.15, "times", us("PickUpInGroup/200"))
        self.table.row("RotatePiece at 160, against copying the square", of["TurnPiece"] / of["CopySquare"], 10, "times",
                       f"{us('TurnPiece')} against {us('CopySquare')}")

        for name, what in (("Compose", "whole board composed"), ("Move", "piece moved"), ("PickUp", "pick-up")):
            plain, dense = f"{name}AtDensity/1", f"{name}AtDensity/2"
            self.table.row(f"{what} on as many pixels, scale 2 against 1", of[dense] / of[plain], 1.3, "times",
                           f"{us(dense)} against {us(plain)}")

    # How the cost grows with the pieces ------------------------------------------------

    def growth(self):
        times = google_benchmark(self.bench + "/growth_bench", f"--benchmark_repetitions={REPETITIONS}",
                                 "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.02")
        of = {}
        for name, values in times.items():
            what, count = name.split("/")[:2]
            of.setdefault(what, {})[int(count)] = median(wall for _, wall in values)
        for what, by_count in of.items():
            print(f"      {what}: " + ", ".join(f"{count} pieces {1e6 * time:.4g} us" for count, time in sorted(by_count.items())))
        self.table.row("a piece moved, 16,000 pieces against 50", of["Move"][16000] / of["Move"][50], 1.5, "times")
        for what in ("PickUp", "Drop", "Save", "Load"):
            self.table.row(f"{what} per piece, 16,000 pieces against 1,000", of[what][16000] / of[what][1000] / 16, 1.5,
                           "times")

    # From the start to the first move ------------------------------------------------

    def start(self):
        for pieces, most, memory in ((54, 1.2, None), (247, 1.5, 150), (864, 2.5, 300)):
            size, level = drive.LEVELS[pieces]
            boards, walls, starts, idles, rss, hwm = [], [], [], [], [], []
            with Screen(*size) as screen:
                for turn in range(REPETITIONS):
                    number = turn % len(self.large)
                    game = drive.Driven(screen, self.program, self.large)
                    starts.append(game.started())
                    early = self.decode("FullDecode", [self.large[number]]) if turn % 2 else None
                    used, wall = game.choose(level, f"foto {number:03}.jpg")
                    decode = early or self.decode("FullDecode", [self.large[number]])
                    boards.append((used, decode[0]))
                    walls.append((wall, decode[1]))
                    idles.append(game.idle())
                    x, y = game.find_piece()
                    screen.move(x, y)
                    screen.press()
                    drive.moves(screen, drive.zigzag(x, y, 10, 60))
                    screen.release()
                    rss.append(drive.status(game.process.pid, "VmRSS"))
                    hwm.append(drive.status(game.process.pid, "VmHWM"))
                    if turn == REPETITIONS - 1:
                        self.expect(game, pieces)
                    game.end()
            self.table.row(f"from the choice to the board, {pieces} pieces, CPU against one decode", ratio(boards), most,
                           "times", f"{spread(boards)}; by the wall clock {ratio(walls):.2f}")
            if memory:
                self.table.row(f"memory after the first move, {pieces} pieces (VmRSS)", median(rss), memory, "MiB",
                               f"VmHWM {median(hwm):.0f} MiB")
            self.table.row(f"start to main window, CPU, {size[0]}x{size[1]}", median(starts) * 1000, 100, "ms")
            self.table.row(f"idle with the clock running, {size[0]}x{size[1]}", median(idles) * 100, 0.5, "%")

    def expect(self, game, pieces):
        found = len(game.save("contagem").pieces)
        if found != pieces:
            raise Failure(f"{found} pieces where {pieces} are to be measured")

    # Moves in the real program -------------------------------------------------------

    def against_bare(self, game, place, rect, reach):
        """Pairs of CPU seconds a move: what is held at `place`, and a bare window that repaints `rect`."""
        pairs = []
        screen = game.screen
        bare = drive.BareWindow(self.bench + "/bare_window", (screen.width, screen.height), rect)
        try:
            for s in (screen, bare.screen):
                s.move(*place)
                s.press()
            for turn in range(REPETITIONS):
                sides = [(screen, game.process.pid), (bare.screen, bare.process.pid)]
                costs = {}
                for s, pid in sides if turn % 2 else reversed(sides):
                    costs[pid] = drive.cost_of_moves(s, pid, *place, MOVES, reach)
                pairs.append((costs[game.process.pid], costs[bare.process.pid]))
            screen.move(place[0] + 33, place[1] + 22)  # so that it is seen to have been carried
            screen.release()
        finally:
            bare.close()
        return pairs

    def moves(self):
        for pieces, (size, level) in drive.LEVELS.items():
            with Screen(*size) as screen:
                game = drive.Driven(screen, self.program, self.large)
                game.started()
                game.choose(level, "foto 001.jpg")
                self.expect(game, pieces)
                before = game.save("antes")
                piece, place = loose_piece(game, before)
                half = before.tile // 2
                pairs = self.against_bare(game, place, (-half, -half, before.tile + 1, before.tile + 1), 120)
                moved = game.save("depois").pieces[piece]
                if moved == before.pieces[piece]:
                    raise Failure("the piece that was held has not moved")
                game.end()
            self.table.row(f"a piece moved, {pieces} pieces, CPU against a bare window", ratio(pairs), 1.4, "times",
                           spread(pairs))

    def groups(self):
        for pieces, most_times, most_ms in ((864, 1.5, None), (247, None, 1.5)):
            size, level = drive.LEVELS[pieces]
            with Screen(*size) as screen:
                game = drive.Driven(screen, self.program, self.large)
                game.started()
                game.choose(level, "foto 001.jpg")
                count, rect, piece = join_half(game, "todas", "metade")
                game.load("metade.pzl")
                before = game.save("antes")
                place = game.center(before, before.pieces[piece])
                pairs = self.against_bare(game, place, rect, 90)
                after = game.save("depois")
                shift = {(a["x"] - b["x"], a["y"] - b["y"]) for a, b in zip(after.pieces[:count], before.pieces)}
                if shift == {(0, 0)} or len(shift) != 1:
                    raise Failure(f"the group was not carried as one: {sorted(shift)[:4]}")
                game.end()
            what = f"half of {pieces} pieces moved, {size[0]}x{size[1]}"
            if most_times:
                self.table.row(f"{what}, CPU against a bare window", ratio(pairs), most_times, "times", spread(pairs))
            if most_ms:
                self.table.row(f"{what}, CPU", median(a for a, _ in pairs) * 1000, most_ms, "ms", spread(pairs))

    # The same pixels as a large screen and as a dense one ------------------------------

    def dense(self):
        """A game of 160 pixels a tile on 3840x2160, by "Kids B" at scale 1 and by "Difícil" at scale 2.

        Both cut the photograph of 5472x3648 into as many pieces; of others one may have a column more.
        """
        seen, photo = {}, self.photos[3:4]
        for turn in range(2 * REPETITIONS):
            scale = 1 + turn % 2
            with Screen(3840, 2160) as screen:
                game = drive.Driven(screen, self.program, photo, scale=scale)
                game.started()
                game.choose({1: 1, 2: 5}[scale], "foto 000.jpg")
                saved = game.save("antes")
                if len(saved.pieces) != 19 * 13:
                    raise Failure(f"{len(saved.pieces)} pieces, not 19 by 13")
                _, place = loose_piece(game, saved)
                screen.move(*place)
                screen.press()
                cost = drive.cost_of_moves(screen, game.process.pid, *place, MOVES, 120)
                memory = drive.status(game.process.pid, "VmRSS")
                screen.release()
                game.end()
            seen.setdefault(scale, []).append((cost, memory))
        moves = [(dense[0], plain[0]) for dense, plain in zip(seen[2], seen[1])]
        self.table.row("a piece moved on 3840x2160, scale 2 against 1, CPU", ratio(moves), 1.3, "times", spread(moves))
        plain, dense = (median(memory for _, memory in seen[scale]) for scale in (1, 2))
        self.table.row("memory while it is held, scale 2 against 1 (VmRSS)", dense / plain, 1.02, "times",
                       f"{dense:.0f} against {plain:.0f} MiB")

    # A folder of photographs ---------------------------------------------------------

    def folder(self):
        pairs = []
        with Screen(1920, 1080) as screen:
            photos = (self.photos * 100)[:100]
            game = drive.Driven(screen, self.program, photos)
            game.started()
            names = [os.path.join(game.pictures, n) for n in os.listdir(game.pictures)]
            for turn in range(REPETITIONS):
                for name in names:  # other files each time: their size and time of change are others
                    with open(name, "ab") as file:
                        file.write(b"\0")
                early = self.decode("ThumbnailDecode", names) if turn % 2 else None
                scan = game.scan(names)
                pairs.append((scan, (early or self.decode("ThumbnailDecode", names))[0]))
            game.end()
        self.table.row("folder of 100 photographs, CPU against scaled decodes", ratio(pairs), 1.3, "times", spread(pairs))


def loose_piece(game, saved):
    """The piece nearest to the middle of the view, and the place of its centre on the screen.

    Saving sorts the pile: the first piece lies on top. Only one that none before it covers can be taken.
    """
    def clear(piece, record):
        return all(abs(other["x"] - record["x"]) > saved.cell // 2 or abs(other["y"] - record["y"]) > saved.cell // 2
                   for other in saved.pieces[:piece])

    def away(piece):
        x, y = game.center(saved, saved.pieces[piece])
        return abs(x - game.screen.width / 2) + abs(y - game.screen.height / 2)

    piece = min((k for k, record in enumerate(saved.pieces) if clear(k, record)), key=away)
    return piece, game.center(saved, saved.pieces[piece])


def join_half(game, source, target):
    """Saves a game and writes a copy in which the first half of the pieces is joined in the view's middle.

    Returns how many those are, their bounds counted from the centre of the piece to hold, and that piece.
    """
    saved = game.save(source)
    with open(f"{game.folder}/Save/{source}.pzl", "rb") as file:
        lines = file.read().split(b"\r\n")
    half = len(saved.pieces) // 2
    cols = 1 + max(p["col"] for p in saved.pieces)
    rows = 1 + saved.pieces[half - 1]["row"]
    left, top = game.board_offset
    margin = (saved.tile - saved.cell) // 2
    x0 = round((-left + (game.screen.width - cols * saved.cell) / 2 - margin) / 11) * 11
    y0 = round((-top + (game.screen.height - rows * saved.cell) / 2 - margin) / 11) * 11
    for k in range(half):
        p = saved.pieces[k]
        # Its outline follows from place and turn, so the last number is not looked at.
        fields = (x0 + p["col"] * saved.cell, y0 + p["row"] * saved.cell, p["col"], p["row"], 0, p["id"], p["mask"])
        lines[10 + k] = " ".join(f"{v}" for v in fields).encode()
    with open(f"{game.folder}/Save/{target}.pzl", "wb") as file:
        file.write(b"\r\n".join(lines))
    piece = (rows // 2) * cols + cols // 2
    held = saved.pieces[piece]
    center = saved.tile // 2
    rect = (-held["col"] * saved.cell - center, -held["row"] * saved.cell - center,
            (cols - 1) * saved.cell + saved.tile + 1, (rows - 1) * saved.cell + saved.tile + 1)
    return half, rect, piece


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    speed = Speed(*map(os.path.abspath, sys.argv[1:4]))
    for group in sys.argv[4:] or ["board", "growth", "start", "moves", "groups", "dense", "folder"]:
        getattr(speed, group)()
    print(f"{speed.table.short} rows fall short" if speed.table.short else "every figure is reached")
    return 1 if speed.table.short else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Failure as failure:
        sys.exit(f"speed: {failure}")
