"""The real program on a private screen: its windows, its menus, its saved games."""

import os
import shutil
import tempfile

import desktop
from desktop import check, run, wait_for


class Game:
    """The real program in a portable folder on a screen."""

    TITLE = "Fento-Lira Master"
    BOARD = (254, 253, 231)  # the colour of a new board

    def __init__(self, screen, program, scale=1, primary=None, terminal=os.devnull):
        """`scale` goes to the toolkit; `primary` is the size of the primary monitor in pixels of the screen;
        `terminal` gets what the program writes."""
        self.screen = screen
        self.scale = scale
        self.terminal = terminal
        self.primary = primary or (screen.width, screen.height)
        self.env = dict(screen.env, **({"QT_SCALE_FACTOR": str(scale)} if scale != 1 else {}))
        self.folder = tempfile.mkdtemp(prefix="fento game ação ", dir=screen.home)
        self.install(program)

    def install(self, program):
        """Puts a program into the folder; the next start is its."""
        self.command = [shutil.copy2(program, self.folder)]
        self.for_windows = program.endswith(".exe")
        desktop.STILL = 0.04
        if self.for_windows:  # it has its libraries beside it; wine looks about every few milliseconds
            desktop.STILL = 0.006
            shutil.copytree(os.path.dirname(program), self.folder, dirs_exist_ok=True,
                            ignore=shutil.ignore_patterns("Imagens"))
            self.command.insert(0, os.path.join(os.path.dirname(__file__), "../../tools/windows/wine.sh"))
        skin = os.path.join(os.path.dirname(os.path.abspath(program)), "Puzzle.skn")
        if os.path.exists(skin):
            shutil.copy2(skin, self.folder)

    def start(self):
        with open(self.terminal, "wb") as terminal:
            self.process = self.screen._start(self.command, env=self.env, cwd=self.folder, stdout=terminal,
                                              stderr=terminal)
        self.window = wait_for(self._alone, "the main window to be maximised and the splash to go")
        self.screen.window(self.TITLE)
        self.screen.settle()  # all is where it stays
        self.find_board()
        return self

    def _alone(self):
        check(self.process.poll() is None, f"the program has ended with {self.process.returncode}")
        windows = self.windows()
        return len(windows) == 1 and self.screen.place(*windows)[2] >= self.primary[0] - 2 and windows.pop()

    def end(self):
        """Ends the program by closing its window."""
        self.screen.xdo("key", "alt+F4")
        wait_for(lambda: self.process.poll() is not None, "the program to end")
        self.screen.processes.remove(self.process)
        check(self.process.returncode == 0, f"the program ended with {self.process.returncode}")

    def windows(self):
        return self.screen.windows("--class", "fento")

    def find_board(self):
        """Where the board's visible part begins on the screen: below the menu bar."""
        def corner():
            x, y, width, _ = self.screen.place(self.window)
            left = x + width // 4
            return next(((x, row) for row in range(y, y + round(120 * self.scale))
                         if all(self.screen.pixel(column, row) == self.BOARD for column in range(left, left + 40))), None)

        self.origin = wait_for(corner, f"a board of the colour {self.BOARD} below the menu bar")

    @property
    def board_offset(self):
        """picScreen.Left and Top after a new game: the board is centred on the primary screen."""
        w, h = round(self.primary[0] / self.scale), round(self.primary[1] / self.scale)
        factor = 1.25 if w >= 1280 else 1.5 if w >= 1024 else 2.0
        return -(round(w * factor) - w) / 2, -(round(h * factor) - h) / 2

    def to_screen(self, x, y):
        """A point of the board in screen coordinates, the view being as a new game leaves it."""
        left, top = self.board_offset
        return self.origin[0] + (left + x) * self.scale, self.origin[1] + (top + y) * self.scale

    def home(self):
        """Where on the board solve() puts the tile of the top-left piece: a point of the lattice near the corner."""
        return tuple(round((60 - offset) / 11) * 11 for offset in self.board_offset)

    def center(self, saved, piece):
        """The middle of a saved game's piece on the screen."""
        return self.to_screen(piece["x"] + saved.tile // 2, piece["y"] + saved.tile // 2)

    def menu(self, top, *steps):
        """Opens menu `top` (0 Jogo, 1 Opções, 2 Ajuda) by mouse and walks on by keys."""
        x, y, _, _ = self.screen.place(self.window)
        before = self.windows()
        self.screen.click(x + (32, 94, 160)[top] * self.scale, (y + self.origin[1]) // 2)
        wait_for(lambda: self.windows() - before, "the menu to open")
        if steps:
            self.screen.key(*steps)

    def new_game(self, level):
        """The picture dialog, its scan over; level 0, 1, 3, 4 or 5."""
        downs = {0: 0, 1: 1, 3: 2, 4: 3, 5: 4}[level]
        self.menu(0, "Down", "Right", *["Down"] * downs, "Return")
        return self.screen.window("Busca Imagens")

    def thumbnail(self, dialog, number):
        """The middle of the number-th thumbnail (from 1) on the screen, the sheet unscrolled."""
        x, y, _, _ = self.screen.place(dialog)
        column, row = (number - 1) % 4, (number - 1) // 4
        across, down = 2835 + 10 + column * 1835 + 862, 60 + 10 + 200 + row * 1790 + 840
        return x + across * self.scale / 15, y + down * self.scale / 15

    def picture(self, name, size, *look):
        """Makes a picture in the folder of pictures; `look` goes to ImageMagick."""
        path = f"{self.folder}/Imagens/{name}"
        os.makedirs(os.path.dirname(path), exist_ok=True)
        run("convert", "-size", size, *look, path)

    def start_picture(self, level):
        """A new game of the first picture."""
        self.screen.click(*self.thumbnail(self.new_game(level), 1), times=2)
        self.screen.gone("Busca Imagens")

    def won(self, shot=None):
        """The game says that it is complete, and is told so."""
        self.screen.window("Parabéns!!")
        if shot:
            self.screen.screenshot(shot)
        self.screen.key("Return")
        self.screen.gone("Parabéns!!")

    def save(self, name):
        """Saves by Ctrl+S and a typed name; returns what was saved."""
        path = os.path.join(self.folder, "Save", name + ".pzl")
        if os.path.exists(path):
            os.remove(path)
        self.menu(0, "Escape", "Escape")  # shortcuts follow the enabling that its last opening left
        self._file_dialog("ctrl+s", "Salvar como", name)
        return wait_for(lambda: Saved(path), f"the saved game {path}")

    def load(self, name):
        self._file_dialog("ctrl+o", "Abrir", name)

    def _file_dialog(self, key, title, name):
        self.screen.key(key)
        self.screen.window(title)
        self.screen.type(name)
        self.screen.key("Return")
        self.screen.gone(title)

    def shown(self):
        """The rows of the board in view, without scroll bars and panel."""
        (left, top, width, height), data, across = self.screen.place(self.window), self.screen.bytes(), self.screen.width
        right = left + width - round(250 * self.scale)
        return [data[3 * (row * across + left):3 * (row * across + right)]
                for row in range(self.origin[1], top + height - round(30 * self.scale))]


def check_same(before, after, what, bound=0):
    """That two views of a board are equal; their colours may differ by `bound`."""
    rows = [row for row, (a, b) in enumerate(zip(before, after))
            if a != b and max(abs(p - q) for p, q in zip(a, b)) > bound]
    check(len(before) > 300 and not rows, f"{what} in the rows {rows[:9]}... of {len(before)}")


class Saved:
    """What a saved game says."""

    def __init__(self, path):
        with open(path, "rb") as file:
            lines = file.read().decode("cp1252").split("\r\n")
        self.seconds, self.tile, self.cell, last = (int(lines[at]) for at in (0, 5, 6, 9))
        keys = ("x", "y", "col", "row", "rotation", "id", "mask")
        self.pieces = [dict(zip(keys, map(int, line.split()))) for line in lines[10:10 + last + 1]]


def carried(pieces, piece, cell):
    """It and those that go with it: chance may lay neighbours side by side."""
    group = [piece]
    for one in group:
        for other in pieces:
            way = other["col"] - one["col"], other["row"] - one["row"]
            if (other not in group and abs(way[0]) + abs(way[1]) == 1 and other["rotation"] == one["rotation"] == 0
                    and (other["x"] - one["x"], other["y"] - one["y"]) == (way[0] * cell, way[1] * cell)):
                group.append(other)
    return group


def solve(game, saved, left=0, done=0):
    """Plays the game to its end with the mouse, as the saved game says the pieces lie.

    The top-left piece goes first, near the corner in view; the others are turned upright in the hand and dropped
    beside it, last piece last. Stops with so many pieces `left` to place; goes on where so many are `done`.
    """
    half = saved.tile // 2
    pieces = sorted(saved.pieces, key=lambda p: (p["row"], p["col"]))
    ref_x, ref_y = game.home()
    there = []
    for piece in pieces[done:len(pieces) - left]:
        if piece in there:
            continue
        there += carried(pieces, piece, saved.cell)
        x2, y2 = game.to_screen(ref_x + piece["col"] * saved.cell + half, ref_y + piece["row"] * saved.cell + half)
        game.screen.drag(*game.center(saved, piece), x2 + 3, y2 - 2, turns=(4 - piece["rotation"]) % 4)
