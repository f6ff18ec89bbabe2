"""Saves again and again while it is killed, while calls fail, and while another program saves.

The old game or the new one is there, whole, and nothing is lost that was said to be saved.

usage: kill.py SAVER FOLDER [KILLS [SEED]]
"""

import random
import resource
import subprocess

from rough import *  # noqa: F403

STAYS = ";" * 3000  # settings of some length
# Old unfinished files are looked for, the new one is written, the folder is flushed: only the second must not fail.
ORDER = "openat close openat flock fchown fchmod (write )+fsync close rename(at2?)? openat fsync close"
TIMES = 300  # that each of two programs saves


class Saver:
    """A program that saves; each number of its games tells how it was asked for."""

    def __init__(self, folder, *wrapper):
        self.folder = folder
        self.process = subprocess.Popen([*wrapper, sys.argv[1], folder], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def ask(self, *numbers, key="k", answers=None):
        """Waits for all the answers, or so many."""
        self.process.stdin.write("".join(f"{number} {key.format(number)}\n" for number in numbers))
        self.process.stdin.flush()
        for _ in range(len(numbers) if answers is None else answers):
            check(self.process.stdout.readline(), "a program did not go on")

    def tries(self, what, number, saves):
        """A game alone; what keeps it from being saved leaves the old one and nothing else."""
        before = game(self.folder)
        self.ask(number, key="-")
        check(game(self.folder) == (number if saves else before), what)
        check(not unfinished(self.folder), what + " leaves a file")

    def end(self):
        self.process.stdin.close()
        check(self.process.wait(60) == 0, "a program did not end well")


def game(folder, first={}):
    """The number of the game, which is as the first one was but for that."""
    with open(folder + "/jogo.pzl") as file:
        now = file.read()
    number = re.match(r" \d{5} ", now)
    whole, own = first.setdefault("game", (now, number and number[0]))
    check(number and now == whole.replace(own, number[0]), f"{folder} has no whole game")
    return int(number[0])


def settings(folder):
    with open(folder + "/config.ini") as file:
        now = file.read()
    check(STAYS in now and now.endswith("end\n"), "config.ini is not whole")
    return {key: int(value) for key, value in re.findall(r"^(\w+)=(\d+)$", now, re.M)}


def unfinished(folder):
    return set(os.listdir(folder)) - {"jogo.pzl", "config.ini", "Save", "fill"}


def kills(folder, times, chance):
    safe, saves, left = game(folder), 0, 0
    for _ in range(times):
        saver = Saver(folder)
        numbers = [10000 + (safe + more) % 20000 for more in range(1, 200)]
        saver.ask(*numbers, answers=1)
        time.sleep(chance.uniform(0, 0.02))
        saver.process.kill()
        saver.process.wait()
        said = 1 + len(saver.process.stdout.readlines())
        safe, last, saves = game(folder), numbers[said - 1], saves + said
        check((safe - last) % 20000 < 2, "a game that was said to be saved is lost")
        check(settings(folder)["k"] in (last, safe), "a setting that was said to be saved is lost")
        for name in unfinished(folder):  # one at most, and the next program sweeps it once it is old
            check(len(unfinished(folder)) == 1, f"left behind: {unfinished(folder)}")
            os.utime(f"{folder}/{name}", (0, 0))
            left += 1
    saver = Saver(folder)
    saver.ask(numbers[said])
    saver.end()
    check(not unfinished(folder), "an old unfinished file is not swept")
    print(f"{times} kills in {saves} saves: every file whole; {left} unfinished ones were swept", flush=True)


def calls(log):
    """All that were made, and which of them those of the second save are: between two answers."""
    with open(log) as file:
        lines = file.read().splitlines()
    first, second = [at for at, line in enumerate(lines) if line.startswith("write(1,")][:2]
    return lines, range(first + 1, second)


def failing_calls(folder):
    """Each call that a save makes fails once."""
    log = folder + ".log"
    trace = "strace", "-o", log, "-e", "trace=openat,flock,fchown,fchmod,write,fsync,close,/^rename"

    def save_three(what, saves, *inject):
        saver = Saver(folder, *trace, *inject)
        for number, comes_about in (30001, True), (30002, saves), (30003, True):
            saver.tries(what, number, comes_about)
        saver.end()
        return calls(log)

    lines, own = save_three("a save", True)
    names = [line.split("(")[0] for line in lines]
    order = " ".join(names[at] for at in own)
    check(re.fullmatch(ORDER, order), "the order of calls is " + order)
    for at in own:
        inject = f"inject={names[at]}:error=ENOSPC:when={names[:at + 1].count(names[at])}"
        lines, now = save_three(inject, at in own[:2] or at in own[-3:] or names[at] == "flock", "-e", inject)
        check("INJECTED" in lines[at] and at in now, "another call failed: " + lines[at])
    print(f"{order}: each may fail, the old file stays whole and the game goes on")


def no_room(folder):
    mount = ["unshare", "-m", "sh", "-c", f'mount -t tmpfs -o size=64k none "{folder}" && exec "$@"', "sh"]
    if subprocess.run([*mount, "true"], stderr=subprocess.DEVNULL).returncode:
        mount = print("skipped without the right to mount: a full disk")
    saver = Saver(folder, *mount or [])
    saver.ask(30001, key="-")
    saver.folder = f"/proc/{saver.process.pid}/root{folder}"  # a disk of this program alone
    most = resource.prlimit(saver.process.pid, resource.RLIMIT_NOFILE)
    resource.prlimit(saver.process.pid, resource.RLIMIT_NOFILE, (0, most[1]))
    saver.tries("no descriptors", 30002, False)
    resource.prlimit(saver.process.pid, resource.RLIMIT_NOFILE, most)
    saver.tries("descriptors again", 30003, True)
    if mount:
        subprocess.run(["dd", "if=/dev/zero", f"of={saver.folder}/fill", "bs=512"], stderr=subprocess.DEVNULL)
        saver.tries("a full disk", 30004, False)
        os.remove(saver.folder + "/fill")
        saver.tries("room again", 30005, True)
    saver.end()
    print(f"no descriptors{', a full disk' if mount else ''}: the same")


def two_at_once(folder):
    """Each writes settings of its own, both save the same game."""
    first, second = Saver(folder), Saver(folder)
    numbers = range(30001, 30001 + TIMES)
    second.ask(*numbers, key="b{}", answers=0)
    for number in numbers:
        first.ask(number, key="a{}")
        game(folder), settings(folder)
    first.end()
    second.end()
    now = settings(folder)
    check(all(now.get(f"{name}{number}") == number for name in "ab" for number in numbers), "one lost what the other wrote")
    print(f"two programs at once, {TIMES} settings and games each: nothing torn, nothing lost")


def main(_, folder, times=1000, seed=None):
    seed = int(seed or random.randrange(1 << 24))
    print(f"seed {seed}", flush=True)
    folder = os.path.abspath(folder)
    with open(folder + "/config.ini", "w") as file:
        file.write(f"[SETUP]\nSom=True\n{STAYS}\n[end]\nend=end\n")
    first = Saver(folder)
    first.ask(10000)
    first.end()
    kills(folder, int(times), random.Random(seed))
    if subprocess.run(["strace", "-o", "/dev/null", "true"], stderr=subprocess.DEVNULL).returncode:
        print("skipped without the right to trace: calls that fail")
    else:
        failing_calls(folder)
    no_room(folder)
    two_at_once(folder)


if __name__ == "__main__":
    script(main)
