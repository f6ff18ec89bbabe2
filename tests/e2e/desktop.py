"""A private screen for the real program: Xvfb, openbox, mouse, keys and screenshots.

What is done to a screen returns when it has had its effect, and what is waited for may come late: a script needs no
pauses and runs beside any load. Everything a session starts it ends by its own process id. The program runs as a
portable copy in a folder of its own, with a HOME of its own, so a run leaves nothing behind and finds nothing from
before.
"""

import glob
import mmap
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

sys.path.append("/usr/lib/python3/dist-packages")  # Debian's, whichever Python runs this
from Xlib import X, display  # noqa: E402
from Xlib.ext import xtest  # noqa: E402

# Seconds for whatever is waited for; on a quiet machine nothing needs a tenth of it.
LONGEST = float(os.environ.get("FENTO_PATIENCE", 60))
STILL = 0.04  # seconds in which nobody stirs: longer than a frame and than the pauses the program makes in its work


class Failure(AssertionError):
    pass


def wait_for(condition, what):
    """Returns the first true value of `condition()`. What is missing, half there or refused is not there yet."""
    begin, why = time.monotonic(), ""
    while time.monotonic() - begin < LONGEST:
        try:
            value = condition()
            if value:
                return value
            why = ""
        except (Failure, OSError, LookupError, ValueError) as error:
            why = f": {error}"
        time.sleep(0.02)
    raise Failure(f"waited {time.monotonic() - begin:.0f} s in vain for {what}{why}")


def run(*command, check=True, env=None):
    try:
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=env, timeout=LONGEST)
    except subprocess.TimeoutExpired as late:
        raise Failure(str(late)) from late
    said = done.stderr.decode(errors="replace").strip()
    if check and (said and done.returncode or done.returncode not in (0, 1)):  # a search finds nothing in silence
        raise Failure(f"{' '.join(command)}: {said or done.returncode}")
    return done.stdout.decode(errors="replace")


def check(true, what):
    if not true:
        raise Failure(what)


def script(main):
    """Runs main(program, screenshot_folder, *more) with the script's arguments. Ends with what failed, if anything."""
    name = os.path.basename(sys.argv[0])
    if len(sys.argv) < 3:
        sys.exit(f"usage: {name} PROGRAM SCREENSHOT_FOLDER ...")

    signal.signal(signal.SIGTERM, lambda *_: sys.exit(f"{name}: stopped"))
    os.makedirs(sys.argv[2], exist_ok=True)
    try:
        main(*sys.argv[1:])
    except Failure as failure:
        sys.exit(f"{name}: {failure}")


class Screen:
    """An Xvfb of a given size with a window manager."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        self.processes = []
        self.home = tempfile.mkdtemp(prefix="fento-home-")
        try:
            self._begin()
        except BaseException:
            self.close()
            raise

    def _begin(self):
        read, write = os.pipe()
        self._start(["Xvfb", "-displayfd", str(write), "-screen", "0", f"{self.width}x{self.height}x24", "-noreset",
                     "-nolisten", "tcp", "-nocursor", "-fbdir", self.home], pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as answer:  # the whole line: the server ends if nobody takes the rest
            number = answer.readline().strip()
        check(number, "Xvfb gave no display")
        self.env = {k: v for k, v in os.environ.items() if not k.startswith(("WAYLAND", "QT_", "XDG_", "PULSE"))}
        with open(self.home + "/pulse.conf", "w") as conf:
            conf.write("autospawn = no\n")
        self.env.update(DISPLAY=":" + number, HOME=self.home, XDG_RUNTIME_DIR=self.home, LC_ALL="C.UTF-8",
                        PULSE_CLIENTCONFIG=self.home + "/pulse.conf",
                        XCURSOR_PATH=self.home)  # an hourglass that turns would keep the server awake
        self.server = display.Display(":" + number)
        with open(self.home + "/Xvfb_screen0", "rb") as file:  # the server paints there; its pixels come last
            self._frame = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        self._start(["openbox"], env=self.env)
        wait_for(lambda: "_NET_SUPPORTING_WM_CHECK" in run("xprop", "-root", env=self.env), "the window manager")
        self.xdo("set_num_desktops", 1)  # the wheel beside all windows would lead to others
        self.key("Shift_L")  # the first one makes all learn the keyboard anew, and is lost on some

    def _start(self, command, **more):
        nothing = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        process = subprocess.Popen(command, **{**nothing, **more})
        self.processes.append(process)
        return process

    def close(self):
        for process in reversed(self.processes):  # the server, which tidies up behind itself, last
            process.terminate() if process is self.processes[0] else process.kill()
            process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        try:
            if kind is not None and len(sys.argv) > 2:  # what the screen looked like when it went wrong
                self.screenshot(os.path.join(sys.argv[2], "failed.png"), check=False)
        finally:
            self.close()

    # Rest ----------------------------------------------------------------------------

    def settle(self):
        """Waits until all that was done has had its effect: every program of the screen sleeps and nothing wakes it.

        A busy machine cannot feign that: who has been sent something and does not get at the processor does not sleep.
        """
        def still():
            before = self._sleepers()
            time.sleep(STILL)
            restless = [name for name, times in self._sleepers() - before]
            check(not restless, f"{', '.join(restless)} woke up")
            return True

        wait_for(still, "the programs to come to rest")
        for process in self.processes:
            check(process.poll() is None, f"{process.args[0]} has ended with {process.returncode}")

    def _sleepers(self):
        """How often the threads that take and answer events have gone to sleep, all threads being asleep.

        Those that decode do nothing else than that; that of the sound wakes up again and again for a moment.
        """
        times = set()
        for process in self.processes:
            for path in glob.glob(f"/proc/{process.pid}/task/*/status"):
                with open(path) as file:
                    told = dict(re.findall(r"^(Name|Tgid|Pid|State|voluntary_\w+):\t(\S+)", file.read(), re.M))
                check(told["State"] in "SZ", f"{told['Name']} is awake")
                if told["Pid"] == told["Tgid"] or told["Name"].startswith("QXcb"):
                    times.add((told["Name"], told["voluntary_ctxt_switches"]))
        return times

    # Mouse and keys ------------------------------------------------------------------

    def xdo(self, *arguments):
        """Does not wait for the effect."""
        return run("xdotool", *map(str, arguments), env=self.env)

    def act(self, *arguments):
        self.xdo(*arguments)
        self.settle()

    def _at_once(self, kind, button=0, x=0, y=0):
        """Does not wait for the effect, takes microseconds. Returns the moment at which it began."""
        moment = time.monotonic()
        xtest.fake_input(self.server, kind, button, x=round(x), y=round(y))
        self.server.sync()
        return moment

    def move(self, x, y, settle=True):
        return self.act("mousemove", round(x), round(y)) if settle else self._at_once(X.MotionNotify, 0, x, y)

    def press(self, button=1, settle=True):
        return self.act("mousedown", button) if settle else self._at_once(X.ButtonPress, button)

    def release(self, button=1, settle=True):
        return self.act("mouseup", button) if settle else self._at_once(X.ButtonRelease, button)

    def click(self, x, y, button=1, times=1):
        self.act("mousemove", round(x), round(y), "click", "--repeat", times, "--delay", 20, button)

    def drag(self, x1, y1, x2, y2, turns=0, steps=6):
        """Picks up at x1, y1, turns by the right button, carries to x2, y2 and lets go."""
        way = []
        for part in (step / steps for step in range(1, steps + 1)):
            way += ["mousemove", round(x1 + (x2 - x1) * part), round(y1 + (y2 - y1) * part), "sleep", 0.01]
        self.act("mousemove", round(x1), round(y1), "mousedown", 1)
        for _ in range(turns):  # one that follows at once can get lost on its way to the program
            self.act("click", 3)
        self.act(*way, "mouseup", 1)

    def key(self, *keys):
        self.act("key", *keys)

    def type(self, text):
        self.act("type", text)

    # Windows and pixels --------------------------------------------------------------

    def windows(self, *properties):
        """The ids of the windows with such properties that show, open menus among them."""
        def found():  # fails where a window goes in the middle of the search
            return [set(map(int, self.xdo("search", "--onlyvisible", "--maxdepth", 2, *properties).split()))]

        return wait_for(found, "windows that stay where they are")[0]

    def has_window(self, title):
        return bool(self.windows("--name", "^" + re.escape(title) + "$"))

    def window(self, title):
        """The id of the window of that title once it has the keyboard."""
        def active():
            name, number = self.xdo("getactivewindow", "getwindowname", "getactivewindow").splitlines()
            return name == title and int(number)

        return wait_for(active, f"the window '{title}'")

    def gone(self, title):
        wait_for(lambda: not self.has_window(title), f"the window '{title}' to go")

    def place(self, window):
        """x, y, width, height of a window's client area on the screen."""
        # Not xdotool: it adds the frame's border twice.
        text = run("xwininfo", "-id", str(window), env=self.env)
        keys = "Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"
        return tuple(int(text.split(key + ":")[1].split()[0]) for key in keys)

    def bytes(self):
        """The whole screen, three bytes a pixel."""
        shown = self._frame[-4 * self.width * self.height:]
        rgb = bytearray(3 * self.width * self.height)
        rgb[0::3], rgb[1::3], rgb[2::3] = shown[2::4], shown[1::4], shown[0::4]
        return bytes(rgb)

    def pixel(self, x, y):
        """Red, green, blue."""
        at = len(self._frame) + 4 * ((y - self.height) * self.width + x)
        return tuple(self._frame[at + part] for part in (2, 1, 0))

    def screenshot(self, path, check=True):
        os.makedirs(os.path.dirname(path), exist_ok=True)
        run("import", "-window", "root", path, env=self.env, check=check)
