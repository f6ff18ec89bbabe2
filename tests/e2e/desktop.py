"""A private screen for the real program: Xvfb, openbox, mouse, keys and screenshots.

Everything a session starts it ends by its own process id. The program runs as a portable
copy in a folder of its own, with a HOME of its own, so a run leaves nothing behind and
finds nothing from before.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import time


class Failure(AssertionError):
    pass


def wait_for(condition, what, seconds=15.0):
    """Returns the first true value of `condition()`; fails with `what` after `seconds`."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        value = condition()
        if value:
            return value
        time.sleep(0.05)
    raise Failure(f"waited {seconds:g} s in vain for {what}")


def run(*command, check=True, env=None, binary=False):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=env, timeout=60)
    if check and done.returncode:
        raise Failure(f"{' '.join(command)}: {done.stderr.decode(errors='replace').strip()}")
    return done.stdout if binary else done.stdout.decode(errors="replace")


def check(true, what):
    if not true:
        raise Failure(what)


def script(main):
    """Runs main(program, screenshot_folder, *more) with the script's arguments. Ends with what failed, if anything."""
    name = os.path.basename(sys.argv[0])
    if len(sys.argv) < 3:
        sys.exit(f"usage: {name} PROGRAM SCREENSHOT_FOLDER ...")
    os.makedirs(sys.argv[2], exist_ok=True)
    try:
        main(*sys.argv[1:])
    except Failure as failure:
        sys.exit(f"{name}: {failure}")


def at_rest(look, differ=lambda a, b: a != b, pause=0.3):
    """What `look()` sees once it sees the same twice: a loaded machine paints late."""
    before = look()
    for _ in range(40):
        time.sleep(pause)
        now = look()
        if not differ(before, now):
            return now
        before = now
    raise Failure("the screen does not come to rest")


class Screen:
    """An Xvfb of a given size with a window manager."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.processes = []
        self.home = tempfile.mkdtemp(prefix="fento-home-")
        read, write = os.pipe()
        self._start(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp",
                     "-noreset"], pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as answer:  # the whole line: the server ends if nobody takes the rest
            number = answer.readline().strip()
        if not number:
            raise Failure("Xvfb gave no display")
        self.env = {k: v for k, v in os.environ.items() if not k.startswith(("WAYLAND", "QT_", "XDG_", "PULSE"))}
        os.makedirs(self.home + "/pulse")
        with open(self.home + "/pulse/client.conf", "w") as conf:
            conf.write("autospawn = no\n")
        self.env.update(DISPLAY=":" + number, HOME=self.home, XDG_RUNTIME_DIR=self.home, LC_ALL="C.UTF-8",
                        PULSE_CLIENTCONFIG=self.home + "/pulse/client.conf")
        os.chmod(self.home, 0o700)
        self._start(["openbox"], env=self.env)
        wait_for(lambda: "_NET_SUPPORTING_WM_CHECK" in run("xprop", "-root", env=self.env, check=False),
                 "the window manager")

    def _start(self, command, **more):
        nothing = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        process = subprocess.Popen(command, **{**nothing, **more})
        self.processes.append(process)
        return process

    def close(self):
        for process in reversed(self.processes):
            process.terminate()
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        if kind is not None and len(sys.argv) > 2:  # what the screen looked like when it went wrong
            self.screenshot(os.path.join(sys.argv[2], "failed.png"))
        self.close()

    # Mouse and keys ------------------------------------------------------------------

    def xdo(self, *arguments, check=True):
        return run("xdotool", *[str(a) for a in arguments], env=self.env, check=check)

    def move(self, x, y):
        self.xdo("mousemove", round(x), round(y))

    def press(self, button=1):
        self.xdo("mousedown", button)

    def release(self, button=1):
        self.xdo("mouseup", button)

    def click(self, x, y, button=1, times=1):
        self.move(x, y)
        self.xdo("click", "--repeat", times, "--delay", 60, button)

    def drag(self, x1, y1, x2, y2, turns=0, steps=6):
        """Picks up at x1, y1, turns by the right button, carries to x2, y2 and lets go."""
        self.move(x1, y1)
        self.press()
        for _ in range(turns):
            self.xdo("click", 3)
            time.sleep(0.03)
        for step in range(1, steps + 1):
            self.move(x1 + (x2 - x1) * step / steps, y1 + (y2 - y1) * step / steps)
        time.sleep(0.03)
        self.release()
        time.sleep(0.05)

    def key(self, *keys):
        self.xdo("key", "--delay", 40, *keys)

    def type(self, text):
        self.xdo("type", "--delay", 15, text)

    # Windows and pixels --------------------------------------------------------------

    def window(self, title, seconds=15.0):
        """The id of the visible window whose title is exactly `title`."""
        pattern = "^" + re.escape(title) + "$"

        def find():
            found = self.xdo("search", "--onlyvisible", "--name", pattern, check=False).split()
            return found[-1] if found else None

        return wait_for(find, f"the window '{title}'", seconds)

    def has_window(self, title):
        return bool(self.xdo("search", "--onlyvisible", "--name", "^" + re.escape(title) + "$", check=False).split())

    def gone(self, title, seconds=15.0):
        wait_for(lambda: not self.has_window(title), f"the window '{title}' to go", seconds)

    def place(self, window):
        """x, y, width, height of a window's client area on the screen."""
        # Not xdotool: it adds the frame's border twice.
        text = run("xwininfo", "-id", window, env=self.env)
        return tuple(int(re.search(key + r":\s*(-?\d+)", text).group(1))
                     for key in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def bytes(self):
        """The whole screen, three bytes a pixel."""
        return run("import", "-window", "root", "-depth", "8", "rgb:-", env=self.env, binary=True)

    def pixels(self):
        """The whole screen as rows of (r, g, b) by index: a function of x and y."""
        data = self.bytes()
        width = self.width
        return lambda x, y: tuple(data[3 * (y * width + x):3 * (y * width + x) + 3])

    def screenshot(self, path):
        os.makedirs(os.path.dirname(path), exist_ok=True)
        run("import", "-window", "root", path, env=self.env)


class Game:
    """The real program in a portable folder on a screen."""

    TITLE = "Fento-Lira Master"
    BOARD = (254, 253, 231)  # the colour of a new board

    def __init__(self, screen, program, scale=1, room=None, primary=None, terminal=os.devnull):
        """`scale` goes to the toolkit; `room` is the size of the maximised window, `primary` that of the primary
        monitor, both in pixels of the screen; `terminal` gets what the program writes."""
        self.screen = screen
        self.scale = scale
        self.room = room or (screen.width, screen.height)
        self.terminal = terminal
        self.primary = primary or (screen.width, screen.height)
        self.env = dict(screen.env, **({"QT_SCALE_FACTOR": str(scale)} if scale != 1 else {}))
        self.folder = tempfile.mkdtemp(prefix="fento game ação ", dir=screen.home)
        self.program = shutil.copy2(program, os.path.join(self.folder, "fento-lira-master"))
        skin = os.path.join(os.path.dirname(os.path.abspath(program)), "Puzzle.skn")
        if os.path.exists(skin):
            shutil.copy2(skin, self.folder)
        self.process = None
        self.window = None

    def start(self):
        with open(self.terminal, "wb") as terminal:
            self.process = self.screen._start([self.program], env=self.env, cwd=self.folder, stdout=terminal,
                                              stderr=terminal)
        self.window = self.screen.window(self.TITLE)
        # The splash goes half a second after the main window has come.
        wait_for(lambda: self.windows() == 1, "the splash to go")
        wait_for(lambda: self.screen.place(self.window)[2] >= self.room[0] - 2, "the maximised window")
        self.find_board()
        return self

    def end(self):
        """Ends the program by closing its window."""
        self.screen.key("alt+F4")
        self.process.wait(10)
        check(self.process.returncode == 0, f"the program ended with {self.process.returncode}")

    def find_board(self):
        """Where the board's visible part begins on the screen: below the menu bar."""
        x, y, width, _ = self.screen.place(self.window)
        pixel = self.screen.pixels()
        for row in range(y, y + round(120 * self.scale)):
            if all(pixel(column, row) == self.BOARD for column in range(x + width // 4, x + width // 4 + 40)):
                self.origin = (x, row)
                return
        raise Failure("no board below the menu bar")

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

    def menu(self, top, *steps):
        """Opens menu `top` (0 Jogo, 1 Opções, 2 Ajuda) by mouse and walks on by keys."""
        x, y, _, _ = self.screen.place(self.window)
        column = (32, 94, 160)[top]
        self.screen.click(x + column * self.scale, (y + self.origin[1]) // 2)
        time.sleep(0.2)
        if steps:
            self.screen.key(*steps)
        time.sleep(0.2)

    def refresh_menu(self, top):
        """Opens and closes a menu: shortcuts follow the enabling that its last opening left."""
        self.menu(top, "Escape", "Escape")

    def new_game(self, level):
        """level 0, 1, 3, 4 or 5."""
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

    def start_picture(self, level, number=1, shot=None, seconds=15.0):
        """A new game of the number-th picture."""
        dialog = self.new_game(level)
        time.sleep(1.0)
        if shot:
            self.screen.screenshot(shot)
        self.screen.click(*self.thumbnail(dialog, number), times=2)
        self.screen.gone("Busca Imagens", seconds)
        time.sleep(0.6)

    def won(self, shot=None):
        """The game says that it is complete, and is told so."""
        self.screen.window("Parabéns!!")
        time.sleep(0.3)
        if shot:
            self.screen.screenshot(shot)
        self.screen.key("Return")
        self.screen.gone("Parabéns!!")

    def save(self, name):
        """Saves by Ctrl+S and a typed name; returns the file's path."""
        path = os.path.join(self.folder, "Save", name + ".pzl")
        if os.path.exists(path):
            os.remove(path)
        self.refresh_menu(0)
        before = self.windows()
        self.screen.key("ctrl+s")
        wait_for(lambda: self.windows() > before, "the save dialog")
        time.sleep(0.4)
        self.screen.type(name)
        self.screen.key("Return")
        wait_for(lambda: os.path.exists(path), f"the saved game {path}")
        wait_for(lambda: self.windows() == before, "the save dialog to close")
        return path

    def load(self, name):
        before = self.windows()
        self.screen.key("ctrl+o")
        wait_for(lambda: self.windows() > before, "the open dialog")
        time.sleep(0.4)
        self.screen.type(name)
        self.screen.key("Return")
        wait_for(lambda: self.windows() == before, "the open dialog to close")
        time.sleep(0.5)

    def windows(self):
        """How many windows the window manager has; the program's are the only ones."""
        return run("xprop", "-root", "_NET_CLIENT_LIST", env=self.screen.env).count("0x")


class Saved:
    """What a saved game says."""

    def __init__(self, path):
        with open(path, "rb") as file:
            lines = file.read().decode("cp1252").split("\r\n")
        number = [0] + [int(lines[i]) if i != 1 else 0 for i in range(10)]
        self.seconds, self.picture, self.level = number[1], lines[1], number[3]
        self.size = number[4], number[5]  # at which the picture is painted
        self.tile, self.cell, self.unit = number[6], number[7], number[8]
        keys = ("x", "y", "col", "row", "rotation", "id", "mask")
        self.pieces = [dict(zip(keys, map(int, line.split()))) for line in lines[10:10 + number[10] + 1]]


def solve(game, saved, left=0, done=0):
    """Plays the game to its end with the mouse, as the saved game says the pieces lie.

    The top-left piece goes first, near the corner in view; the others are turned upright in the hand and dropped
    beside it, last piece last. Stops with so many pieces `left` to place; goes on where so many are `done`.
    """
    half = saved.tile // 2
    pieces = sorted(saved.pieces, key=lambda p: (p["row"], p["col"]))
    ref_x, ref_y = (round((60 - offset) / 11) * 11 for offset in game.board_offset)
    for piece in pieces[done:len(pieces) - left]:
        x1, y1 = game.to_screen(piece["x"] + half, piece["y"] + half)
        x2, y2 = game.to_screen(ref_x + piece["col"] * saved.cell + half, ref_y + piece["row"] * saved.cell + half)
        game.screen.drag(x1, y1, x2 + 3, y2 - 2, turns=(4 - piece["rotation"]) % 4)
