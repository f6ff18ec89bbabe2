"""Saves again and again while it is killed, while calls fail, and while another program saves.

The old game or the new one is there, whole, and nothing is lost that was said to be saved.

usage: kill.py SAVER FOLDER [KILLS [SEED]]
"""

import os
import random
import re
import resource
import shutil
import subprocess
import sys
import time

STAYS = ";" * 3000  # settings of some length
# Old unfinished files are looked for, the new one is written, the folder is flushed: only the second must not fail.
ORDER = "openat close openat flock fchown fchmod (write )+fsync close rename(at2?)? openat fsync close"
TIMES = 300  # that each of two programs saves


def check(held, what):
    if not held:
        sys.exit(f"FAILED: {what}")


class Saver:
    """A program that saves; its game of so many seconds, all pieces at that place, is told by each of its numbers."""

    def __init__(self, folder, *wrapper):
        self.folder = folder
        self.process = subprocess.Popen([*wrapper, sys.argv[1], os.path.abspath(sys.argv[2])], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)

    def ask(self, numbers, key="k"):
        self.process.stdin.write("".join(f"{number} {key.format(number)}\n" for number in numbers))
        self.process.stdin.flush()

    def answers(self, count):
        return [int(self.process.stdout.readline() or check(False, "a program did not go on")) for _ in range(count)]

    def end(self):
        self.process.stdin.close()
        check(self.process.wait(60) == 0, "a program did not end well")

    def tries(self, what, number, saves):
        """A game alone; what keeps it from being saved leaves the old one and nothing else."""
        before = game(self.folder)
        self.ask([number], "-")
        self.answers(1)
        check(game(self.folder) == (number if saves else before), what)
        check(not unfinished(self.folder), what + " leaves a file")


def text(path):
    with open(path) as file:
        return file.read()


def game(folder, first={}):
    """The number of the game, which is as the first one was but for that."""
    now = text(folder + "/jogo.pzl")
    number = re.match(r" \d{5} ", now)
    whole, own = first.setdefault("game", (now, number and number[0]))
    check(number and now == whole.replace(own, number[0]), f"{folder} has no whole game")
    return int(number[0])


def settings(folder):
    now = text(folder + "/config.ini")
    check(STAYS in now and now.endswith("end\n"), "config.ini is not whole")
    return {key: int(value) for key, value in re.findall(r"^(\w+)=(\d+)$", now, re.M)}


def unfinished(folder):
    return set(os.listdir(folder)) - {"jogo.pzl", "config.ini", "Save", "fill"}


def kills(folder, times, chance):
    safe, saves, left = game(folder), 0, 0
    for _ in range(times):
        saver = Saver(folder)
        saver.ask(10000 + (safe + more) % 20000 for more in range(1, 200))
        saver.answers(1)
        time.sleep(chance.uniform(0, 0.02))
        saver.process.kill()
        said = [10000 + (safe + 1) % 20000, *map(int, saver.process.communicate()[0].split())]
        safe, last = game(folder), said[-1]
        saves += len(said)
        check((safe - last) % 20000 < 2, "a game that was said to be saved is lost")
        check(settings(folder)["k"] in (last, safe), "a setting that was said to be saved is lost")
        for name in unfinished(folder):  # one at most, and the next program sweeps it once it is old
            check(len(unfinished(folder)) == 1, f"left behind: {unfinished(folder)}")
            os.utime(f"{folder}/{name}", (0, 0))
            left += 1
    print(f"{times} kills in {saves} saves: every file whole; {left} unfinished ones were swept", flush=True)


def failing_calls(folder):
    """Each call that a save makes fails once."""
    log = folder + ".log"
    trace = "strace", "-o", log, "-e", "trace=openat,flock,fchown,fchmod,write,fsync,close,/^rename"

    def calls(number):
        """Those before the answer, and which of them are its save's: from the answer before."""
        lines = text(log).splitlines()
        at = [next(at for at, line in enumerate(lines) if f'"{n}\\n"' in line) for n in (number - 1, number)]
        return lines, range(at[0] + 1, at[1])

    saver = Saver(folder, *trace)
    for number in 30001, 30002:
        saver.tries("a save", number, True)
    saver.end()
    lines, own = calls(30002)
    names = [line.split("(")[0] for line in lines]
    order = " ".join(names[at] for at in own)
    check(re.fullmatch(ORDER, order), "the order of calls is " + order)
    for at in own:
        inject = f"inject={names[at]}:error=ENOSPC:when={names[:at + 1].count(names[at])}"
        saver = Saver(folder, *trace, "-e", inject)
        saver.tries("a save", 30001, True)
        saver.tries(inject, 30002, at in own[:2] or at in own[-3:] or names[at] == "flock")
        saver.tries("the next save", 30003, True)
        saver.end()
        lines, own_now = calls(30002)
        check("INJECTED" in lines[at] and at in own_now, "another call failed: " + lines[at])
    print(f"{order}: each may fail, the old file stays whole and the game goes on")


def no_room(folder):
    saver = Saver(folder)
    saver.tries("a save", 30001, True)
    hard = resource.prlimit(saver.process.pid, resource.RLIMIT_NOFILE)
    resource.prlimit(saver.process.pid, resource.RLIMIT_NOFILE, (0, hard[1]))
    saver.tries("no descriptors", 30002, False)
    resource.prlimit(saver.process.pid, resource.RLIMIT_NOFILE, hard)
    saver.tries("descriptors again", 30003, True)
    saver.end()
    print("no descriptors: the same")
    mount = f'mount -t tmpfs -o size=64k none "{folder}" && exec "$@"'
    if subprocess.run(["unshare", "-m", "sh", "-c", mount, "sh", "true"], stderr=subprocess.DEVNULL).returncode:
        return print("skipped without the right to mount: a full disk")
    saver = Saver(folder, "unshare", "-m", "sh", "-c", mount, "sh")
    saver.ask([30004], "-")
    saver.answers(1)
    saver.folder = f"/proc/{saver.process.pid}/root{folder}"  # a disk of this program alone
    subprocess.run(["dd", "if=/dev/zero", f"of={saver.folder}/fill", "bs=512"], stderr=subprocess.DEVNULL)
    saver.tries("a full disk", 30005, False)
    os.remove(saver.folder + "/fill")
    saver.tries("room again", 30006, True)
    saver.end()
    print("a full disk: the same")


def two_at_once(folder):
    """Each writes settings of its own, both save the same game."""
    savers = {name: Saver(folder) for name in "ab"}
    numbers = range(30001, 30001 + TIMES)
    for name, saver in savers.items():
        saver.ask(numbers, name + "{}")
    while savers["a"].process.stdout.readline() != f"{numbers[-1]}\n":
        game(folder), settings(folder)
    savers["b"].answers(TIMES)
    for saver in savers.values():
        saver.end()
    now = settings(folder)
    check(all(now.get(f"{name}{number}") == number for name in savers for number in numbers), "one lost what the other wrote")
    print(f"two programs at once, {TIMES} settings and games each: nothing torn, nothing lost")


def main(folder, times=1000, seed=None):
    seed = int(seed or random.randrange(1 << 24))
    print(f"seed {seed}", flush=True)
    folder = os.path.abspath(folder)
    os.makedirs(folder)
    with open(folder + "/config.ini", "w") as file:
        file.write(f"[SETUP]\nSom=True\n{STAYS}\n[end]\nend=end\n")
    first = Saver(folder)
    first.ask([10000])
    first.answers(1)
    first.end()
    kills(folder, int(times), random.Random(seed))
    if subprocess.run(["strace", "-o", "/dev/null", "true"], stderr=subprocess.DEVNULL).returncode:
        print("skipped without the right to trace: calls that fail")
    else:
        failing_calls(folder)
    no_room(folder)
    two_at_once(folder)


if __name__ == "__main__":
    main(*sys.argv[2:])
