#!/usr/bin/env python3
"""Puts small faults into src/, one at a time, and tells which tests notice them.

  mutants.py list   [--repo R] [--only FOLDER]... [--count N] [--seed S]     the faults that would be tried
  mutants.py run    the same, [--work DIR] [--out FILE] [--minutes M] [--jobs J] [--programs A,B] [--skip TEST]...
                    [--first] [--real]
  mutants.py report [--repo R] [--out FILE]                                  kill rates, survivors, what each test adds

A fault ("mutant") is one change in one place of a .cpp file: a comparison or an arithmetic operator swapped, "and" for
"or", a constant off by one, a condition turned round, a call, an assignment or a jump dropped, another value returned.
Comments, texts, asserts and preprocessor lines are left alone. The same seed gives the same faults. Without --only all
of src/ is taken but the toolkit's folder (--only platform/qt), main.cpp, which no test has, and the headless twin, which
belongs to the tests.

`run` works in a clone of its own below --work, at the commit that is checked out: the preset "dev" without symbols,
warnings as errors and ccache, and with shared libraries, so that a fault costs one compilation and one small link. The
test programs are built and run once; what fails then counts for nothing. For each fault the programs that became
others are run once: the GoogleTest programs, the recorded play among them (cases of play_tests), and three
seconds of the soak with a fixed seed. A test that crashes is named and the rest of its program run without it; where one
hangs, the rest is not run. The result is written after each fault; a further run with the same --out goes on from there.
A fault costs about eight seconds on two quiet cores, with --first (the rate alone, no ranking) two to three. `nice
mutants.py run --work /dev/shm/mutants ...` is kind to others. With --real, what survives is tried in real windows too:
the scripts of tests/e2e one after the other, as ./check runs them, up to the first that notices. That costs half a
minute a fault.

Outcomes: "killed" by the tests named, "survived", "equal" (the same code: no fault), "invalid" (does not compile). A
survivor is a hole in the tests, or a change that no player can see: look at each.

`report` ranks the tests and picks greedily those that notice the most faults a line, what the tests of a file share
being paid with the first of them. What is left over noticed nothing that the chosen ones did not. But a few hundred
faults are a sample, and slow machines are not seen at all, nor is a real window without --real: read a test before it goes.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import random
import re
import signal
import subprocess
import sys
import time
from collections import defaultdict

PROGRAMS = ("play_tests,browser_tests,shell_tests,board_tests,core_tests,qt_tests,qt_game_tests,"
            "controls_tests,drawing_tests,system_tests,soak")
GAME, SCRIPTS = "fento-lira-master", "tests/e2e"
PATIENCE = "15"  # seconds for which a script waits in vain
SWAPS = {"==": "!=", "!=": "==", "<=": "<", "<": "<=", ">=": ">", ">": ">=", "&&": "||", "||": "&&",
         "+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "+=": "-=", "-=": "+="}


# --- Making mutants ------------------------------------------------------------------------------------------

def closing(text, at):
    """Behind the bracket that closes the one at `at`."""
    depth = 0
    for i in range(at, len(text)):
        depth += (text[i] == "(") - (text[i] == ")")
        if depth == 0:
            return i + 1
    return len(text)


def masked(text):
    """The text with everything that no fault belongs into blanked out, at the same places."""
    pattern = (r'//[^\n]*|/\*.*?\*/|^[ \t]*#[^\n]*|R"\(.*?\)"|"(?:\\.|[^"\\\n])*"'
               r"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])'")  # no digit separators
    text = re.sub(pattern, lambda hit: re.sub(r"[^\n]", "_" if hit[0][0] in "\"'R" else " ", hit[0]), text,
                  flags=re.M | re.S)
    for hit in re.finditer(r"\b(?:static_)?assert\(", text):
        end = closing(text, hit.end() - 1)
        text = text[:hit.start()] + re.sub(r"[^\n]", " ", text[hit.start():end]) + text[end:]
    return text


def mutants_of(path, text):
    """All mutants of a source, as dictionaries: file, line, kind, at, old, new."""
    code, found = masked(text), []

    def add(kind, start, end, new):
        if text[start:end] != new:
            found.append({"file": path, "line": text.count("\n", 0, start) + 1, "kind": kind, "at": start,
                          "old": text[start:end], "new": new})

    for hit in re.finditer(r"(?<= )(==|!=|<=|>=|<|>|&&|\|\||\+=|-=|[-+*/%])(?= )", code):
        kind = "logic" if hit[1] in ("&&", "||") else "arith" if hit[1][0] in "+-*/%" else "compare"
        add(kind, hit.start(), hit.end(), SWAPS[hit[1]])
    for hit in re.finditer(r"(?<![\w.'])(\d[\d']*)(\.\d+)?(?![\w.'])", code):
        value = int(hit[1].replace("'", ""))
        other = value - 1 if value > 1 and hit.start() % 2 else value + 1
        add("constant", *hit.span(), hit[0][:-1] + str((int(hit[0][-1]) + 1) % 10) if hit[2] else str(other))
    for hit in re.finditer(r"\bif \(", code):
        end = closing(code, hit.end() - 1)
        if not re.search(r";|[^=!<>]=[^=]", code[hit.end():end - 1]):  # no declaration
            add("condition", hit.end(), end - 1, "!(" + text[hit.end():end - 1] + ")")
    before = "{"  # the last character of code above the line: only behind some does a statement begin
    for line in re.finditer(r"([ \t]*)([^\n]*?)[ \t]*\n", code):
        words, start = line[2], line.start(2)
        call = re.fullmatch(r"(?!return|throw)[\w.:>\[\]-]+\(.*\);|[\w.:>\[\]()*-]+ [-+|&]?= .*;", words)
        if before in ";{}:)" and (call or words in ("continue;", "break;", "return;")):
            add("drop", start, line.end(2), ";")
        answer = re.search(r"\breturn ([^;]+);$", words)
        if answer and answer[1] not in ("{}", "nullptr", "*this", "std::nullopt"):
            value = {"true": "false", "false": "true"}.get(answer[1], "{}")
            add("return", start + answer.start(1), start + answer.end(1), value)
        before = words[-1] if words else before
    return found


def chosen(repo, only, count, seed):
    """`count` mutants: files by the number of their mutants, then kinds evenly, then any; no kind twice in a line."""
    rng, by_file = random.Random(seed), {}
    for folder, _, names in sorted(os.walk(os.path.join(repo, "src"))):
        for name in sorted(names):
            path = os.path.relpath(os.path.join(folder, name), repo)
            usual = "/qt/" not in path and name != "main.cpp"
            wanted = any(path.startswith(f"src/{part}/") for part in only) if only else usual
            wanted = wanted and "/headless/" not in path and not name.endswith("_windows.cpp")  # those of the other system
            if name.endswith(".cpp") and wanted:
                by_file[path] = mutants_of(path, read(os.path.join(repo, path)).decode())
    files, result, taken = [path for path in by_file if by_file[path]], [], set()
    for _ in range(60 * count if files else 0):
        path = rng.choices(files, [len(by_file[name]) for name in files])[0]
        kind = rng.choice(sorted({mutant["kind"] for mutant in by_file[path]}))
        mutant = rng.choice([mutant for mutant in by_file[path] if mutant["kind"] == kind])
        place = (path, mutant["line"], kind)
        if place not in taken and len(result) < count:
            taken.add(place)
            result.append(dict(mutant, id=f"{path}:{mutant['line']}:{kind}:{mutant['at']}"))
    return result


# --- Building and running ------------------------------------------------------------------------------------

def read(path):
    with open(path, "rb") as file:
        return file.read()


def write(path, data):
    with open(path, "wb") as file:
        file.write(data)


class Workshop:
    """A clone with its build, in which faults come and go."""

    def __init__(self, repo, work, programs, jobs, skip, first, real):
        self.root = os.path.realpath(os.path.join(work, "clone"))
        self.build = os.path.join(self.root, "build", "mutants")
        self.programs, self.jobs, self.skip, self.first = programs, jobs, skip, first
        os.makedirs(work + "/tmp", exist_ok=True)
        self.env = dict(os.environ, CCACHE_DISABLE="1", QT_QPA_PLATFORM="offscreen", TMPDIR=work + "/tmp",
                        FENTO_PATIENCE=PATIENCE)
        if not os.path.isdir(self.root):
            subprocess.run(["git", "clone", "-q", repo, self.root], check=True)
        subprocess.run(["git", "-C", self.root, "fetch", "-q", repo, "HEAD"], check=True)
        subprocess.run(["git", "-C", self.root, "reset", "-q", "--hard", "FETCH_HEAD"], check=True)
        scripts = os.path.join(self.root, SCRIPTS)
        self.real = [name for name in sorted(os.listdir(scripts)) if b"__main__" in read(f"{scripts}/{name}")] if real else []
        self.configure()
        built = self.make()
        if built.returncode:
            sys.exit(built.stdout[-3000:])
        with open(self.build + "/compile_commands.json") as file:
            self.objects = {entry["file"]: os.path.join(self.build, re.search(r" -o (\S+)", entry["command"])[1])
                            for entry in json.load(file)}
        self.parts = {}  # of each program: itself and the libraries of ours that it loads
        for program in programs + [GAME] * real:
            linked = subprocess.run(["ldd", self.path(program)], stdout=subprocess.PIPE, text=True).stdout
            self.parts[program] = [self.path(program), *re.findall(r"=> (%s/\S+)" % re.escape(self.build), linked)]
        self.plain, self.limits, self.ignored = self.hashes(), defaultdict(lambda: 300), set()

    def configure(self):
        for name in ("CMakeLists.txt", "cmake/Fento.cmake"):
            path = os.path.join(self.root, name)
            write(path, re.sub(rb"(add_library\(\S+) STATIC", rb"\1 SHARED", read(path)))
        options = ["CMAKE_CXX_FLAGS_DEBUG=-O1 -fno-semantic-interposition", "FENTO_WARNINGS_AS_ERRORS=OFF",
                   "CMAKE_POSITION_INDEPENDENT_CODE=ON", "CMAKE_LINK_DEPENDS_NO_SHARED=ON",
                   "CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]
        subprocess.run(["cmake", "--preset", "dev", "-B", self.build, *["-D" + option for option in options]],
                       cwd=self.root, env=self.env, check=True, stdout=subprocess.DEVNULL)

    def make(self):
        return subprocess.run(["ninja", "-C", self.build, "-j", str(self.jobs), *self.programs, *[GAME] * bool(self.real)],
                              env=self.env, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def path(self, program):
        return next(os.path.join(folder, program) for folder, _, names in sorted(os.walk(self.build))
                    if program in names)

    def hashes(self):
        paths = {path for parts in self.parts.values() for path in parts}
        return {path: hashlib.sha1(read(path)).digest() for path in paths}

    def once(self, program, *arguments):
        """One run of a program or script: its output and status, None if it ran out of time."""
        command = [self.path(program)] if program not in self.real else [
            sys.executable, os.path.join(self.root, SCRIPTS, program), self.path(GAME), self.env["TMPDIR"] + "/shots"]
        process = subprocess.Popen([*command, *arguments], env=self.env, cwd=self.root, text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT, errors="replace",
                                   start_new_session=True)
        try:
            return process.communicate(timeout=self.limits[program])[0], process.returncode
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return process.communicate()[0], None

    def failures(self, program):
        """The tests of a program that fail, crash or hang."""
        if program == "soak":
            return {} if self.once("soak", "3", "7")[1] == 0 else {"soak:Soak.ThreeSeconds": "failed"}
        if program in self.real:
            output, status = self.once(program)
            return {} if status == 0 else {f"{program}:RealWindow": output.strip()[-200:]}
        failed, without = {}, [*self.skip, *(name.partition(":")[2] for name in self.ignored)]
        while True:
            # Not brief: a test that crashes is known only by the line with which it began.
            output, status = self.once(program, "--gtest_filter=-" + ":".join(without))
            for name in re.findall(r"^\[  FAILED  \] ([\w./]+)(?:, where .*)? \(\d+ ms\)$", output, re.M):
                failed.setdefault(f"{program}:{name}", "failed")
            begun = re.findall(r"^\[ RUN      \] ([\w./]+)$", output, re.M)
            if "[==========]" in output.rpartition("[ RUN ")[2] or not begun:
                return failed if begun or status == 0 else {f"{program}:(start)": "crashed"}
            failed[f"{program}:{begun[-1]}"] = "hung" if status is None else "crashed"
            without += begun  # those before it have had their turn
            if status is None:
                return failed

    def measure(self):
        """Runs everything without a fault."""
        for program in self.programs + self.real:
            begin = time.monotonic()
            failed = self.failures(program)
            self.limits[program] = 10 + 5 * (time.monotonic() - begin)
            self.ignored |= set(failed)
            print(f"{program}: {time.monotonic() - begin:.1f} s {' '.join(failed)}", flush=True)
        self.real = [script for script in self.real if f"{script}:RealWindow" not in self.ignored]

    def killers(self, programs):
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            return {name: how for failed in pool.map(self.failures, programs) for name, how in failed.items()
                    if name not in self.ignored}

    def first_killer(self, programs):
        return next((killers for killers in map(lambda program: self.killers([program]), programs) if killers), {})

    def try_out(self, mutant):
        path = os.path.join(self.root, mutant["file"])
        made = self.objects[path]
        text, compiled, times, made_times = read(path), read(made), os.stat(path), os.stat(made)
        at, old = len(text.decode()[:mutant["at"]].encode()), mutant["old"].encode()
        if text[at:at + len(old)] != old:
            sys.exit("the repository and the clone differ: remove the clone")
        try:
            write(path, text[:at] + mutant["new"].encode() + text[at + len(old):])
            begin = time.monotonic()
            if self.make().returncode:
                return {"outcome": "invalid"}
            made_times = os.stat(made)
            built, now = time.monotonic() - begin, self.hashes()
            changed = {part for part in now if now[part] != self.plain[part]}
            if not changed:
                return {"outcome": "equal"}
            wanted = sorted((p for p in self.programs if changed & set(self.parts[p])), key=lambda p: -self.limits[p])
            killers = self.first_killer(wanted[::-1]) if self.first else self.killers(wanted)
            if not killers and self.real and changed & set(self.parts[GAME]):
                killers = self.first_killer(sorted(self.real, key=lambda script: self.limits[script]))
            for part in changed:
                os.utime(part, (1, 1))  # to be linked again
            return {"outcome": "killed" if killers else "survived", "killers": killers,
                    "build_s": round(built, 1), "test_s": round(time.monotonic() - begin - built, 1)}
        finally:  # the source as it was, and its object, so that it need not be compiled again
            write(path, text)
            write(made, compiled)
            os.utime(path, ns=(times.st_atime_ns, times.st_mtime_ns))
            os.utime(made, ns=(made_times.st_atime_ns, made_times.st_mtime_ns))


def run(options):
    wanted = chosen(options.repo, options.only, options.count, options.seed)
    results = json.loads(read(options.out)) if os.path.exists(options.out) else []
    done, end = {result["id"] for result in results}, time.monotonic() + 60 * options.minutes
    workshop = Workshop(options.repo, options.work, options.programs.split(","), options.jobs, options.skip,
                        options.first, options.real)
    workshop.measure()
    for number, mutant in enumerate(wanted, 1):
        if mutant["id"] in done:
            continue
        if time.monotonic() > end:
            return print("out of time")
        result = dict(mutant, **workshop.try_out(mutant))
        results.append(result)
        write(options.out + ".new", json.dumps(results, indent=1).encode())
        os.replace(options.out + ".new", options.out)
        print(f"{number}/{len(wanted)} {shown(result)}: {result['outcome']} {len(result.get('killers', {})) or ''} "
              f"{result.get('build_s', '')}+{result.get('test_s', '')} s", flush=True)


# --- Report --------------------------------------------------------------------------------------------------

def shown(mutant):
    clip = lambda text: " ".join(text.split())[:60]
    return f"{mutant['file']}:{mutant['line']} {mutant['kind']}: {clip(mutant['old'])}  ->  {clip(mutant['new'])}"


def tests_by_file(repo):
    """Test name -> (file, its lines of code), file -> lines that its tests share."""
    tests, shared = {}, defaultdict(int)
    count = lambda text: sum(bool(line.strip()) and not line.strip().startswith(("//", "#")) for line in text.split("\n"))
    for folder, _, names in os.walk(os.path.join(repo, "tests")):
        for name in names:
            path = os.path.relpath(os.path.join(folder, name), repo)
            text = read(os.path.join(repo, path)).decode(errors="replace") if name.endswith((".cpp", ".txt")) else ""
            if "/scripts/" in path:
                tests["Script.GoesAsItExpects/" + name[:-4]] = (path, count(text))
                continue
            shared[path] = count(text)
            for hit in re.finditer(r"^TEST(?:_F|_P)?\((\w+), *(\w+)\) \{.*?^\}$", text, re.M | re.S):
                tests[f"{hit[1]}.{hit[2]}"] = (path, count(hit[0]))
                shared[path] -= count(hit[0])
    tests["Soak.ThreeSeconds"] = ("tests/rough", sum(shared[path] for path in shared if "/rough/soak" in path))
    return tests, shared


def plain_name(name):
    """Program and parameters off, but for the name of a script."""
    words = name.partition(":")[2].split("/")
    named = next((word for word in words if "." in word), words[0])
    return f"{named}/{words[-1]}" if named.startswith("Script.") else named


def report(options):
    results, (tests, shared) = json.loads(read(options.out)), tests_by_file(options.repo)
    faults = [result for result in results if result["outcome"] in ("killed", "survived")]
    print(f"{len(results)} tried, {len(faults)} of them faults")
    groups = defaultdict(list)
    for fault in faults:
        for group in (os.path.dirname(fault["file"]), "kind " + fault["kind"]):
            groups[group].append(fault["outcome"] == "killed")
    for group, killed in sorted(groups.items()):
        print(f"  {group:24} {sum(killed):4} of {len(killed):4} killed, {100 * sum(killed) // len(killed):3}%")
    print("Survivors:")
    for fault in sorted(faults, key=lambda fault: (fault["file"], fault["line"])):
        if fault["outcome"] == "survived":
            print("  " + shown(fault))

    kills, killers = defaultdict(set), defaultdict(set)
    for fault in faults:
        for name in map(plain_name, fault.get("killers", {})):
            kills[name].add(fault["id"])
            killers[fault["id"]].add(name)
    print("Tests: kills, of them by no other test, lines")
    for name in sorted(kills, key=lambda name: (-len(kills[name]), name)):
        alone = sum(killers[fault] == {name} for fault in kills[name])
        print(f"  {len(kills[name]):4} {alone:3} {tests.get(name, ('?', 0))[1]:4}  {name}  ({tests.get(name, '?')[0]})")

    print("Greedy cover: new faults, lines with what the file shares, faults so far, lines so far")
    left, paid, cover, lines = set(killers), set(), [], 0
    while left:
        def cost(name):
            path, own = tests.get(name, ("?", 1))
            return max(1, own + (0 if path in paid else shared.get(path, 0)))
        best = max(sorted(kills), key=lambda name: len(kills[name] & left) / cost(name))
        new, price = len(kills[best] & left), cost(best)
        left -= kills[best]
        lines += price
        paid.add(tests.get(best, "?")[0])
        cover.append(best)
        print(f"  {new:4} {price:4} {len(killers) - len(left):4} {lines:5}  {best}")
    print("Outside the cover, by file (* noticed nothing at all; lines):")
    for path in sorted({path for path, _ in tests.values()}):
        rest = [f"{name}{'' if name in kills else '*'} {own}" for name, (at, own) in tests.items()
                if at == path and name not in cover]
        print(f"  {path}: {', '.join(rest)}" if rest else f"  {path}: all of it in the cover")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("command", choices=("list", "run", "report"))
    parser.add_argument("--repo", default=os.getcwd(), help="the project's folder, if it is not the present one")
    parser.add_argument("--work", default="/tmp/mutants")
    parser.add_argument("--out", default="/tmp/mutants.json")
    parser.add_argument("--only", action="append", default=[], metavar="FOLDER", help="core, play, platform/qt, ...")
    parser.add_argument("--count", type=int, default=150)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--minutes", type=float, default=45)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--programs", default=PROGRAMS)
    parser.add_argument("--first", action="store_true", help="stop at the first program that notices: much faster")
    parser.add_argument("--real", action="store_true", help="try survivors in real windows: half a minute each")
    parser.add_argument("--skip", action="append", default=[], metavar="TEST", help="left out: a pattern of test names")
    options = parser.parse_args()
    if options.command == "list":
        print(*map(shown, chosen(options.repo, options.only, options.count, options.seed)), sep="\n")
    else:
        {"run": run, "report": report}[options.command](options)


if __name__ == "__main__":
    main()
